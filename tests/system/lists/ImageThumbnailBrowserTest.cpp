// The thumbnail browser over real files: names, thumbnail sizes, loading only what is in view, bad files and
// the duotone of disabled lines. The cache runs with no workers here, so each test says when work happens.
#include "lists/ImageThumbnailBrowser.h"
#include "../../toolkit/support/FileTestSupport.h"
#include "ListTestSupport.h"
#include "toolkit/gfx/ImageCache.h"
#include "toolkit/gfx/ImageIO.h"
#include "toolkit/gfx/SamplePictures.h"
#include "toolkit/support/FileUtils.h"
#include "toolkit/support/MainThread.h"
#include "toolkit/ui/UifStd.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

constexpr int thumbInset = 2;
// A line whose thumbnail comes to 40 pixels high.
const uint16_t lineFor40 = static_cast<uint16_t>(40 + 2 * (thumbInset + UifStd::getIndentWidth()));

class ImageThumbnailBrowserTest : public ::testing::Test {
protected:
    ImageThumbnailBrowserTest()
    {
        moveClockPastEarlierTests(ui);
        cache.setWorkerCount(0);
        cache.clear();
    }
    ~ImageThumbnailBrowserTest() override
    {
        cache.runPendingWork();
        runDeferredCalls();
        cache.clear();
        cache.setWorkerCount(CvImage::Cache::defaultWorkers);
    }
    std::string put(const std::string& name, const std::string& bytes)
    {
        std::ofstream(folder.file(name), std::ios::binary) << bytes;
        return folder.file(name);
    }
    std::string putJpeg(const std::string& name, int w, int h, unsigned seed = 1)
    {
        return put(name, Pictor::encodeJpeg(Pictor::makeSamplePicture(w, h, seed)));
    }
    ImageThumbnailBrowser* makeBrowser(uint16_t lineHeight = lineFor40, uint16_t height = 300)
    {
        ImageThumbnailBrowser::InitArgs args(fromUTF8(folder.path().string()), 320, height, lineHeight);
        return ui.make<ImageThumbnailBrowser>(args, Glob::BottomLeft(10, 10));
    }
    // Paints (lines in view ask for pictures), decodes, and delivers.
    void loadVisible()
    {
        ui.flush();
        cache.runPendingWork();
        ui.step();
    }

    UiHarness ui;
    FileTestSupport::ScratchFolder folder { "thumbs" };
    CvImage::Cache& cache = CvImage::Cache::instance();
};

} // namespace

TEST_F(ImageThumbnailBrowserTest, LineShowsTheFileNameWithoutFolderOrExtension)
{
    put("shot.png", Pictor::encodePng(Pictor::makeSamplePicture(20, 10, 1)));
    ImageThumbnailBrowser* browser = makeBrowser();
    ASSERT_EQ(browser->numItems(), 1);
    EXPECT_EQ(browser->getItemW(0), LightweightString<wchar_t>(L"shot"));
}

TEST_F(ImageThumbnailBrowserTest, WidePictureGetsAThumbnailOfItsShape)
{
    putJpeg("wide.jpg", 1000, 500);
    ImageThumbnailBrowser* browser = makeBrowser();
    loadVisible();
    const Cv::Image::Surface thumb = browser->getImageItem(0)->getThumb();
    EXPECT_EQ(thumb.width(), 80);
    EXPECT_EQ(thumb.height(), 40);
    EXPECT_EQ(thumb.getTransparencyType(), Cv::Image::Surface::FullAlpha);
}

TEST_F(ImageThumbnailBrowserTest, OnlyLinesInViewAskForTheirPictures)
{
    for (int i = 0; i < 30; ++i)
        putJpeg("p" + std::to_string(100 + i) + ".jpg", 60, 40, static_cast<unsigned>(i));
    ImageThumbnailBrowser* browser = makeBrowser();
    ui.flush();
    const int inView = static_cast<int>(browser->getVisibleHeight() / browser->getLineHeight()) + 1;
    EXPECT_LE(cache.numQueued(), static_cast<size_t>(inView + 1));
    EXPECT_TRUE(browser->getImageItem(0)->hasAskedForPicture());
    EXPECT_FALSE(browser->getImageItem(29)->hasAskedForPicture());
    browser->selectItem(29);
    ui.flush();
    EXPECT_TRUE(browser->getImageItem(29)->hasAskedForPicture());
}

TEST_F(ImageThumbnailBrowserTest, LoadedPictureIsDrawnInTheLine)
{
    put("green.png", [] {
        Pictor::Image green(60, 40);
        green.fill(0xFF00C000u);
        return Pictor::encodePng(green);
    }());
    ImageThumbnailBrowser* browser = makeBrowser();
    ImageThumbnailBrowser::ImageItem* line = browser->getImageItem(0);
    const XY<int> inThumb(thumbInset + UifStd::getIndentWidth() / 2 + 20, line->getHeight() / 2);
    loadVisible();
    EXPECT_TRUE(ui.pixelAt(line, inThumb).isCloseTo(Colour::fromBytes(0, 0xC0, 0), 0.02));
}

TEST_F(ImageThumbnailBrowserTest, BrokenFilesLeaveTheirLinesEmptyWhileTheOthersLoad)
{
    const std::string jpeg = Pictor::encodeJpeg(Pictor::makeSamplePicture(200, 100, 4));
    put("a-empty.jpg", "");
    put("b-truncated.jpg", jpeg.substr(0, jpeg.size() / 3));
    put("c-text.png", "hello");
    put("d-good.jpg", jpeg);
    ImageThumbnailBrowser* browser = makeBrowser();
    loadVisible();
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(browser->getImageItem(i)->getThumb().empty()) << i;
        EXPECT_TRUE(browser->getImageItem(i)->hasAskedForPicture()) << i;
    }
    EXPECT_FALSE(browser->getImageItem(3)->getThumb().empty());
    ui.flush();
    EXPECT_EQ(cache.numQueued(), 0u); // a failed file is not asked for again at every paint
}

TEST_F(ImageThumbnailBrowserTest, MissingFileIsNeverAskedFor)
{
    auto* browser = ui.make<ImageThumbnailBrowser>(
        ImageThumbnailBrowser::InitArgs({}, 320, 200, lineFor40), Glob::BottomLeft(10, 10));
    browser->setFiles({ fromUTF8(folder.file("gone.jpg")) });
    ui.flush();
    EXPECT_FALSE(browser->getImageItem(0)->hasAskedForPicture());
    EXPECT_EQ(cache.numQueued(), 0u);
}

TEST_F(ImageThumbnailBrowserTest, DisablingALineShowsTheDuotoneWithoutReloading)
{
    putJpeg("a.jpg", 300, 200);
    ImageThumbnailBrowser* browser = makeBrowser();
    loadVisible();
    ImageThumbnailBrowser::ImageItem* line = browser->getImageItem(0);
    const Cv::Image::Surface colour = line->getThumb();
    line->setEnabled(false);
    ui.flush();
    const Cv::Image::Surface duotone = line->getThumb();
    EXPECT_EQ(cache.numQueued(), 0u);
    ASSERT_FALSE(duotone.empty());
    EXPECT_FALSE(duotone.image().sharesPixelsWith(colour.image()));
    line->setEnabled(true);
    EXPECT_TRUE(line->getThumb().image().sharesPixelsWith(colour.image()));
}

TEST_F(ImageThumbnailBrowserTest, DuotoneBrightnessIsTheSecondStoredByte)
{
    // Left half pure red (second byte 0), right half pure green (second byte 255).
    Pictor::Image halves(80, 40);
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 80; ++x)
            halves.setPixel(x, y, x < 40 ? 0xFFFF0000u : 0xFF00FF00u);
    put("halves.png", Pictor::encodePng(halves));
    ImageThumbnailBrowser* browser = makeBrowser();
    loadVisible();
    ImageThumbnailBrowser::ImageItem* line = browser->getImageItem(0);
    line->setEnabled(false, false);
    const Cv::Image::Surface duotone = line->getThumb();
    ASSERT_EQ(duotone.width(), 80);
    const Palette& pal = line->getPalette();
    auto expected = [](const Colour& c) {
        auto byte = [](double v) { return static_cast<uint32_t>(v * 255.0); };
        return 0xFF000000u | (byte(c.r()) << 16) | (byte(c.g()) << 8) | byte(c.b());
    };
    EXPECT_EQ(duotone.image().pixel(5, 20), expected(pal.window(5)));
    EXPECT_EQ(duotone.image().pixel(75, 20), expected(pal.window(1)));
}

TEST_F(ImageThumbnailBrowserTest, PictureTheCacheHoldsIsShownWithoutAsking)
{
    putJpeg("a.jpg", 300, 200);
    makeBrowser();
    loadVisible();
    ImageThumbnailBrowser* second = makeBrowser();
    EXPECT_FALSE(second->getImageItem(0)->getThumb().empty());
    ui.flush();
    EXPECT_EQ(cache.numQueued(), 0u);
}

TEST_F(ImageThumbnailBrowserTest, FolderListingLeavesOutSubfolders)
{
    putJpeg("a.jpg", 30, 20);
    createDirectories(fromUTF8(folder.file("sub")));
    ImageThumbnailBrowser* browser = makeBrowser();
    EXPECT_EQ(browser->numItems(), 1);
}

TEST_F(ImageThumbnailBrowserTest, SelectedFilesAreFullPaths)
{
    putJpeg("a.jpg", 30, 20);
    putJpeg("b.jpg", 30, 20);
    ImageThumbnailBrowser* browser = makeBrowser();
    browser->multiSelect(true, false); // selecting from code toggles, as a plain click would
    browser->selectItem(0);
    browser->selectItem(1);
    std::vector<LightweightString<wchar_t>> files;
    browser->getSelectedFiles(files);
    EXPECT_EQ(files,
        (std::vector<LightweightString<wchar_t>> { fromUTF8(folder.file("a.jpg")), fromUTF8(folder.file("b.jpg")) }));
    EXPECT_EQ(browser->getSelectedFile(), fromUTF8(folder.file("a.jpg")));
}

TEST_F(ImageThumbnailBrowserTest, ThreadWorkersFillEveryLineInView)
{
    for (int i = 0; i < 6; ++i)
        putJpeg("t" + std::to_string(i) + ".jpg", 640, 360, static_cast<unsigned>(i));
    cache.setWorkerCount(2);
    ImageThumbnailBrowser* browser = makeBrowser(lineFor40, 600);
    ui.flush();
    cache.waitUntilIdle();
    ui.step();
    for (int i = 0; i < browser->numItems(); ++i)
        EXPECT_FALSE(browser->getImageItem(i)->getThumb().empty()) << i;
}

TEST_F(ImageThumbnailBrowserTest, BrowserClosedBeforeItsPicturesArriveIsLeftAlone)
{
    putJpeg("a.jpg", 300, 200);
    ImageThumbnailBrowser* browser = makeBrowser();
    ui.flush();
    ASSERT_EQ(cache.numQueued(), 1u);
    Glob::destroy(browser);
    cache.runPendingWork();
    ui.step(); // the delivery finds its line gone
    EXPECT_TRUE(cache.isCached(fromUTF8(folder.file("a.jpg")), { 0, 40 }));
}
