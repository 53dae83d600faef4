// Any bytes through the image readers: a null image or a well-formed one, never a crash or a leak. A decoded
// image must also survive being written as PNG and read back.
#include "toolkit/gfx/ImageIO.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const Pictor::Image full = Pictor::decodeImage(data, size);
    const Pictor::Image reduced = Pictor::decodeImage(data, size, {7, 5});
    if (full.isNull())
        return 0;
    if (full.width() <= 0 || full.height() <= 0 || reduced.isNull())
        std::abort();
    // Touch every pixel, so that a decoder that reported success on a short buffer shows up under the sanitizers.
    uint32_t mix = 0;
    for (int y = 0; y < full.height(); ++y)
        for (int x = 0; x < full.width(); ++x)
            mix ^= full.row(y)[x];
    if (full.width() * int64_t(full.height()) <= 1 << 20) {
        const std::string png = Pictor::encodePng(full);
        const Pictor::Image again = Pictor::decodeImage(png.data(), png.size());
        if (again.isNull() || again.width() != full.width() || again.height() != full.height())
            std::abort();
    }
    return static_cast<int>(mix & 0);
}
