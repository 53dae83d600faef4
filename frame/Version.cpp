#include "frame/Version.h"

const char* tesselPlusDllVersionStr()
{
    return "0.1.0.0";
}
