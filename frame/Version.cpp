#include "frame/Version.h"

// TESSELPLUS_VERSION is the project version of the build (CMakeLists.txt), so the two cannot drift apart.
const char* tesselPlusDllVersionStr()
{
    return TESSELPLUS_VERSION;
}
