// Gallery page: the image thumbnail browser on a folder the page writes itself: photographs of different
// sizes and shapes as JPEG, PNG and WebP, one broken file (its line stays without a picture), and one line
// disabled (its picture in the duotone of the window shades). A second browser shows the same folder chosen
// several at once.
#include "lists/ImageThumbnailBrowser.h"
#include "toolkit/gfx/ImageCache.h"
#include "toolkit/gfx/ImageIO.h"
#include "toolkit/gfx/SamplePictures.h"
#include "toolkit/support/AtomicFile.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StandardPanel.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <filesystem>
#include <string>

namespace {

constexpr int pageWidth = 760;
constexpr int pageHeight = 520;
constexpr int margin = 16;

std::string writeSampleFolder()
{
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tessel-gallery-thumbnails";
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    std::filesystem::create_directories(folder, ignored);
    auto put
        = [&](const char* name, const std::string& bytes) { Cv::writeFileAtomically((folder / name).string(), bytes); };
    put("Beach at dusk.jpg", Pictor::encodeJpeg(Pictor::makeSamplePicture(3000, 2000, 1)));
    put("Harbour.jpg", Pictor::encodeJpeg(Pictor::makeSamplePicture(640, 480, 2)));
    put("Mountain panorama.jpg", Pictor::encodeJpeg(Pictor::makeSamplePicture(2400, 600, 3)));
    put("Portrait.png", Pictor::encodePng(Pictor::makeSamplePicture(400, 600, 4)));
    put("Meadow.webp", Pictor::encodeWebP(Pictor::makeSamplePicture(800, 450, 5)));
    const std::string cut = Pictor::encodeJpeg(Pictor::makeSamplePicture(800, 600, 6));
    put("Broken transfer.jpg", cut.substr(0, cut.size() / 3));
    put("Old scan (disabled).jpg", Pictor::encodeJpeg(Pictor::makeSamplePicture(1200, 900, 7)));
    return folder.string();
}

Glob* buildThumbnailsPage()
{
    StandardPanel* page = new StandardPanel(galleryPageArgs(L"Image thumbnail browser", pageWidth, pageHeight));
    const Palette& pal = page->getPalette();
    const LightweightString<wchar_t> folder = fromUTF8(writeSampleFolder());
    const int width = (pageWidth - 3 * margin) / 2;

    page->addWidget<GalleryLabel>(
        GalleryLabel::InitArgs(L"A folder of pictures; one broken, one disabled", width, 20, pal),
        Glob::UserTopLeft(margin, margin));
    ImageThumbnailBrowser::InitArgs args(folder, static_cast<uint16_t>(width), pageHeight - 2 * margin - 24, 60, pal);
    auto* browser = page->addWidget<ImageThumbnailBrowser>(args, Glob::UserTopLeft(margin, margin + 24));
    browser->selectItem(2);
    for (int i = 0; i < browser->numItems(); ++i)
        if (browser->getItemW(i).contains(L"disabled"))
            browser->getItemWidget(i)->setEnabled(false);

    page->addWidget<GalleryLabel>(GalleryLabel::InitArgs(L"Taller lines, several chosen", width, 20, pal),
        Glob::UserTopLeft(2 * margin + width, margin));
    ImageThumbnailBrowser::InitArgs tall(folder, static_cast<uint16_t>(width), pageHeight - 2 * margin - 24, 90, pal);
    auto* second = page->addWidget<ImageThumbnailBrowser>(tall, Glob::UserTopLeft(2 * margin + width, margin + 24));
    second->multiSelect(true, false);
    second->selectItem(0);
    second->selectItem(3);
    return page;
}

// The pictures arrive from the cache's workers: paint once so the lines ask, wait for the decoding, and let
// the workbench's next turns deliver and paint them.
void waitForPictures(Glob*)
{
    if (Screen* screen = Screen::current())
        screen->processEvents();
    CvImage::Cache::instance().waitUntilIdle();
}

GalleryPageRegistrar thumbnailsPage("Thumbnails", buildThumbnailsPage, waitForPictures);

} // namespace
