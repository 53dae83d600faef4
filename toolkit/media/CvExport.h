#pragma once
// File type IDs ("quicktime", "mxf_op1a", ...) and the file name extensions they are written with ("MOV",
// "MXF", ...). Extensions are answered in upper case, the way menus show them; looking one up ignores case
// and a leading dot, so "mov", ".MOV" and "MOV" all name the same type.

#include "toolkit/support/LightweightString.h"

namespace CvExport {

// Empty for an unknown ID.
LightweightString<wchar_t> getExtensionForFormatID(const LightweightString<char>& formatID);
// Empty for an unknown extension.
LightweightString<char> getFormatIDForExtension(const LightweightString<wchar_t>& extension);

} // namespace CvExport
