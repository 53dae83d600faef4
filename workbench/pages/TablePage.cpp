// Gallery page: tables and the folder browser. A table with rows of different heights, a wrapped cell,
// coloured cells, a current row, a column dragged wider, check box and choice columns and an open text
// editor; the same table focused and disabled; and a folder browser on the folder the workbench runs in.
#include "toolkit/support/FileUtils.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/FileBrowserBase.h"
#include "toolkit/widgets/TableWidget.h"
#include "toolkit/widgets/iTableAdaptor.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int pageWidth = 980;
constexpr int pageHeight = 640;
constexpr int margin = 16;

struct Clip {
    std::wstring name;
    std::wstring note;
    std::wstring used;
    std::wstring kind;
};

// The page is its tables' adaptor, so the rows live exactly as long as the tables that show them.
class TablePagePanel : public StandardPanel, public iTableAdaptor {
public:
    explicit TablePagePanel(const InitArgs& args) : StandardPanel(args)
    {
        m_clips = {
            {L"Opening titles", L"Short", L"1", L"Video"},
            {L"Interview A", L"A long note that wraps onto several lines because the column is narrower than it",
             L"1", L"Video"},
            {L"Room tone", L"Coloured: a warning", L"0", L"Audio"},
            {L"Poster frame", L"Bold text", L"0", L"Still"},
            {L"Interview B", L"Current row", L"1", L"Video"},
            {L"Music bed", L"Link style", L"1", L"Audio"},
            {L"Drone shot", L"Coloured background", L"0", L"Video"},
            {L"End card", L"", L"0", L"Still"},
        };
    }

    LightweightString<char> idstring() const override { return "TablePagePanel"; }

    unsigned getSize() override { return static_cast<unsigned>(m_clips.size()); }
    int getRowHeight(unsigned row) override
    {
        // The note column is 200 wide in the gallery: the wrapped note sets its row's height.
        return TableWidget::calcWrappedRowHeight(std::wstring_view(m_clips[row].note), UifStd::getDefaultFont(), 200);
    }
    LightweightString<wchar_t> getFieldText(unsigned row, unsigned col) override
    {
        const Clip& c = m_clips[row];
        return LightweightString<wchar_t>(col == 0 ? c.name : col == 1 ? c.note : col == 2 ? c.used : c.kind);
    }
    bool getFieldColours(unsigned row, unsigned col, Colour& text, Colour& background) override
    {
        if (row == 2 && col == 1) {
            text = getPalette().warning();
            return true;
        }
        if (row == 6) {
            text = getPalette().text();
            background = Colour(0.20, 0.32, 0.24);
            return true;
        }
        return false;
    }
    int getTextStyle(unsigned row, unsigned) override { return row == 3 ? Bold : row == 5 ? Underlined : Plain; }
    std::vector<TableColumnDescription> getColumnDefinitions() override
    {
        return {TableColumnDescription(L"Clip", "name", 120).setResizeable(true).setEditable(true),
                TableColumnDescription(L"Note", "note", 200).setResizeable(true),
                TableColumnDescription(L"Used", "used", 56)
                    .setFieldType(TableColumnDescription::BoolField)
                    .setEditable(true),
                TableColumnDescription(L"Kind", "kind")
                    .setFieldType(TableColumnDescription::ChoiceField)
                    .setEditable(true)
                    .setChoices({L"Video", L"Audio", L"Still"})
                    .setColour(getPalette().window(3))};
    }
    bool setFieldText(unsigned row, unsigned col, const LightweightString<wchar_t>& text) override
    {
        Clip& c = m_clips[row];
        (col == 0 ? c.name : col == 1 ? c.note : col == 2 ? c.used : c.kind) = std::wstring(text.view());
        return true;
    }

private:
    std::vector<Clip> m_clips;
};

// Captions sit a little lower than a button row.
constexpr int captionHeight = 20;

TableWidget* addTable(TablePagePanel* page, int x, int y, int w, int h, const char* name)
{
    TableWidget::InitArgs args(page, static_cast<uint16_t>(w), static_cast<uint16_t>(h),
                               page->getPalette().makeChildPalette());
    auto* table = page->addWidget<TableWidget>(args, Glob::UserTopLeft(x, y));
    table->setName(name);
    return table;
}

Glob* buildTablePage()
{
    const Palette& pal = UifStd::getColourScheme();
    auto* page = new TablePagePanel(galleryPageArgs(L"Tables and the folder browser", pageWidth, pageHeight));

    const int tableW = 470;
    addLabel(page, L"Mixed heights, wrapped note, colours, current row, Clip column wider", margin, margin, tableW,
             captionHeight);
    TableWidget* main = addTable(page, margin, margin + 24, tableW, 300, "table-main");
    main->setColumnWidth(0, 140);
    main->setCurrentPosition(0, 4);

    addLabel(page, L"Focused, editing a cell", margin, margin + 340, 220, captionHeight);
    TableWidget* focused = addTable(page, margin, margin + 364, 230, 120, "table-focused");
    focused->setCurrentPosition(0, 1);
    addLabel(page, L"Disabled", margin + 240, margin + 340, 200, captionHeight);
    TableWidget* disabled = addTable(page, margin + 240, margin + 364, 230, 120, "table-disabled");
    disabled->setCurrentPosition(0, 0);
    disabled->setEnabled(false);

    addLabel(page, L"Scrolled to the end, no header", margin, margin + 500, 300, captionHeight);
    TableWidget::InitArgs bare(page, tableW, 100, pal.makeChildPalette());
    bare.showHeader = false;
    auto* scrolled = page->addWidget<TableWidget>(bare, Glob::UserTopLeft(margin, margin + 524));
    scrolled->scrollTo(scrolled->getMaxScroll());

    const int browserX = margin + tableW + 24;
    addLabel(page, L"Folder browser on the workbench's folder", browserX, margin, 400, captionHeight);
    std::error_code ec;
    const LightweightString<wchar_t> folder = fromUTF8(std::filesystem::current_path(ec).string());
    FileBrowserBase::InitArgs browserArgs(L"Choose a folder", folder, static_cast<uint16_t>(pageWidth - browserX - margin),
                                          420, pal);
    browserArgs.options = FileBrowserBase::ChooseFolder | FileBrowserBase::ListFiles | FileBrowserBase::Buttons;
    auto* browser = page->addWidget<FileBrowserBase>(browserArgs, Glob::UserTopLeft(browserX, margin + 24));
    browser->setMovable(false);
    browser->setCurrentRow(0);
    return page;
}

void showTableStates(Glob* page)
{
    // The entry takes the keyboard, so the focused table shows the editing state.
    if (auto* focused = dynamic_cast<TableWidget*>(findNamed(page, "table-focused")))
        focused->beginEdit(0, 0);
}

GalleryPageRegistrar tablePage("Tables", buildTablePage, showTableStates);

} // namespace
