// Gallery page: a form with a row of every element kind, wired to a client that lists each "FormUp" message
// it receives, as a dialog built on a form would read it.
#include "forms/fo_bool.h"
#include "forms/fo_choic.h"
#include "forms/fo_entry.h"
#include "forms/form.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/TitleTextBox.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <deque>

namespace {

constexpr int pageWidth = 900;
constexpr int pageHeight = 330;
constexpr int margin = 16;
constexpr uint16_t rowWidth = 400;
constexpr uint16_t rowHeight = 24;

// The client: shows the latest "FormUp" messages, newest at the bottom.
class FormUpLog : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;
    };
    explicit FormUpLog(const InitArgs& args) : Glob(args) {}
    LightweightString<char> idstring() const override { return "FormUpLog"; }

    bool handleMessageEvent(LightweightString<char> name, Glob*) override
    {
        if (!name.startsWith(form::clientMsg))
            return false;
        m_lines.push_back(fromUTF8(name.view()));
        while (m_lines.size() > maxLines)
            m_lines.pop_front();
        redraw();
        return true;
    }
    void drawBackground() override { StylePainter::drawEntryWell(painter(), getLocalBox(), getPalette()); }
    void drawText() override
    {
        const int lineHeight = UifStd::getButtonHeight();
        int top = getHeight() - 4;
        for (const LightweightString<wchar_t>& line : m_lines) {
            StylePainter::drawLabel(painter(), GlobBox(8, top - lineHeight, getWidth() - 8, top), getPalette(),
                                    line.view());
            top -= lineHeight;
        }
    }

private:
    static constexpr size_t maxLines = 9;
    std::deque<LightweightString<wchar_t>> m_lines;
};

Glob* buildFormsPage()
{
    auto* page = new StandardPanel(galleryPageArgs(L"Forms", pageWidth, pageHeight));
    const Palette pal = page->getPalette();
    addLabel(page, L"A form of every element kind (the focused row is marked at its left)", margin, margin, 440);
    addLabel(page, L"Its client, showing each FormUp message it hears", margin + 460, margin, 400);

    auto* log = page->addWidget<FormUpLog>(FormUpLog::InitArgs(400, 250, pal.makeChildPalette()),
                                           Glob::UserTopLeft(margin + 460, margin + 30));
    auto* f = new form(rowWidth + 24, 250, log, StandardPanel::SunkenBorder, pal, UIString(), 0.35);
    f->setName("gallery-form");
    page->addChild(f, Glob::UserTopLeft(margin, margin + 30));
    fo_eleme* rows[] = {
        new fo_entry(rowWidth, rowHeight, 0, L"Clip name", 0),
        new fo_path(rowWidth, rowHeight, 1, L"Export folder", 1),
        new fo_v_int(rowWidth, rowHeight, 2, L"Copies (1-10)", 1, 10),
        new fo_v_dbl(rowWidth, rowHeight, 3, L"Gain (0-12 dB)", 0.0, 12.0, 2),
        new fo_bool(rowWidth, rowHeight, 4, L"Loop playback", true),
        new fo_cycle(rowWidth, rowHeight, 5, L"Video standard", {L"PAL", L"NTSC", L"HD 1080"}),
        new fo_gench(rowWidth, rowHeight, 6, L"Quality", {L"Draft", L"Good", L"Best"}),
    };
    f->m_add_elements(rows, 7);
    f->m_set_element_entry(0, L"Interview take 3");
    f->m_set_element_entry(1, L"/Volumes/Media/Exports");
    f->m_set_element_entry(3, L"3.5");
    f->m_set_element_choice_state(6, 1, false);
    return page;
}

// A few commits as the rows make them when the user presses Return, clicks or chooses, so the client has
// something to show: an entry, a number clamped to its range, a check box and a menu choice.
void showMessages(Glob* page)
{
    auto* f = dynamic_cast<form*>(findNamed(page, "gallery-form"));
    if (!f)
        return;
    const auto commit = [f](int index, const wchar_t* typed) {
        auto* entry = dynamic_cast<fo_entry*>(f->m_get_element(index));
        entry->getTextBox()->setString(typed);
        entry->m_collect_entry();
        entry->m_relay_msg_to_parent(fo_eleme::msgFromUIText(entry->m_get_entry()));
    };
    commit(0, L"Interview take 4");
    commit(2, L"42");
    f->m_set_element_choice_state(4, 0, true);
    f->m_get_element(4)->m_relay_msg_to_parent(fo_bool::noPayload);
    f->sendMsg(f->m_get_element(6), "Best");
    f->m_request_focus(2);
}

GalleryPageRegistrar formsPage("Forms", buildFormsPage, showMessages);

} // namespace
