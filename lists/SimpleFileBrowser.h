#pragma once
// SimpleFileBrowser: the toolkit's folder browser reduced to one column of names.

#include "toolkit/widgets/FileBrowserBase.h"

class SimpleFileBrowser : public FileBrowserBase {
public:
    // The options both constructors build with: choose a folder, with the Up, OK and Cancel buttons.
    static constexpr unsigned browserOptions = 66;

    explicit SimpleFileBrowser(const FileBrowserBase::InitArgs& args);
    // A browser of the standard size starting in the user's home folder; `owner` hears the choice.
    SimpleFileBrowser(EventHandler* owner, XY<int> where);
    SimpleFileBrowser(const SimpleFileBrowser&) = default;
    SimpleFileBrowser(SimpleFileBrowser&&) = default;
    ~SimpleFileBrowser() override;

    LightweightString<char> idstring() const override;

    // Shows a browser as a top-level widget: with its bottom-left corner at `where` when `where` has a
    // non-zero x, otherwise centred on the screen. Null when there is no screen.
    static SimpleFileBrowser* make(const FileBrowserBase::InitArgs& args, XY<int> where);

    // One resizeable column, "name", titled with resource text 10668.
    std::vector<TableColumnDescription> getColumnDefinitions() override;
};
