#pragma once
// ImageThumbnailBrowser: a ScrollList of the picture files of one folder (or of a list of files), each line
// showing a thumbnail beside the file's name without folder and extension.
//
// A line asks the process-wide image cache for its picture the first time it is drawn, so only lines a
// person scrolls to are loaded; the picture arrives on the user-interface thread and the line redraws. A file
// that is missing or cannot be read leaves its line without a picture. A disabled line shows a duotone of
// its thumbnail in the palette's window shades, made once from the thumbnail already loaded.

#include "lists/ScrollList.h"
#include "toolkit/gfx/Surface.h"
#include "toolkit/support/Box.h"
#include "toolkit/support/Notifier.h"

#include <vector>

class ImageThumbnailBrowser : public ScrollList {
public:
    class ImageItem : public ScrollListItemWidget {
    public:
        ImageItem(const LightweightString<wchar_t>& path, const Palette& palette, uint16_t width, uint16_t height,
            Canvas* canvas = nullptr);
        ImageItem(const ImageItem&) = default;
        ImageItem(ImageItem&&) = default;
        ImageItem& operator=(const ImageItem&) = default;
        ImageItem& operator=(ImageItem&&) = default;
        ~ImageItem() override;

        LightweightString<char> idstring() const override;

        const LightweightString<wchar_t>& getPath() const { return m_path; }
        // The picture to show now: the thumbnail, or for a disabled line its duotone. Takes the picture from
        // the cache at once when the cache already holds it.
        virtual Cv::Image::Surface getThumb();
        // The size the cache is asked for: as tall as the thumbnail.
        XY<int> requestSize() const;
        int thumbHeight() const;
        bool hasAskedForPicture() const { return m_asked; }

        // Called on the user-interface thread with the cache's LoadedImage.
        void handleImageLoaded(const NotifyMsg& msg);

        // Called by the toolkit
        void drawBackground() override;
        void drawBorder() override;
        void drawText() override;

    protected:
        // Where the thumbnail is drawn, in the line's own coordinates.
        virtual Cv::Box<int, Cv::BottomUpTraits> calcThumbArea();
        // The image scaled to the thumbnail height; empty for an image without pixels.
        virtual Cv::Image::Surface createThumbnail(const Cv::Image::Surface& image);
        virtual int gap() const { return 2; }
        // The inset of the thumbnail from the line's top and bottom, beside the indent.
        virtual int itemInset() const { return gap(); }
        virtual Colour getThumbBorderColour();
        virtual void loadAsync();
        virtual int maxThumbWidth() const { return getWidth() / 2; }
        Cv::Box<int, Cv::BottomUpTraits> getClipRect();
        void makeInactiveThumb();

    private:
        LightweightString<wchar_t> m_path;
        Cv::Image::Surface m_thumb;
        Cv::Image::Surface m_inactiveThumb;
        bool m_asked = false;
    };

    struct InitArgs : ScrollList::InitArgs {
        InitArgs() = default;
        InitArgs(LightweightString<wchar_t> fromFolder, uint16_t w, uint16_t h, uint16_t lineH,
            const Palette& pal = Palette(), Canvas* c = nullptr)
            : ScrollList::InitArgs({}, w, h, lineH, pal, c)
            , folder(std::move(fromFolder))
        {
        }
        // Used when no folder is given.
        std::vector<LightweightString<wchar_t>> files;
        LightweightString<wchar_t> folder;
    };

    explicit ImageThumbnailBrowser(const InitArgs& args);
    ImageThumbnailBrowser(const LightweightString<wchar_t>& folder, uint16_t width, uint16_t height,
        uint16_t lineHeight, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    ImageThumbnailBrowser(const std::vector<LightweightString<wchar_t>>& files, uint16_t width, uint16_t height,
        uint16_t lineHeight, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    ImageThumbnailBrowser(const ImageThumbnailBrowser& other);
    ImageThumbnailBrowser(ImageThumbnailBrowser&& other)
        : ImageThumbnailBrowser(static_cast<const ImageThumbnailBrowser&>(other))
    {
    }
    ImageThumbnailBrowser& operator=(const ImageThumbnailBrowser& other);
    ImageThumbnailBrowser& operator=(ImageThumbnailBrowser&& other)
    {
        return *this = static_cast<const ImageThumbnailBrowser&>(other);
    }
    ~ImageThumbnailBrowser() override;

    LightweightString<char> idstring() const override;

    // Replaces the lines by the folder's files.
    void setPath(const LightweightString<wchar_t>& folder);
    void setFiles(const std::vector<LightweightString<wchar_t>>& paths);
    // The folder's files as full paths; derived browsers may narrow the choice.
    virtual void getFolderContents(
        const LightweightString<wchar_t>& folder, std::vector<LightweightString<wchar_t>>& out);
    virtual LightweightString<wchar_t> getSelectedFile() const;
    virtual void getSelectedFiles(std::vector<LightweightString<wchar_t>>& out) const;
    ImageItem* getImageItem(int index) const;
    // New lines at the new height, so the thumbnails are made again at their new size.
    void setLineHeight(uint16_t height) override;

protected:
    ScrollListItemWidget* makeWidget(int index, const LightweightString<wchar_t>& text, const Palette& palette,
        uint16_t width, uint16_t lineHeight, Canvas* canvas) override;

private:
    std::vector<LightweightString<wchar_t>> m_files;
};
