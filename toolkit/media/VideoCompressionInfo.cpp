#include "toolkit/media/VideoCompressionInfo.h"

#include "toolkit/media/Compression.h"

#include <cstdio>
#include <iterator>
#include <string>

LightweightString<wchar_t> VideoCompressionInfo::getDisplayString(uint64_t flags) const
{
    const Cv::Image::Format code = m_compression.getFormat();
    std::wstring text;
    if (code == Cv::Image::noFormat) {
        text = L"None";
    } else if (LightweightString<wchar_t> name = Compression::getCompressionName(code); !name.empty()) {
        text = name.str();
    } else {
        // An unknown code still reads as something a person can quote.
        text = L"\"";
        for (int shift = 0; shift < 32; shift += 8) {
            const unsigned char c = static_cast<unsigned char>(code >> shift);
            text += c >= 0x20 && c < 0x7F ? static_cast<wchar_t>(c) : L'?';
        }
        text += L"\"";
    }
    if ((flags & showRaster) && m_source.getWidth() > 0)
        text += L" (" + std::to_wstring(m_source.getWidth()) + L"x" + std::to_wstring(m_source.getHeight()) + L")";
    if ((flags & showBitRate) && m_compression.getBitRate() > 0.0) {
        wchar_t rate[64];
        std::swprintf(rate, std::size(rate), L", %g Mb/s", m_compression.getBitRate());
        text += rate;
    }
    return LightweightString<wchar_t>(text);
}
