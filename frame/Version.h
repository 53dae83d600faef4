#pragma once

// The library's four-part dotted version, owned by the library.
const char* tesselPlusDllVersionStr();
