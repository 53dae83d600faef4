#pragma once
// TitledIPAddressEntryBox: an IPAddressEntryBox with a title at its left (type name
// "TitledIPAddressEntryBox"). The address operations and the tab stops are the box's own.

#include "entry/IPAddressEntryBox.h"
#include "toolkit/widgets/TitledGlob.h"

class TitledIPAddressEntryBox : public TitledGlob<IPAddressEntryBox> {
public:
    // titleWidth 0 fits the title.
    TitledIPAddressEntryBox(UIString title, bool withPort, uint16_t titleWidth = 0, const Palette& palette = Palette(),
                            Canvas* canvas = nullptr);
    TitledIPAddressEntryBox(const TitledIPAddressEntryBox&) = default;
    TitledIPAddressEntryBox(TitledIPAddressEntryBox&&) = default;
    TitledIPAddressEntryBox& operator=(const TitledIPAddressEntryBox&) = default;
    TitledIPAddressEntryBox& operator=(TitledIPAddressEntryBox&&) = default;

    LightweightString<wchar_t> getURI() const { return widget()->getURI(); }
    void setURI(const IPAddress& address) { widget()->setURI(address); }
    bool setURI(const LightweightString<wchar_t>& text) { return widget()->setURI(text); }

    // Called by the toolkit
    void getTabOrderables(std::vector<TabOrderable*>& out) override { widget()->getTabOrderables(out); }
};
