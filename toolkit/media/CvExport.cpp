#include "toolkit/media/CvExport.h"

#include <algorithm>
#include <array>
#include <cwctype>

namespace {

struct FileType {
    const char* formatID;
    const wchar_t* extension;
};

constexpr std::array<FileType, 13> fileTypes { {
    { "avi", L"AVI" },
    { "quicktime", L"MOV" },
    { "mxf_op1a", L"MXF" },
    { "mp4", L"MP4" },
    { "matroska", L"MKV" },
    { "mpeg_ps", L"MPG" },
    { "dpx", L"DPX" },
    { "tiff", L"TIF" },
    { "png", L"PNG" },
    { "jpeg", L"JPG" },
    { "wav", L"WAV" },
    { "aiff", L"AIF" },
    { "openexr", L"EXR" },
} };

bool sameExtension(std::wstring_view given, std::wstring_view known)
{
    if (!given.empty() && given.front() == L'.')
        given.remove_prefix(1);
    return std::equal(given.begin(), given.end(), known.begin(), known.end(),
        [](wchar_t a, wchar_t b) { return std::towupper(static_cast<wint_t>(a)) == static_cast<wint_t>(b); });
}

} // namespace

namespace CvExport {

LightweightString<wchar_t> getExtensionForFormatID(const LightweightString<char>& formatID)
{
    for (const FileType& type : fileTypes)
        if (formatID == type.formatID)
            return type.extension;
    return {};
}

LightweightString<char> getFormatIDForExtension(const LightweightString<wchar_t>& extension)
{
    for (const FileType& type : fileTypes)
        if (sameExtension(extension.view(), type.extension))
            return type.formatID;
    return {};
}

} // namespace CvExport
