#include "toolkit/gfx/ImageIO.h"

#include "toolkit/support/AtomicFile.h"

#include <spng.h>
#include <turbojpeg.h>
#include <webp/decode.h>
#include <webp/encode.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace Pictor {

namespace {

constexpr bool kLittleEndian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

// Files larger than this are not images we can show anyway, and reading one would only exhaust memory.
constexpr long kMaxFileBytes = 512L << 20;

bool sizeAllowed(int64_t width, int64_t height, int64_t pixelLimit = maxDecodedPixels)
{
    return width > 0 && height > 0 && width <= Image::maxDimension && height <= Image::maxDimension
        && width * height <= std::min(pixelLimit, maxDecodedPixels);
}

// Straight RGBA bytes to premultiplied 0xAARRGGBB words, in place (both are four bytes a pixel).
void premultiplyRgbaInPlace(Image& image)
{
    for (int y = 0; y < image.height(); ++y) {
        uint32_t* row = image.row(y);
        const auto* bytes = reinterpret_cast<const uint8_t*>(row);
        for (int x = 0; x < image.width(); ++x) {
            const uint32_t r = bytes[4 * x];
            const uint32_t g = bytes[4 * x + 1];
            const uint32_t b = bytes[4 * x + 2];
            const uint32_t a = bytes[4 * x + 3];
            uint32_t out;
            if (a == 255)
                out = 0xFF000000u | (r << 16) | (g << 8) | b;
            else if (a == 0)
                out = 0;
            else {
                // Rounded r * a / 255 without a division.
                const auto mul = [a](uint32_t c) {
                    const uint32_t t = c * a + 128;
                    return (t + (t >> 8)) >> 8;
                };
                out = (a << 24) | (mul(r) << 16) | (mul(g) << 8) | mul(b);
            }
            row[x] = out;
        }
    }
}

Image decodePng(const void* data, size_t size, int64_t pixelLimit)
{
    std::unique_ptr<spng_ctx, void (*)(spng_ctx*)> ctx(spng_ctx_new(0), spng_ctx_free);
    if (!ctx)
        return {};
    spng_set_image_limits(ctx.get(), Image::maxDimension, Image::maxDimension);
    spng_set_chunk_limits(ctx.get(), 16u << 20, 64u << 20);
    if (spng_set_png_buffer(ctx.get(), data, size) != 0)
        return {};
    spng_ihdr header;
    if (spng_get_ihdr(ctx.get(), &header) != 0 || !sizeAllowed(header.width, header.height, pixelLimit))
        return {};
    size_t decodedSize = 0;
    if (spng_decoded_image_size(ctx.get(), SPNG_FMT_RGBA8, &decodedSize) != 0)
        return {};
    Image image(static_cast<int>(header.width), static_cast<int>(header.height));
    if (image.isNull() || decodedSize != static_cast<size_t>(image.stride()) * static_cast<size_t>(image.height()))
        return {};
    if (spng_decode_image(ctx.get(), image.bytes(), decodedSize, SPNG_FMT_RGBA8, SPNG_DECODE_TRNS) != 0)
        return {};
    // Read on to the end marker: a file cut short after its pixel data is still a broken file (an interrupted
    // write, most likely), not one to show as if whole.
    if (spng_decode_chunks(ctx.get()) != 0)
        return {};
    // The reader does not check the end marker's own checksum, so a file missing its last bytes would pass.
    static constexpr char endChunk[] = "\0\0\0\0IEND\xAE\x42\x60\x82";
    const char* bytes = static_cast<const char*>(data);
    if (std::search(bytes, bytes + size, endChunk, endChunk + sizeof endChunk - 1) == bytes + size)
        return {};
    premultiplyRgbaInPlace(image);
    return image;
}

Image decodeJpeg(const void* data, size_t size, XY<int> atLeast, int64_t pixelLimit)
{
    if (size > static_cast<size_t>(kMaxFileBytes))
        return {};
    std::unique_ptr<void, int (*)(tjhandle)> handle(tjInitDecompress(), tjDestroy);
    if (!handle)
        return {};
    auto* bytes = static_cast<const unsigned char*>(data);
    const auto length = static_cast<unsigned long>(size);
    int width = 0;
    int height = 0;
    int subsampling = 0;
    int colourspace = 0;
    if (tjDecompressHeader3(handle.get(), bytes, length, &width, &height, &subsampling, &colourspace) != 0)
        return {};
    if (!sizeAllowed(width, height))
        return {};

    // The decoder shrinks by whole DCT fractions almost for free: take the smallest that still gives at
    // least the size asked for.
    int scaledWidth = width;
    int scaledHeight = height;
    if (atLeast.x > 0 || atLeast.y > 0) {
        int count = 0;
        const tjscalingfactor* factors = tjGetScalingFactors(&count);
        for (int i = 0; factors && i < count; ++i) {
            const tjscalingfactor f = factors[i];
            if (f.num > f.denom)
                continue;
            const int w = TJSCALED(width, f);
            const int h = TJSCALED(height, f);
            if (w >= atLeast.x && h >= atLeast.y && w * int64_t(h) < scaledWidth * int64_t(scaledHeight)) {
                scaledWidth = w;
                scaledHeight = h;
            }
        }
    }
    if (!sizeAllowed(scaledWidth, scaledHeight, pixelLimit))
        return {};
    Image image(scaledWidth, scaledHeight);
    if (image.isNull())
        return {};
    // A truncated or damaged file only draws a warning from the decoder (and a grey remainder); treat it as
    // the failure it is.
    const int format = kLittleEndian ? TJPF_BGRA : TJPF_ARGB;
    if (tjDecompress2(handle.get(), bytes, length, image.bytes(), scaledWidth, image.stride(), scaledHeight, format,
                      TJFLAG_STOPONWARNING)
        != 0)
        return {};
    return image;
}

Image decodeWebP(const void* data, size_t size, int64_t pixelLimit)
{
    WebPDecoderConfig config;
    if (!WebPInitDecoderConfig(&config))
        return {};
    auto* bytes = static_cast<const uint8_t*>(data);
    if (WebPGetFeatures(bytes, size, &config.input) != VP8_STATUS_OK)
        return {};
    if (config.input.has_animation || !sizeAllowed(config.input.width, config.input.height, pixelLimit))
        return {};
    Image image(config.input.width, config.input.height);
    if (image.isNull())
        return {};
    // Premultiplied output in the byte order of our words.
    config.output.colorspace = kLittleEndian ? MODE_bgrA : MODE_Argb;
    config.output.is_external_memory = 1;
    config.output.u.RGBA.rgba = image.bytes();
    config.output.u.RGBA.stride = image.stride();
    config.output.u.RGBA.size = static_cast<size_t>(image.stride()) * static_cast<size_t>(image.height());
    const VP8StatusCode status = WebPDecode(bytes, size, &config);
    WebPFreeDecBuffer(&config.output);
    return status == VP8_STATUS_OK ? image : Image();
}

bool isOpaque(const Image& image)
{
    for (int y = 0; y < image.height(); ++y) {
        const uint32_t* row = image.row(y);
        uint32_t all = 0xFF000000u;
        for (int x = 0; x < image.width(); ++x)
            all &= row[x];
        if ((all >> 24) != 0xFF)
            return false;
    }
    return true;
}

// One row of premultiplied words to straight RGB or RGBA bytes.
void unpremultiplyRow(const uint32_t* in, int width, bool withAlpha, uint8_t* out)
{
    for (int x = 0; x < width; ++x) {
        const uint32_t p = in[x];
        const uint32_t a = p >> 24;
        uint32_t r = (p >> 16) & 0xFF;
        uint32_t g = (p >> 8) & 0xFF;
        uint32_t b = p & 0xFF;
        if (a != 255 && a != 0) {
            r = std::min<uint32_t>(255, (r * 255 + a / 2) / a);
            g = std::min<uint32_t>(255, (g * 255 + a / 2) / a);
            b = std::min<uint32_t>(255, (b * 255 + a / 2) / a);
        }
        *out++ = static_cast<uint8_t>(r);
        *out++ = static_cast<uint8_t>(g);
        *out++ = static_cast<uint8_t>(b);
        if (withAlpha)
            *out++ = static_cast<uint8_t>(a);
    }
}

} // namespace

ImageFormat sniffImageFormat(const void* data, size_t size)
{
    const auto* b = static_cast<const unsigned char*>(data);
    if (!b)
        return ImageFormat::Unknown;
    if (size >= 8 && std::memcmp(b, "\x89PNG\r\n\x1a\n", 8) == 0)
        return ImageFormat::Png;
    if (size >= 3 && b[0] == 0xFF && b[1] == 0xD8 && b[2] == 0xFF)
        return ImageFormat::Jpeg;
    if (size >= 12 && std::memcmp(b, "RIFF", 4) == 0 && std::memcmp(b + 8, "WEBP", 4) == 0)
        return ImageFormat::WebP;
    return ImageFormat::Unknown;
}

Image decodeImage(const void* data, size_t size, XY<int> atLeast, int64_t pixelLimit)
{
    switch (sniffImageFormat(data, size)) {
    case ImageFormat::Png:
        return decodePng(data, size, pixelLimit);
    case ImageFormat::Jpeg:
        return decodeJpeg(data, size, atLeast, pixelLimit);
    case ImageFormat::WebP:
        return decodeWebP(data, size, pixelLimit);
    case ImageFormat::Unknown:
        break;
    }
    return {};
}

Image loadImage(const std::string& utf8Path, XY<int> atLeast, int64_t pixelLimit)
{
    std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(utf8Path.c_str(), "rb"), std::fclose);
    if (!file)
        return {};
    if (std::fseek(file.get(), 0, SEEK_END) != 0)
        return {};
    const long length = std::ftell(file.get());
    if (length <= 0 || length > kMaxFileBytes || std::fseek(file.get(), 0, SEEK_SET) != 0)
        return {};
    std::vector<unsigned char> bytes(static_cast<size_t>(length));
    if (std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size())
        return {};
    return decodeImage(bytes.data(), bytes.size(), atLeast, pixelLimit);
}

std::string encodePng(const Image& image)
{
    if (image.isNull())
        return {};
    std::unique_ptr<spng_ctx, void (*)(spng_ctx*)> ctx(spng_ctx_new(SPNG_CTX_ENCODER), spng_ctx_free);
    if (!ctx)
        return {};
    // Speed over size: unfiltered rows and the fastest deflate level. (Run-length-only deflate is no faster
    // here and far larger: a run of equal pixels repeats every three or four bytes, not every byte.) An opaque
    // image drops its alpha channel, which is a quarter less to compress and write.
    spng_set_option(ctx.get(), SPNG_ENCODE_TO_BUFFER, 1);
    spng_set_option(ctx.get(), SPNG_FILTER_CHOICE, SPNG_DISABLE_FILTERING);
    spng_set_option(ctx.get(), SPNG_IMG_COMPRESSION_LEVEL, 1);
    const bool withAlpha = !isOpaque(image);
    spng_ihdr header{};
    header.width = static_cast<uint32_t>(image.width());
    header.height = static_cast<uint32_t>(image.height());
    header.bit_depth = 8;
    header.color_type = withAlpha ? SPNG_COLOR_TYPE_TRUECOLOR_ALPHA : SPNG_COLOR_TYPE_TRUECOLOR;
    if (spng_set_ihdr(ctx.get(), &header) != 0)
        return {};
    if (spng_encode_image(ctx.get(), nullptr, 0, SPNG_FMT_PNG, SPNG_ENCODE_PROGRESSIVE | SPNG_ENCODE_FINALIZE) != 0)
        return {};
    const size_t rowBytes = static_cast<size_t>(image.width()) * (withAlpha ? 4 : 3);
    std::vector<uint8_t> row(rowBytes);
    for (int y = 0; y < image.height(); ++y) {
        unpremultiplyRow(image.row(y), image.width(), withAlpha, row.data());
        const int status = spng_encode_row(ctx.get(), row.data(), rowBytes);
        if (status != 0 && !(status == SPNG_EOI && y == image.height() - 1))
            return {};
    }
    size_t length = 0;
    int error = 0;
    void* buffer = spng_get_png_buffer(ctx.get(), &length, &error);
    if (!buffer || error != 0) {
        std::free(buffer);
        return {};
    }
    std::string bytes(static_cast<const char*>(buffer), length);
    std::free(buffer);
    return bytes;
}

std::string encodeJpeg(const Image& image, int quality)
{
    if (image.isNull())
        return {};
    std::unique_ptr<void, int (*)(tjhandle)> handle(tjInitCompress(), tjDestroy);
    if (!handle)
        return {};
    // Alpha is dropped (JPEG has none); the colour is taken as stored, which is right for opaque pictures.
    const int format = kLittleEndian ? TJPF_BGRX : TJPF_XRGB;
    unsigned char* buffer = nullptr;
    unsigned long length = 0;
    const int status = tjCompress2(handle.get(), image.bytes(), image.width(), image.stride(), image.height(), format,
                                   &buffer, &length, TJSAMP_420, std::clamp(quality, 1, 100), TJFLAG_FASTDCT);
    std::string bytes = status == 0 && buffer ? std::string(reinterpret_cast<const char*>(buffer), length) : std::string();
    tjFree(buffer);
    return bytes;
}

std::string encodeWebP(const Image& image, int quality)
{
    if (image.isNull())
        return {};
    uint8_t* buffer = nullptr;
    const size_t length = WebPEncodeBGRA(image.bytes(), image.width(), image.height(), image.stride(),
                                         static_cast<float>(std::clamp(quality, 0, 100)), &buffer);
    std::string bytes = length > 0 && buffer ? std::string(reinterpret_cast<const char*>(buffer), length) : std::string();
    WebPFree(buffer);
    return bytes;
}

bool writePng(const Image& image, const std::string& utf8Path)
{
    const std::string bytes = encodePng(image);
    return !bytes.empty() && Cv::writeFileAtomically(utf8Path, bytes);
}

} // namespace Pictor
