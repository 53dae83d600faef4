#pragma once
// FileBrowser: the ready-made folder chooser: a FileBrowserBase with a title, shown as a top-level panel of
// its own by make(). Its owner hears FileBrowserBase::chosenMsg (then reads getChosenPath()) or cancelledMsg.
//
//     FileBrowser::make(this, L"/media", UIString(ResId(11201)));

#include "toolkit/widgets/FileBrowserBase.h"

class FileBrowser : public FileBrowserBase {
public:
    using InitArgs = FileBrowserBase::InitArgs;

    explicit FileBrowser(const InitArgs& args);
    // A folder browser of the standard size starting in the user's home folder; `owner` hears the choice.
    FileBrowser(EventHandler* owner, XY<int> where);
    FileBrowser(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    FileBrowser(const FileBrowser&) = default;
    FileBrowser(FileBrowser&&) = default;
    FileBrowser& operator=(const FileBrowser&) = default;
    FileBrowser& operator=(FileBrowser&&) = default;
    ~FileBrowser() override;

    LightweightString<char> idstring() const override;

    // Shows a folder browser on the screen for `chooser`: with its bottom-left corner at `where` when that
    // is not (0, 0), else centred. Answers it, or null when there is no screen.
    static FileBrowser* make(Glob* chooser, const LightweightString<wchar_t>& folder, const UIString& title,
                             XY<int> where = {}, unsigned options = defaultOptions);
};
