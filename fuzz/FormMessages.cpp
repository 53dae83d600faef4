// Arbitrary message texts sent to a live form and its elements. Whatever arrives, the form must not crash,
// must keep its elements and a focus inside them, must pass every "FoElUp" on to its client as "FormUp" with
// the rest of the message unchanged, and must send its client nothing but "FormUp" messages.
//
// Input: messages separated by 0 bytes; each message's first byte chooses the receiver (the form, or one of
// its elements), the rest is the message text.
#include "FuzzChecks.h"
#include "forms/fo_bool.h"
#include "forms/fo_choic.h"
#include "forms/fo_entry.h"
#include "forms/form.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/GlobManager.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

UiHarness& harness()
{
    static UiHarness* made = new UiHarness(800, 600);
    return *made;
}

class Client : public Glob {
public:
    Client() : Glob(1, 1) {}
    LightweightString<char> idstring() const override { return "FuzzClient"; }
    bool handleMessageEvent(LightweightString<char> name, Glob*) override
    {
        heard.push_back(name.str());
        return true;
    }
    std::vector<std::string> heard;
};

constexpr int numRows = 7;

form* makeForm(Glob* client)
{
    auto* f = new form(420, 330, client, StandardPanel::RaisedBorder, Palette(), UIString(L"Fuzz"));
    fo_eleme* rows[] = {
        new fo_entry(380, 24, 0, L"Name", 0),
        new fo_path(380, 24, 1, L"Folder", 1),
        new fo_v_int(380, 24, 2, L"Copies", 1, 10),
        new fo_v_dbl(380, 24, 3, L"Gain", -1.5, 5.0, 2),
        new fo_bool(380, 24, 4, L"Loop", false),
        new fo_cycle(380, 24, 5, L"Format", {L"PAL", L"NTSC", L"HD"}),
        new fo_gench(380, 24, 6, L"Quality", {L"Fast", L"Good", L"Best"}),
    };
    f->m_add_elements(rows, numRows);
    return f;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    UiHarness& ui = harness();
    auto* client = new Client();
    ui.owner().addChild(client, Glob::BottomLeft(0, 0));
    form* f = makeForm(client);
    ui.owner().addChild(f, Glob::BottomLeft(40, 40));
    GlobWatch formAlive(f);

    std::string_view rest(reinterpret_cast<const char*>(data), size);
    while (!rest.empty() && formAlive) {
        const size_t end = rest.find('\0');
        std::string_view one = rest.substr(0, end);
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
        if (one.empty())
            continue;
        const int receiver = static_cast<unsigned char>(one.front()) % (numRows + 1);
        const LightweightString<char> text(one.substr(1));
        Glob* target = receiver == 0 ? static_cast<Glob*>(f) : f->m_get_element(receiver - 1);
        const size_t heardBefore = client->heard.size();
        f->sendMsg(target, text);
        if (!formAlive)
            break;
        if (receiver == 0 && text.startsWith(fo_eleme::upMsg)) {
            check(client->heard.size() == heardBefore + 1, "a FoElUp was not passed on exactly once");
            check(client->heard.back() == "FormUp " + text.substr(7).str(), "FormUp does not carry the rest");
        }
        check(f->m_element_count() == numRows, "elements lost");
        check(f->m_get_focus() >= -1 && f->m_get_focus() < numRows, "focus outside the elements");
    }
    if (formAlive)
        f->m_send_unread_entry_elements();
    for (const std::string& heard : client->heard)
        check(heard.rfind("FormUp ", 0) == 0, "the client heard something other than FormUp");

    // Close whatever the messages popped up, then the form and its client, so inputs do not meet.
    while (Glob* menu = GlobManager::find(form::menuName))
        Glob::destroy(menu);
    Glob::destroy(f);
    Glob::destroy(client);
    ui.step();
    return 0;
}
