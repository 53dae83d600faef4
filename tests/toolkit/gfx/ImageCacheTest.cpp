// The thumbnail cache: results arrive on the user-interface thread only, bad files give empty pictures, and
// what is kept stays within its memory bound.
#include "toolkit/gfx/ImageCache.h"
#include "../support/FileTestSupport.h"
#include "toolkit/gfx/ImageIO.h"
#include "toolkit/gfx/SamplePictures.h"
#include "toolkit/support/MainThread.h"

#include <gtest/gtest.h>

#include <fstream>
#include <thread>

namespace {

using FileTestSupport::ScratchFolder;

void writeBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
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

// A well-formed PNG header that claims a picture of width x height (and no pixel data worth the name).
std::string pngClaiming(uint32_t width, uint32_t height)
{
    std::string png = Pictor::encodePng(Pictor::makeSamplePicture(8, 8, 1));
    for (int i = 0; i < 4; ++i) {
        png[16 + i] = static_cast<char>(width >> (24 - 8 * i));
        png[20 + i] = static_cast<char>(height >> (24 - 8 * i));
    }
    const uint32_t crc = crc32(reinterpret_cast<const unsigned char*>(png.data()) + 12, 17);
    for (int i = 0; i < 4; ++i)
        png[29 + i] = static_cast<char>(crc >> (24 - 8 * i));
    return png;
}

class ImageCacheTest : public ::testing::Test {
protected:
    LightweightString<wchar_t> put(const std::string& name, const std::string& bytes)
    {
        writeBytes(folder.file(name), bytes);
        return fromUTF8(folder.file(name));
    }
    LightweightString<wchar_t> putJpeg(const std::string& name, int w, int h, unsigned seed = 1)
    {
        return put(name, Pictor::encodeJpeg(Pictor::makeSamplePicture(w, h, seed)));
    }
    // Loads with no workers: the work runs when asked, the callback when deferred calls run.
    Cv::Image::Surface loadNow(const LightweightString<wchar_t>& path, XY<int> atLeast = { 0, 40 })
    {
        Cv::Image::Surface got;
        bool called = false;
        cache.loadAsync(path, CvImage::Cache::formatARGB, atLeast, [&](const NotifyMsg& msg) {
            called = true;
            got = msg.getObjectAs<CvImage::LoadedImage>()->getSurface();
        });
        cache.runPendingWork();
        runDeferredCalls();
        EXPECT_TRUE(called);
        return got;
    }

    ScratchFolder folder { "imagecache" };
    CvImage::Cache cache { 0 };
};

} // namespace

TEST_F(ImageCacheTest, ResultArrivesOnlyWhenTheUserInterfaceThreadDrains)
{
    const auto path = putJpeg("a.jpg", 320, 200);
    int calls = 0;
    cache.loadAsync(path, CvImage::Cache::formatARGB, { 0, 40 }, [&](const NotifyMsg&) { ++calls; });
    cache.runPendingWork();
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(cache.isCached(path, { 0, 40 }));
    runDeferredCalls();
    EXPECT_EQ(calls, 1);
}

TEST_F(ImageCacheTest, PictureIsShrunkToTheSmallestSizeCoveringTheRequest)
{
    const Cv::Image::Surface picture = loadNow(putJpeg("wide.jpg", 1000, 500), { 0, 40 });
    EXPECT_EQ(picture.height(), 40);
    EXPECT_EQ(picture.width(), 80);
}

TEST_F(ImageCacheTest, PngAndWebPLoadLikeJpeg)
{
    const Pictor::Image sample = Pictor::makeSamplePicture(120, 60, 3);
    EXPECT_EQ(loadNow(put("s.png", Pictor::encodePng(sample))).height(), 40);
    EXPECT_EQ(loadNow(put("s.webp", Pictor::encodeWebP(sample))).width(), 80);
}

TEST_F(ImageCacheTest, BadFilesGiveAnEmptyPictureAndAreNotKept)
{
    const std::string jpeg = Pictor::encodeJpeg(Pictor::makeSamplePicture(200, 100, 2));
    std::string corrupt = jpeg;
    for (size_t i = corrupt.size() / 3; i < corrupt.size() / 2; ++i)
        corrupt[i] = static_cast<char>(0xFF);
    const LightweightString<wchar_t> paths[] = {
        fromUTF8(folder.file("missing.jpg")),
        put("empty.jpg", ""),
        put("truncated.jpg", jpeg.substr(0, jpeg.size() / 2)),
        put("corrupt.jpg", corrupt),
        put("text.png", "not a picture at all"),
        put("enormous.png", pngClaiming(30000, 30000)),
    };
    for (const auto& path : paths) {
        EXPECT_TRUE(loadNow(path).empty()) << toUTF8(path.view()).str();
        EXPECT_FALSE(cache.isCached(path, { 0, 40 }));
    }
    EXPECT_EQ(cache.memoryUsed(), 0u);
}

TEST_F(ImageCacheTest, LeastRecentlyUsedPictureGoesFirstOverTheMemoryLimit)
{
    const auto a = putJpeg("a.jpg", 80, 40, 1);
    const auto b = putJpeg("b.jpg", 80, 40, 2);
    const auto c = putJpeg("c.jpg", 80, 40, 3);
    cache.setMemoryLimit(2 * 80 * 40 * 4); // room for two
    loadNow(a);
    loadNow(b);
    EXPECT_FALSE(cache.get(a, { 0, 40 }).empty()); // a is now the more recently used
    loadNow(c);
    EXPECT_TRUE(cache.isCached(a, { 0, 40 }));
    EXPECT_FALSE(cache.isCached(b, { 0, 40 }));
    EXPECT_TRUE(cache.isCached(c, { 0, 40 }));
    EXPECT_LE(cache.memoryUsed(), cache.getMemoryLimit());
}

TEST_F(ImageCacheTest, PictureLargerThanTheWholeLimitIsDeliveredButNotKept)
{
    cache.setMemoryLimit(100);
    const auto path = putJpeg("a.jpg", 80, 40);
    EXPECT_FALSE(loadNow(path).empty());
    EXPECT_EQ(cache.numCached(), 0u);
}

TEST_F(ImageCacheTest, CancelledRequestIsNotCalledBack)
{
    const auto path = putJpeg("a.jpg", 80, 40);
    bool called = false;
    const auto request
        = cache.loadAsync(path, CvImage::Cache::formatARGB, { 0, 40 }, [&](const NotifyMsg&) { called = true; });
    cache.cancel(request);
    EXPECT_EQ(cache.numQueued(), 0u);
    cache.runPendingWork();
    runDeferredCalls();
    EXPECT_FALSE(called);
}

TEST_F(ImageCacheTest, NewestRequestIsServedFirst)
{
    const auto a = putJpeg("a.jpg", 80, 40, 1);
    const auto b = putJpeg("b.jpg", 80, 40, 2);
    std::vector<std::string> order;
    for (const auto& path : { a, b })
        cache.loadAsync(path, CvImage::Cache::formatARGB, { 0, 40 }, [&order](const NotifyMsg& msg) {
            order.push_back(toUTF8(msg.getObjectAs<CvImage::LoadedImage>()->getPath().view()).str());
        });
    cache.runPendingWork();
    runDeferredCalls();
    ASSERT_EQ(order.size(), 2u);
    EXPECT_EQ(order.front(), toUTF8(b.view()).str());
}

TEST_F(ImageCacheTest, ThreadWorkersDecodeAndCallBackOnTheUserInterfaceThreadOnly)
{
    CvImage::Cache threaded(2);
    std::vector<LightweightString<wchar_t>> paths;
    for (int i = 0; i < 12; ++i)
        paths.push_back(putJpeg("p" + std::to_string(i) + ".jpg", 160 + i, 90, static_cast<unsigned>(i)));
    paths.push_back(put("broken.jpg", "\xFF\xD8\xFF junk"));
    int delivered = 0;
    int offThread = 0;
    for (const auto& path : paths)
        threaded.loadAsync(path, CvImage::Cache::formatARGB, { 0, 30 }, [&](const NotifyMsg&) {
            ++delivered;
            offThread += isMainThread() ? 0 : 1;
        });
    threaded.waitUntilIdle();
    EXPECT_EQ(delivered, 0);
    runDeferredCalls();
    EXPECT_EQ(delivered, static_cast<int>(paths.size()));
    EXPECT_EQ(offThread, 0);
    EXPECT_EQ(threaded.numCached(), paths.size() - 1);
}

TEST_F(ImageCacheTest, ThreadWorkerCountCanChangeWhileWorkIsQueued)
{
    CvImage::Cache threaded(1);
    int delivered = 0;
    for (int i = 0; i < 6; ++i)
        threaded.loadAsync(putJpeg("q" + std::to_string(i) + ".jpg", 120, 80, static_cast<unsigned>(i)),
            CvImage::Cache::formatARGB, { 0, 20 }, [&](const NotifyMsg&) { ++delivered; });
    threaded.setWorkerCount(2);
    threaded.waitUntilIdle();
    runDeferredCalls();
    EXPECT_EQ(delivered, 6);
}
