#pragma once
// Reading PNG, JPEG and WebP images and writing PNG.
//
// Readers take whatever bytes they are given: a file that is not an image, is truncated, lies about its size,
// or would need more than maxDecodedPixels pixels gives a null Image, never a crash. The functions keep no
// state, so background threads may decode at the same time (thumbnails are loaded that way).

#include "toolkit/gfx/Image.h"
#include "toolkit/support/XY.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Pictor {

enum class ImageFormat : uint8_t { Unknown, Png, Jpeg, WebP };

// Refuses images whose pixels would take more than 1 GiB.
constexpr int64_t maxDecodedPixels = int64_t(1) << 28;

// Recognises a format by the first bytes of the file.
ImageFormat sniffImageFormat(const void* data, size_t size);

// `atLeast` lets a large image be decoded smaller: a JPEG is decoded at the smallest of its cheap reduced
// scales (1/8 steps) whose width and height are both at least the requested ones, which saves most of the
// decoding work for thumbnails. Other formats, and a request of {0, 0}, give the image at full size.
// `pixelLimit` refuses images that would decode to more pixels than that (lower than maxDecodedPixels for
// callers that decode many files at once, such as the thumbnail cache).
Image decodeImage(const void* data, size_t size, XY<int> atLeast = {}, int64_t pixelLimit = maxDecodedPixels);
Image loadImage(const std::string& utf8Path, XY<int> atLeast = {}, int64_t pixelLimit = maxDecodedPixels);

// Fast PNG: no filtering and light compression, because these files (screen grabs, exports) are written while
// the user waits. Answers the encoded bytes, or empty for a null image.
std::string encodePng(const Image& image);
// JPEG and (lossy) WebP of opaque pictures, for sample files and fixtures; quality 1..100. Empty for a null
// image. WebP takes the stored (premultiplied) words as they are, which is exact for opaque pixels.
std::string encodeJpeg(const Image& image, int quality = 85);
std::string encodeWebP(const Image& image, int quality = 80);
// Writes through a temporary file renamed into place, so a failure leaves any earlier file as it was.
bool writePng(const Image& image, const std::string& utf8Path);

} // namespace Pictor
