#pragma once
// FileBrowserBase: a panel for choosing a folder (or a file) from the real file system.
//
// From the top: the folder being shown, a table of what it holds (folders first, then files when the options
// ask for them, each sorted by name without regard to case), and a row of buttons: Up, OK, Cancel.
//
//   input                                   | browser does
//   ----------------------------------------+---------------------------------------------------------------
//   double click on a folder, or Right      | goes into it
//   Up, Backspace or Left                   | goes to the parent folder
//   OK, Return                              | chooses: the current row's entry when one is current, else the
//                                           | folder shown; the owner hears chosenMsg, then the panel closes
//   Cancel, Escape, the close button        | the owner hears cancelledMsg, then the panel closes
//
// A folder that cannot be read shows as empty, with a note beside its path; the user can still go up. The
// owner reads the choice with getChosenPath() while handling chosenMsg.
//
// Subclasses choose the columns (getColumnDefinitions; the keys "name", "kind" and "modified" are known) and
// may narrow what is listed (acceptEntry).

#include "toolkit/support/LightweightString.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/widgets/iTableAdaptor.h"

#include <cstdint>
#include <vector>

class Button;
class EventHandler;
class TableWidget;

class FileBrowserBase : public StandardPanel, public iTableAdaptor {
public:
    // Option bits for init().
    enum Options : unsigned {
        ListFiles = 0x01,   // files are listed (and can be chosen) beside folders
        ChooseFolder = 0x02, // the choice is a folder: files, when listed, are shown dimmed and cannot be chosen
        ShowHidden = 0x04,  // names starting with '.' too
        Buttons = 0x40,     // the Up, OK and Cancel buttons (without them, keys and double clicks only)
    };
    static constexpr unsigned defaultOptions = ChooseFolder | Buttons;

    struct InitArgs : StandardPanel::InitArgs {
        InitArgs();
        // A size of 0 is the standard size.
        InitArgs(UIString panelTitle, LightweightString<wchar_t> startFolder, uint16_t w = 0, uint16_t h = 0,
                 const Palette& pal = Palette(), Canvas* c = nullptr);
        InitArgs(const GlobCreationInfo& info);

        // Empty: the user's home folder.
        LightweightString<wchar_t> folder;
        // Who hears the choice; null: the parent.
        Glob* chooser = nullptr;
        unsigned options = defaultOptions;
    };

    struct Entry {
        LightweightString<wchar_t> name;
        bool folder = false;
        // Seconds since 1970, or 0 when unknown.
        int64_t modified = 0;
    };

    explicit FileBrowserBase(const InitArgs& args);
    FileBrowserBase(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    FileBrowserBase(const FileBrowserBase& other);
    FileBrowserBase(FileBrowserBase&& other) : FileBrowserBase(static_cast<const FileBrowserBase&>(other)) {}
    FileBrowserBase& operator=(const FileBrowserBase& other);
    FileBrowserBase& operator=(FileBrowserBase&& other) { return *this = static_cast<const FileBrowserBase&>(other); }
    ~FileBrowserBase() override;

    LightweightString<char> idstring() const override;

    // Builds the contents with the option bits and shows the folder. The constructor from InitArgs calls it;
    // subclasses made from other arguments, or with columns of their own (which a base constructor cannot
    // see yet), call it in their constructor. Calling it again rebuilds.
    void init(unsigned options);
    unsigned getOptions() const { return m_options; }

    // ---- Where the browser is
    // Shows a folder. Answers false (staying where it was) for a path that is not a folder.
    bool setFolder(const LightweightString<wchar_t>& folder);
    const LightweightString<wchar_t>& getFolder() const { return m_folder; }
    bool goUp();
    // Goes into the folder of that row. Answers false for a file or no such row.
    bool enter(unsigned row);
    // Lists the folder again.
    void refresh();
    const std::vector<Entry>& getEntries() const { return m_entries; }
    // -1 when no row is current.
    int getCurrentRow() const;
    void setCurrentRow(int row);
    TableWidget* getTable() const { return m_table; }
    bool isFolderReadable() const { return m_readable; }

    // ---- Choosing
    // Who hears chosenMsg and cancelledMsg (null: the parent). Anything that is not a widget is ignored.
    void setChooser(EventHandler* chooser);
    // What OK chooses now.
    LightweightString<wchar_t> getSelectedPath() const;
    // The path chosen by OK; empty before.
    const LightweightString<wchar_t>& getChosenPath() const { return m_chosen; }
    // What OK does: tells the owner chosenMsg and closes. Answers whether the panel still exists (it does not
    // when the choice was made; it does when there was nothing that may be chosen).
    bool choose();
    // What Cancel does.
    void cancel();

    static constexpr const char* chosenMsg = "file_browser_chosen";
    static constexpr const char* cancelledMsg = "file_browser_cancelled";

    // ---- Table adaptor
    unsigned getSize() override;
    LightweightString<wchar_t> getFieldText(unsigned row, unsigned col) override;
    bool getFieldColours(unsigned row, unsigned col, Colour& text, Colour& background) override;
    int getTextStyle(unsigned row, unsigned col) override;
    bool hasUniformRowHeights() override { return true; }
    bool canWordWrap(unsigned, unsigned) override { return false; }
    // Name (resizeable, filling the width), kind and date modified.
    std::vector<TableColumnDescription> getColumnDefinitions() override;

    // Called by the toolkit
    bool react(const Event& event) override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void reshape() override;
    void drawText() override;
    void close() override;

protected:
    // Whether a listed name is shown; the default shows everything the options allow.
    virtual bool acceptEntry(const Entry& entry) const;
    // The text of a cell, by the column's key.
    virtual LightweightString<wchar_t> getEntryField(const Entry& entry, const LightweightString<char>& key) const;

private:
    void placeChildren();
    GlobBox pathBox() const;
    bool canChoose(const Entry& entry) const;
    // The keys of getColumnDefinitions, read once.
    const std::vector<LightweightString<char>>& columnKeys();
    void notifyAndClose(const char* msg);

    std::vector<Entry> m_entries;
    std::vector<LightweightString<char>> m_keys; // the column keys, in column order
    LightweightString<wchar_t> m_folder;
    LightweightString<wchar_t> m_startFolder;
    LightweightString<wchar_t> m_chosen;
    TableWidget* m_table = nullptr;
    Button* m_up = nullptr;
    Button* m_ok = nullptr;
    Button* m_cancel = nullptr;
    GlobWatch m_chooser;
    unsigned m_options = defaultOptions;
    bool m_readable = true;
    bool m_finished = false;
};
