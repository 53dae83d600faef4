#include "lists/ImageThumbnailBrowser.h"

#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/ImageCache.h"
#include "toolkit/gfx/ImageConverter.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/support/FileUtils.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>

using ThumbBox = Cv::Box<int, Cv::BottomUpTraits>;

// ---------------------------------------------------------------------------------------------------------
// ImageItem

ImageThumbnailBrowser::ImageItem::ImageItem(
    const LightweightString<wchar_t>& path, const Palette& palette, uint16_t width, uint16_t height, Canvas* canvas)
    : ScrollListItemWidget(stripExtension(stripPath(path)), palette, SLItemFlat, width, height, canvas)
    , m_path(path)
{
}

ImageThumbnailBrowser::ImageItem::~ImageItem() = default;

LightweightString<char> ImageThumbnailBrowser::ImageItem::idstring() const
{
    return "ImageItem";
}

int ImageThumbnailBrowser::ImageItem::thumbHeight() const
{
    return std::max(0, getHeight() - 2 * (itemInset() + UifStd::getIndentWidth()));
}

XY<int> ImageThumbnailBrowser::ImageItem::requestSize() const
{
    return { 0, thumbHeight() };
}

void ImageThumbnailBrowser::ImageItem::loadAsync()
{
    if (m_asked || !fileExists(m_path))
        return;
    m_asked = true;
    GlobWatch watch(this);
    CvImage::Cache::instance().loadAsync(
        m_path, CvImage::Cache::formatARGB, requestSize(), [watch](const NotifyMsg& msg) {
            if (Glob* line = watch.get())
                static_cast<ImageItem*>(line)->handleImageLoaded(msg);
        });
}

void ImageThumbnailBrowser::ImageItem::handleImageLoaded(const NotifyMsg& msg)
{
    const Cv::Ptr<CvImage::LoadedImage> loaded = msg.getObjectAs<CvImage::LoadedImage>();
    if (!loaded)
        return;
    m_thumb = createThumbnail(loaded->getSurface());
    m_inactiveThumb = {};
    redraw();
}

Cv::Image::Surface ImageThumbnailBrowser::ImageItem::createThumbnail(const Cv::Image::Surface& image)
{
    const int height = thumbHeight();
    if (image.empty() || height <= 0)
        return {};
    const auto width = static_cast<int>(int64_t(image.width()) * height / image.height());
    Cv::Image::Surface thumb(width, height, CvImage::Cache::formatARGB);
    if (!ImageConverter::resize(image, thumb))
        return {};
    thumb.setTransparencyType(Cv::Image::Surface::FullAlpha);
    return thumb;
}

void ImageThumbnailBrowser::ImageItem::makeInactiveThumb()
{
    if (m_thumb.empty() || !m_inactiveThumb.empty())
        return;
    const Colour light = getPalette().window(5);
    const Colour dark = getPalette().window(1);
    Cv::Image::Surface duotone(m_thumb.width(), m_thumb.height(), m_thumb.getFormat());
    if (duotone.empty())
        return;
    auto mix = [](double c5, double c1, double t) { return static_cast<uint32_t>((c5 + t * (c1 - c5)) * 255.0); };
    for (int y = 0; y < m_thumb.height(); ++y) {
        // The second stored byte of each pixel is its brightness here (the green channel).
        const auto* in = reinterpret_cast<const uint8_t*>(m_thumb.image().row(y));
        uint32_t* out = duotone.image().row(y);
        for (int x = 0; x < m_thumb.width(); ++x) {
            const double t = in[x * 4 + 1] / 255.0;
            out[x] = 0xFF000000u | (mix(light.r(), dark.r(), t) << 16) | (mix(light.g(), dark.g(), t) << 8)
                | mix(light.b(), dark.b(), t);
        }
    }
    duotone.setTransparencyType(m_thumb.getTransparencyType());
    m_inactiveThumb = duotone;
}

Cv::Image::Surface ImageThumbnailBrowser::ImageItem::getThumb()
{
    if (m_thumb.empty()) {
        CvImage::Cache& cache = CvImage::Cache::instance();
        if (cache.isCached(m_path, requestSize()))
            m_thumb = createThumbnail(cache.get(m_path, requestSize()));
    }
    if (isActive())
        return m_thumb;
    makeInactiveThumb();
    return m_inactiveThumb;
}

ThumbBox ImageThumbnailBrowser::ImageItem::calcThumbArea()
{
    const int height = thumbHeight();
    // One column width for every line, so the names line up: a landscape frame, or less on narrow lines.
    const int width = std::max(0, std::min(maxThumbWidth(), height * 3 / 2));
    const int left = gap() + UifStd::getIndentWidth() / 2;
    const int bottom = (getHeight() - height) / 2;
    return ThumbBox(left, bottom, left + width, bottom + height);
}

ThumbBox ImageThumbnailBrowser::ImageItem::getClipRect()
{
    return calcThumbArea().intersection(getLocalBox());
}

Colour ImageThumbnailBrowser::ImageItem::getThumbBorderColour()
{
    return getBackCol().scale(0.5);
}

void ImageThumbnailBrowser::ImageItem::drawBackground()
{
    ScrollListItemWidget::drawBackground();
    const ThumbBox area = calcThumbArea();
    if (area.empty())
        return;
    Pictor::Painter& p = painter();
    p.fillRoundedRect(area, 3.0, getPalette().window(1));
    Cv::Image::Surface thumb = getThumb();
    if (thumb.empty()) {
        loadAsync();
        return;
    }
    // Centred in the frame; a picture wider than the frame is scaled down to fit it.
    double w = thumb.width();
    double h = thumb.height();
    if (w > area.width()) {
        h = h * area.width() / w;
        w = area.width();
    }
    const double x = area.left() + (area.width() - w) / 2.0;
    const double y = area.bottom() + (area.height() - h) / 2.0;
    Pictor::StateSaver saver(p);
    p.clipTo(getClipRect());
    p.drawImage(thumb.image(), Pictor::PaintRect(x, y, x + w, y + h));
}

void ImageThumbnailBrowser::ImageItem::drawBorder()
{
    const ThumbBox area = calcThumbArea();
    if (!area.empty())
        painter().strokeRoundedRect(area, 3.0, getThumbBorderColour());
}

void ImageThumbnailBrowser::ImageItem::drawText()
{
    const LightweightString<wchar_t> text = getText();
    const int left = calcThumbArea().right() + 3 * gap();
    const GlobBox box = getLocalBox();
    painter().drawTextInBox(text.view(), UifStd::defaultFont(), getTextCol(),
        Pictor::PaintRect(left, box.bottom(), box.right() - gap(), box.top()), Pictor::TextAlign::Left,
        Pictor::textEllipsis);
}

// ---------------------------------------------------------------------------------------------------------
// The browser

ImageThumbnailBrowser::ImageThumbnailBrowser(const InitArgs& args)
    : ScrollList(args)
{
    if (!args.folder.empty())
        setPath(args.folder);
    else
        setFiles(args.files);
}

ImageThumbnailBrowser::ImageThumbnailBrowser(const LightweightString<wchar_t>& folder, uint16_t width, uint16_t height,
    uint16_t lineHeight, const Palette& palette, Canvas* canvas)
    : ScrollList(InitArgs(folder, width, height, lineHeight, palette, canvas))
{
    // Only a browser standing on its own may be dragged about by the user.
    setMovable(parent() == nullptr);
    setPath(folder);
}

ImageThumbnailBrowser::ImageThumbnailBrowser(const std::vector<LightweightString<wchar_t>>& files, uint16_t width,
    uint16_t height, uint16_t lineHeight, const Palette& palette, Canvas* canvas)
    : ScrollList(InitArgs({}, width, height, lineHeight, palette, canvas))
{
    setFiles(files);
}

ImageThumbnailBrowser::ImageThumbnailBrowser(const ImageThumbnailBrowser& other)
    : EventHandler(other)
    , Cv::InternalRefCount(other)
    , iVirtual(other)
    , iObject(other)
    , ScrollList(other)
{
    // The list's copy made plain lines (a base cannot make ours): make image lines again.
    setFiles(other.m_files);
}

ImageThumbnailBrowser& ImageThumbnailBrowser::operator=(const ImageThumbnailBrowser& other)
{
    if (this != &other) {
        ScrollList::operator=(other);
        setFiles(other.m_files);
    }
    return *this;
}

ImageThumbnailBrowser::~ImageThumbnailBrowser() = default;

LightweightString<char> ImageThumbnailBrowser::idstring() const
{
    return "ImageThumbnailBrowser";
}

void ImageThumbnailBrowser::getFolderContents(
    const LightweightString<wchar_t>& folder, std::vector<LightweightString<wchar_t>>& out)
{
    getDirectoryContents(folder, L"*.*", out, eDirFiles | eDirFullPaths);
}

void ImageThumbnailBrowser::setPath(const LightweightString<wchar_t>& folder)
{
    std::vector<LightweightString<wchar_t>> files;
    getFolderContents(folder, files);
    setFiles(files);
}

void ImageThumbnailBrowser::setFiles(const std::vector<LightweightString<wchar_t>>& paths)
{
    m_files = paths;
    std::vector<LightweightString<wchar_t>> names;
    names.reserve(paths.size());
    for (const auto& path : paths)
        names.push_back(stripExtension(stripPath(path)));
    ScrollList::setStrings(names);
}

ScrollListItemWidget* ImageThumbnailBrowser::makeWidget(int index, const LightweightString<wchar_t>& text,
    const Palette& palette, uint16_t width, uint16_t lineHeight, Canvas* canvas)
{
    if (index < 0 || static_cast<size_t>(index) >= m_files.size())
        return ScrollList::makeWidget(index, text, palette, width, lineHeight, canvas);
    return new ImageItem(m_files[static_cast<size_t>(index)], palette, width, lineHeight, canvas);
}

ImageThumbnailBrowser::ImageItem* ImageThumbnailBrowser::getImageItem(int index) const
{
    return dynamic_cast<ImageItem*>(getItemWidget(index));
}

LightweightString<wchar_t> ImageThumbnailBrowser::getSelectedFile() const
{
    const int index = getSelectedItem();
    return index >= 0 && static_cast<size_t>(index) < m_files.size() ? m_files[static_cast<size_t>(index)]
                                                                     : LightweightString<wchar_t>();
}

void ImageThumbnailBrowser::getSelectedFiles(std::vector<LightweightString<wchar_t>>& out) const
{
    for (int i = 0; i < numItems() && static_cast<size_t>(i) < m_files.size(); ++i)
        if (itemSelected(i))
            out.push_back(m_files[static_cast<size_t>(i)]);
}

void ImageThumbnailBrowser::setLineHeight(uint16_t height)
{
    if (height == 0 || height == getLineHeight())
        return;
    ScrollList::setLineHeight(height);
    setFiles(m_files);
}
