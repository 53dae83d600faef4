// Gallery page: the tutorial catalogue as it is on disk. On the left every tutorial, grouped by category in
// category order; on the right the phases of the tutorial chosen there.
//
// When the data folder holds no tutorials at all, an empty page would show nothing of the tables, so the page
// then points the data folder at a fresh temporary folder, writes a few sample tutorials there through the
// catalogue and says so on the page. The catalogue is read once per process, so that choice is made before
// anything asks for it and holds for the rest of the run.
#include "toolkit/support/FileUtils.h"
#include "toolkit/support/OS.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/TableWidget.h"
#include "toolkit/widgets/iTableAdaptor.h"
#include "tutorials/Tutorial.h"
#include "tutorials/TutorialsManager.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace {

constexpr int pageWidth = 980;
constexpr int pageHeight = 440;
constexpr int margin = 16;
constexpr int catalogueWidth = 340;

// ---- Where the catalogue comes from

// A catalogue read beside the shared one, only to learn whether the shared one would be empty.
class CatalogueProbe : public TutorialsManager {
public:
    CatalogueProbe() : TutorialsManager(SeparateCatalogue{}) {}
};

using Phase = Tutorial::Phase;

Cv::Ptr<Phase> makePhase(const wchar_t* pointerTarget, double x, double y, const wchar_t* text, const char* event,
                         uint32_t modifiers, float pause)
{
    auto phase = Cv::make<Phase>();
    if (pointerTarget) {
        phase->pointer.target = pointerTarget;
    } else {
        phase->pointer.x = x;
        phase->pointer.y = y;
    }
    phase->message.text = text;
    if (pointerTarget) {
        phase->message.target = pointerTarget;
        phase->message.relativity = eRelativeBelow;
    } else {
        phase->message.origin = eOriginTop;
    }
    phase->action.event = event;
    phase->action.modifiers = modifiers;
    phase->pause = pause;
    return phase;
}

// Writes the samples through the catalogue, the way an editor would: create, fill in, save. Answers whether
// every file reached the disk.
bool writeSampleTutorials()
{
    using Action = Tutorial::Action;
    TutorialsManager& catalogue = TutorialsManager::instance();
    std::vector<Cv::Ptr<Tutorial>> made;

    Cv::Ptr<Tutorial> trim = catalogue.createTutorial(L"Trim a clip", L"Editing");
    trim->addPhase(makePhase(L"timeline", 0, 0, L"Click a clip on the timeline to select it.", "click", 0, 0.5f));
    trim->addPhase(makePhase(nullptr, 640, 360, L"Drag the clip's right edge to the left to shorten it.", "drag", 0,
                             1.0f));
    trim->addPhase(makePhase(L"viewer", 0, 0, L"Play what is left of the clip.", "key_space", Action::kShift, 2.0f));
    made.push_back(trim);

    Cv::Ptr<Tutorial> split = catalogue.createTutorial(L"Split at the playhead", L"Editing");
    split->addPhase(makePhase(L"playhead", 0, 0, L"Move the playhead to where the cut goes.", "drag", 0, 0.0f));
    split->addPhase(makePhase(nullptr, 512, 300, L"Split the clip under the playhead.", "key_b",
                              Action::kCtrl | Action::kShift, 1.5f));
    made.push_back(split);

    Cv::Ptr<Tutorial> import = catalogue.createTutorial(L"Import media", L"Getting started");
    import->addPhase(makePhase(L"menu-file", 0, 0, L"Open the File menu.", "click", 0, 0.0f));
    import->addPhase(makePhase(nullptr, 120, 48, L"Choose a folder of clips and bring them all in at once.",
                               "double_click", Action::kAlt, 0.25f));
    made.push_back(import);

    bool allWritten = true;
    for (const Cv::Ptr<Tutorial>& tutorial : made) {
        catalogue.save(tutorial);
        std::error_code ec;
        if (tutorial->getFile().empty() || !std::filesystem::is_regular_file(toUTF8(tutorial->getFile().view()).str(), ec))
            allWritten = false;
    }
    return allWritten;
}

// Decides once per process, before the catalogue is first read, whether to show it or samples; answers the
// note the page shows about it.
const std::wstring& catalogueNote()
{
    static const std::wstring note = [] {
        if (!CatalogueProbe().tutorials().empty()) {
            const TutorialsManager& catalogue = TutorialsManager::instance();
            return L"The catalogue in " + std::wstring(TutorialsManager::getLocation().view()) + L": " +
                   std::to_wstring(catalogue.tutorials().size()) + L" tutorials in " +
                   std::to_wstring(catalogue.getCategories().size()) + L" categories.";
        }
        // A name of its own per run, so that a second workbench never reads or adds to this one's samples.
        std::error_code ec;
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        const std::filesystem::path folder = std::filesystem::temp_directory_path(ec) /
                                             ("tessel-workbench-tutorials-" + std::to_string(::getpid()) + "-" +
                                              std::to_string(stamp));
        if (ec || !std::filesystem::create_directories(folder, ec) || ec) {
            // Nothing was redirected: the catalogue is the real, empty one.
            TutorialsManager::instance();
            return L"No tutorials in " + std::wstring(TutorialsManager::getLocation().view()) +
                   L", and no temporary folder for samples could be made.";
        }
        OS()->fileManager().setBaseDataDirectory(fromUTF8(folder.string()));
        const bool written = writeSampleTutorials();
        return std::wstring(written ? L"No tutorials on disk: these samples were written for this page to "
                                    : L"No tutorials on disk; not every sample could be written to ") +
               std::wstring(TutorialsManager::getLocation().view());
    }();
    return note;
}

// ---- What the cells say

std::wstring formatNumber(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return std::wstring(text, text + std::char_traits<char>::length(text));
}

// A target by name, a screen coordinate as "x, y", or nothing when the phase does not point.
LightweightString<wchar_t> pointerText(const Tutorial::Pointer& pointer)
{
    if (!pointer.target.empty())
        return pointer.target;
    if (pointer.x == Tutorial::kNoCoordinate)
        return {};
    return LightweightString<wchar_t>(formatNumber(pointer.x) + L", " + formatNumber(pointer.y));
}

// "ctrl+shift+key_b": the held keys first, as they are pressed. Bits with no name show as a number, so a file
// written with keys this page does not know still shows that something was held.
LightweightString<wchar_t> actionText(const Tutorial::Action& action)
{
    if (!action.valid())
        return {};
    using Action = Tutorial::Action;
    std::string text;
    uint32_t rest = action.modifiers;
    for (uint32_t bit : {Action::kCmd, Action::kCtrl, Action::kAlt, Action::kShift}) {
        if (rest & bit) {
            text += Action::asString(bit).str() + "+";
            rest &= ~bit;
        }
    }
    if (rest) {
        char unknown[16];
        std::snprintf(unknown, sizeof unknown, "0x%X+", static_cast<unsigned>(rest));
        text += unknown;
    }
    text += action.event.str();
    return fromUTF8(text);
}

// ---- The tables

// The catalogue, one row per tutorial, a category named on the first row of its group.
class CatalogueRows : public iTableAdaptor {
public:
    CatalogueRows()
    {
        const TutorialsManager& catalogue = TutorialsManager::instance();
        for (const LightweightString<wchar_t>& category : catalogue.getCategories()) {
            bool first = true;
            for (const Cv::Ptr<Tutorial>& tutorial : catalogue.getCategoryContents(category)) {
                m_rows.push_back({tutorial, first});
                first = false;
            }
        }
    }

    Cv::Ptr<Tutorial> tutorialAt(int row) const
    {
        return row >= 0 && static_cast<size_t>(row) < m_rows.size() ? m_rows[static_cast<size_t>(row)].tutorial
                                                                     : Cv::Ptr<Tutorial>();
    }

    unsigned getSize() override { return static_cast<unsigned>(m_rows.size()); }
    bool hasUniformRowHeights() override { return true; }
    LightweightString<wchar_t> getFieldText(unsigned row, unsigned col) override
    {
        const Row& r = m_rows[row];
        if (col == 0)
            return r.firstOfCategory ? r.tutorial->getCategory() : LightweightString<wchar_t>();
        return r.tutorial->getName();
    }
    int getTextStyle(unsigned, unsigned col) override { return col == 0 ? Bold : Plain; }
    bool canWordWrap(unsigned, unsigned) override { return false; }
    std::vector<TableColumnDescription> getColumnDefinitions() override
    {
        return {TableColumnDescription(L"Category", "category", 130).setResizeable(true),
                TableColumnDescription(L"Name", "name")};
    }

private:
    struct Row {
        Cv::Ptr<Tutorial> tutorial;
        bool firstOfCategory;
    };
    std::vector<Row> m_rows;
};

// The phases of one tutorial, or no rows when none is chosen.
class PhaseRows : public iTableAdaptor {
public:
    void show(const Cv::Ptr<Tutorial>& tutorial) { m_tutorial = tutorial; }
    void setTable(TableWidget* table) { m_table = table; }

    unsigned getSize() override { return m_tutorial ? m_tutorial->getNumPhases() : 0; }
    int getRowHeight(unsigned row) override
    {
        // The message column takes what the fixed columns leave; a long message wraps there.
        const int width = m_table ? m_table->getColumnWidth(2) - 2 * TableWidget::cellPadding() : 200;
        const Cv::Ptr<Phase> phase = m_tutorial->getPhase(static_cast<uint16_t>(row));
        return TableWidget::calcWrappedRowHeight(phase ? phase->message.text.view() : std::wstring_view(),
                                                 UifStd::getDefaultFont(), width);
    }
    LightweightString<wchar_t> getFieldText(unsigned row, unsigned col) override
    {
        const Cv::Ptr<Phase> phase = m_tutorial->getPhase(static_cast<uint16_t>(row));
        if (!phase)
            return {};
        switch (col) {
        case 0:
            return LightweightString<wchar_t>(std::to_wstring(row + 1));
        case 1:
            return pointerText(phase->pointer);
        case 2:
            return phase->message.text;
        case 3:
            return actionText(phase->action);
        default:
            return LightweightString<wchar_t>(formatNumber(phase->pause));
        }
    }
    bool canWordWrap(unsigned, unsigned col) override { return col == 2; }
    std::vector<TableColumnDescription> getColumnDefinitions() override
    {
        return {TableColumnDescription(L"#", "index", 32), TableColumnDescription(L"Pointer", "pointer", 100),
                TableColumnDescription(L"Message", "message").setResizeable(true),
                TableColumnDescription(L"Action", "action", 140), TableColumnDescription(L"Pause", "pause", 56)};
    }

private:
    Cv::Ptr<Tutorial> m_tutorial;
    TableWidget* m_table = nullptr;
};

// ---- The page

class TutorialsPagePanel : public StandardPanel {
public:
    explicit TutorialsPagePanel(const InitArgs& args) : StandardPanel(args) {}

    LightweightString<char> idstring() const override { return "TutorialsPagePanel"; }

    void build()
    {
        caption(catalogueNote(), margin, margin, pageWidth - 2 * margin);

        const int captionY = margin + 32;
        const int tableY = captionY + 24;
        const int tableH = pageHeight - tableY - margin;
        caption(L"Catalogue, by category", margin, captionY, catalogueWidth);
        m_catalogueTable = addTable(&m_catalogue, margin, tableY, catalogueWidth, tableH, "tutorials-catalogue");

        const int phasesX = margin + catalogueWidth + margin;
        const int phasesW = pageWidth - phasesX - margin;
        caption(L"Phases of the chosen tutorial", phasesX, captionY, phasesW);
        m_phasesTable = addTable(&m_phases, phasesX, tableY, phasesW, tableH, "tutorials-phases");
        m_phases.setTable(m_phasesTable);

        // Something to look at from the start: the first tutorial, as if it had been clicked.
        if (m_catalogue.getSize() > 0) {
            m_catalogueTable->setCurrentPosition(0, 0);
            showPhasesOfCurrent();
        }
    }

    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override
    {
        if (name == TableWidget::currentRowChangedMsg && sender == m_catalogueTable) {
            showPhasesOfCurrent();
            return true;
        }
        return StandardPanel::handleMessageEvent(name, sender);
    }

private:
    void caption(const std::wstring& text, int x, int y, int w) { addLabel(this, text, x, y, w, 20); }

    TableWidget* addTable(iTableAdaptor* adaptor, int x, int y, int w, int h, const char* name)
    {
        TableWidget::InitArgs args(adaptor, static_cast<uint16_t>(w), static_cast<uint16_t>(h),
                                   getPalette().makeChildPalette());
        args.editing = false;
        auto* table = addWidget<TableWidget>(args, Glob::UserTopLeft(x, y));
        table->setName(name);
        return table;
    }

    void showPhasesOfCurrent()
    {
        const Cv::Ptr<Tutorial> tutorial = m_catalogue.tutorialAt(m_catalogueTable->getCurrentRow());
        m_phases.show(tutorial);
        m_phasesTable->rowsChanged();
        m_phasesTable->setCurrentPosition(0, -1, 0);
        m_phasesTable->scrollTo(0);
        m_phasesTable->redraw();
    }

    CatalogueRows m_catalogue;
    PhaseRows m_phases;
    TableWidget* m_catalogueTable = nullptr;
    TableWidget* m_phasesTable = nullptr;
};

Glob* buildTutorialsPage()
{
    // Before anything else touches the catalogue: this may point the data folder elsewhere.
    catalogueNote();
    auto* page = new TutorialsPagePanel(galleryPageArgs(L"Tutorials on disk", pageWidth, pageHeight));
    page->build();
    return page;
}

GalleryPageRegistrar tutorialsPage("Tutorials", buildTutorialsPage);

} // namespace
