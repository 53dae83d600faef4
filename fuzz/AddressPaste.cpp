// Arbitrary clipboard text pasted into a box of a live address entry, and read by IPAddress::fromString.
// The reader must accept exactly the canonical texts it writes back; a paste must fill every box when the
// text is an address, change nothing when the text holds a dot but is no address, and otherwise leave only
// digits, within the box's length, in the box pasted into.
//
// Input: the first byte chooses the box; the rest is the clipboard text in UTF-8.
#include "FuzzChecks.h"
#include "entry/IPAddressEntryBox.h"
#include "toolkit/support/IPAddress.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/widgets/CustomTextBox.h"

#include <cstdint>
#include <cwctype>
#include <string>
#include <string_view>

namespace {

UiHarness& harness()
{
    static UiHarness* made = new UiHarness(800, 600);
    return *made;
}

IPAddressEntryBox& entry()
{
    static IPAddressEntryBox* made =
        harness().make<IPAddressEntryBox>(IPAddressEntryBox::InitArgs(true), Glob::BottomLeft(20, 300));
    return *made;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    UiHarness& ui = harness();
    IPAddressEntryBox& address = entry();
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);

    if (const std::optional<IPAddress> narrow = IPAddress::fromString(bytes))
        check(toUTF8(narrow->toString().view()).view() == bytes, "accepted a text it does not write back");

    address.setURI(IPAddress(1, 2, 3, 4, 5));
    const LightweightString<wchar_t> before = address.getURI();
    const LightweightString<wchar_t> clip = fromUTF8(bytes);
    CustomTextBox* box = address.getBox(data[0] % address.numBoxes());
    ui.screen().setClipboardText(clip);
    ui.click(box);
    box->selectAll();
    ui.pressKey('v', Event::Ctrl);

    const std::optional<IPAddress> parsed = IPAddress::fromString(clip.view());
    if (parsed) {
        const std::wstring port = parsed->hasPort() ? std::to_wstring(parsed->getPort()) : std::wstring();
        std::wstring expected = parsed->toString().str();
        expected = expected.substr(0, expected.find(L':')) + L":" + port;
        check(address.getURI().str() == expected, "a pasted address did not fill the boxes");
    } else if (clip.contains(L".")) {
        check(address.getURI() == before, "dotted text that is no address changed the boxes");
    } else {
        for (wchar_t c : box->text())
            check(c >= L'0' && c <= L'9', "a box holds something other than digits");
        check(box->text().size() <= static_cast<size_t>(box->getMaxLength()), "a box holds too many digits");
    }
    return 0;
}
