#include "toolkit/gfx/Image.h"
#include "toolkit/gfx/ImageIO.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <unistd.h>

using namespace Pictor;

namespace {

std::string readFile(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

std::filesystem::path dataDir()
{
    return std::filesystem::path(TESSEL_SOURCE_DIR) / "tests" / "toolkit" / "gfx" / "data";
}

Image decode(const std::string& bytes, XY<int> atLeast = {})
{
    return decodeImage(bytes.data(), bytes.size(), atLeast);
}

int channel(uint32_t argb, int shift)
{
    return static_cast<int>((argb >> shift) & 0xFF);
}

// A test card: opaque, half transparent and fully transparent pixels in several colours.
Image testCard(int width, int height)
{
    Image image(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double alpha = (x % 3 == 0) ? 1.0 : (x % 3 == 1 ? 0.5 : 0.0);
            image.setPixel(x, y, Image::premultiplied(Colour(x / double(width), y / double(height), 0.25, alpha)));
        }
    }
    return image;
}

uint32_t crc32(const unsigned char* data, size_t size)
{
    uint32_t crc = 0xFFFFFFFFu;
    for (size_t i = 0; i < size; ++i) {
        crc ^= data[i];
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

} // namespace

TEST(PngIO, RoundTripKeepsThePixels)
{
    const Image card = testCard(37, 23);
    const std::string png = encodePng(card);
    ASSERT_FALSE(png.empty());
    EXPECT_EQ(sniffImageFormat(png.data(), png.size()), ImageFormat::Png);
    const Image back = decode(png);
    ASSERT_FALSE(back.isNull());
    ASSERT_EQ(back.width(), 37);
    ASSERT_EQ(back.height(), 23);
    for (int y = 0; y < 23; ++y) {
        for (int x = 0; x < 37; ++x) {
            const uint32_t a = card.pixel(x, y);
            const uint32_t b = back.pixel(x, y);
            ASSERT_EQ(a >> 24, b >> 24) << x << "," << y;
            // Undoing and redoing the premultiplication may move a half-transparent channel by one step.
            for (int shift : {0, 8, 16}) {
                ASSERT_NEAR(channel(a, shift), channel(b, shift), 1) << x << "," << y;
            }
            if ((a >> 24) == 255) {
                ASSERT_EQ(a, b);
            }
        }
    }
}

TEST(PngIO, WritesAtomicallyAndReadsBack)
{
    const auto dir = std::filesystem::temp_directory_path() / ("gfx-png-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    const std::string path = (dir / "card.png").string();
    const Image card = testCard(16, 9);
    ASSERT_TRUE(writePng(card, path));
    const Image back = loadImage(path);
    ASSERT_FALSE(back.isNull());
    EXPECT_EQ(back.width(), 16);
    EXPECT_EQ(back.pixel(0, 0), card.pixel(0, 0));
    // Only the file itself is left behind: the temporary was renamed into place.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir), std::filesystem::directory_iterator()), 1);
    EXPECT_FALSE(writePng(card, (dir / "missing" / "card.png").string()));
    EXPECT_FALSE(writePng(Image(), (dir / "null.png").string()));
    EXPECT_TRUE(loadImage((dir / "absent.png").string()).isNull());
    std::filesystem::remove_all(dir);
}

TEST(ImageDecode, TruncatedFilesGiveNull)
{
    const std::string files[] = {encodePng(testCard(9, 7)), readFile(dataDir() / "blocks.jpg"),
                                 readFile(dataDir() / "halfclear.webp")};
    for (const auto& whole : files) {
        ASSERT_FALSE(whole.empty());
        ASSERT_FALSE(decode(whole).isNull());
        for (size_t length = 0; length < whole.size(); ++length) {
            ASSERT_TRUE(decode(whole.substr(0, length)).isNull())
                << "format " << int(sniffImageFormat(whole.data(), whole.size())) << " cut at " << length;
        }
    }
}

TEST(ImageDecode, GarbageAndLiesGiveNull)
{
    EXPECT_TRUE(decodeImage(nullptr, 0).isNull());
    EXPECT_TRUE(decode("not an image at all").isNull());
    EXPECT_TRUE(decode(std::string("\x89PNG\r\n\x1a\n", 8)).isNull());
    EXPECT_TRUE(decode(std::string("\xFF\xD8\xFF", 3)).isNull());
    EXPECT_TRUE(decode("RIFF\x10\0\0\0WEBPVP8 ").isNull());

    // A well-formed header that claims a picture larger than we will ever allocate.
    std::string huge("\x89PNG\r\n\x1a\n", 8);
    const unsigned char ihdr[] = {0, 0, 0, 13, 'I', 'H', 'D', 'R', 0, 0, 0x9C, 0x40, 0, 0, 0x9C, 0x40, 8, 6, 0, 0, 0};
    huge.append(reinterpret_cast<const char*>(ihdr), sizeof ihdr);
    const uint32_t crc = crc32(ihdr + 4, sizeof ihdr - 4);
    for (int shift : {24, 16, 8, 0})
        huge.push_back(static_cast<char>((crc >> shift) & 0xFF));
    EXPECT_TRUE(decode(huge).isNull());

    // Flipped bytes in a good file: never a crash, whatever the answer.
    std::string png = encodePng(testCard(12, 12));
    std::mt19937 rng(11);
    for (int i = 0; i < 300; ++i) {
        std::string damaged = png;
        damaged[8 + rng() % (damaged.size() - 8)] ^= static_cast<char>(1 + rng() % 255);
        const Image image = decode(damaged);
        EXPECT_TRUE(image.isNull() || (image.width() == 12 && image.height() == 12));
    }
}

TEST(JpegDecode, ShrinksToTheSmallestScaleThatIsStillLargeEnough)
{
    const std::string jpeg = readFile(dataDir() / "blocks.jpg"); // 64 x 48
    const Image full = decode(jpeg);
    ASSERT_FALSE(full.isNull());
    EXPECT_EQ(full.width(), 64);
    EXPECT_EQ(full.height(), 48);
    // Left half red, right half blue, a green band across the top: check the decode is upright and in order.
    EXPECT_GT(channel(full.pixel(8, 30), 16), 180);
    EXPECT_LT(channel(full.pixel(8, 30), 0), 60);
    EXPECT_GT(channel(full.pixel(56, 30), 0), 180);
    EXPECT_GT(channel(full.pixel(30, 2), 8), 150);
    EXPECT_EQ(full.pixel(8, 30) >> 24, 0xFFu);

    const Image quarter = decode(jpeg, {16, 12});
    EXPECT_EQ(quarter.width(), 16);
    EXPECT_EQ(quarter.height(), 12);
    const Image threeEighths = decode(jpeg, {17, 12}); // a quarter would be one pixel too narrow
    EXPECT_EQ(threeEighths.width(), 24);
    EXPECT_EQ(threeEighths.height(), 18);
    const Image notEnlarged = decode(jpeg, {500, 500});
    EXPECT_EQ(notEnlarged.width(), 64);
    EXPECT_GT(channel(quarter.pixel(2, 8), 16), 180);
}

TEST(WebPDecode, AlphaArrivesPremultiplied)
{
    const Image image = decode(readFile(dataDir() / "halfclear.webp")); // 16 x 16, left half opaque orange
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.width(), 16);
    EXPECT_EQ(image.pixel(2, 5), 0xFFFF8000u);
    EXPECT_EQ(image.pixel(12, 5), 0u);
}

TEST(Image, CopiesSharePixelsUntilCopied)
{
    Image a(4, 4);
    Image shared = a;
    EXPECT_TRUE(shared.sharesPixelsWith(a));
    Image own = a.copy();
    EXPECT_FALSE(own.sharesPixelsWith(a));
    a.setPixel(1, 1, 0xFF123456u);
    EXPECT_EQ(shared.pixel(1, 1), 0xFF123456u);
    EXPECT_EQ(own.pixel(1, 1), 0u);
    EXPECT_TRUE(Image(0, 5).isNull());
    EXPECT_TRUE(Image(Image::maxDimension + 1, 1).isNull());
    EXPECT_EQ(a.pixel(-1, 0), 0u);
    EXPECT_TRUE(Image::unpremultiplied(Image::premultiplied(Colour(0.2, 0.4, 0.6, 0.5))).isCloseTo(Colour(0.2, 0.4, 0.6, 0.5), 0.01));
}
