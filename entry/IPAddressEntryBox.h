#pragma once
// IPAddressEntryBox: an IPv4 address typed in four numeric boxes, optionally followed by a box for a port,
// with the caret moving between the boxes as it would in one address field.
//
//   key in box i                               | box / entry does
//   -------------------------------------------+---------------------------------------------------------
//   Backspace or Left, caret at 0              | "prev": box i-1 gets the focus, caret at its end
//   "." or Right, caret at the end             | "next": box i+1 gets the focus, caret at 0
//   a digit (or a paste) that fills the box,   | "next", so a complete octet moves on by itself
//   caret at the end                           |
//   Ctrl+V with a "." in the clipboard         | "paste": a whole address fills every box; text that is no
//                                              | address changes nothing
//   Tab, back-tab                              | not handled here: the focus moves on as usual
//   anything else                              | the box's own handling (digits only; 3, or 5 for the port)
// "next" from the last box and "prev" from the first do nothing. "hnext" / "hprev" move the focus to the
// tab stop after / before the whole entry.
//
// Between the boxes the entry draws the separators a user expects to see: "." between octets, ":" before
// the port.

#include "toolkit/support/IPAddress.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/TabOrderable.h"

#include <vector>

class CustomTextBox;

class IPAddressEntryBox : public StandardPanel, public TabOrderableHost {
public:
    struct InitArgs : StandardPanel::InitArgs {
        InitArgs() : InitArgs(false) {}
        // A height of 0 is the standard button height; the width is always calcWidth(port).
        explicit InitArgs(bool port, uint16_t h = 0, const Palette& pal = Palette(), Canvas* c = nullptr);
        // For entries made by type name: the "port" setting (0 or 1).
        InitArgs(const GlobCreationInfo& info);

        bool withPort = false;
    };

    explicit IPAddressEntryBox(const InitArgs& args);
    // Without a port box; the size given is kept.
    IPAddressEntryBox(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    IPAddressEntryBox(const IPAddressEntryBox& other);
    IPAddressEntryBox(IPAddressEntryBox&& other) : IPAddressEntryBox(static_cast<const IPAddressEntryBox&>(other)) {}
    IPAddressEntryBox& operator=(const IPAddressEntryBox& other);
    IPAddressEntryBox& operator=(IPAddressEntryBox&& other)
    {
        return *this = static_cast<const IPAddressEntryBox&>(other);
    }
    ~IPAddressEntryBox() override;

    // The default font's width of the text plus a widget gap on each side.
    static uint16_t calcBoxWidth(const LightweightString<wchar_t>& text);
    static uint16_t calcWidth(bool withPort);
    // The distance between neighbouring boxes: the indent width.
    static int gap();

    // The octet boxes' texts joined by ".", then ":" and the port box's text when there is a port box.
    LightweightString<wchar_t> getURI() const;
    // Writes each octet into its box, and the port into the port box (empty for an address without one).
    void setURI(const IPAddress& address);
    // Answers false, changing nothing, when the text is not an address.
    bool setURI(const LightweightString<wchar_t>& text);

    size_t numBoxes() const { return m_boxes.size(); }
    CustomTextBox* getBox(size_t i) const { return i < m_boxes.size() ? m_boxes[i] : nullptr; }
    bool hasPort() const { return m_boxes.size() > 4; }

    static constexpr const char* nextMsg = "next";
    static constexpr const char* prevMsg = "prev";
    static constexpr const char* hnextMsg = "hnext";
    static constexpr const char* hprevMsg = "hprev";
    static constexpr const char* pasteMsg = "paste";
    static constexpr int octetMaxLength = 3;
    static constexpr int portMaxLength = 5;

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void getTabOrderables(std::vector<TabOrderable*>& out) override;
    void setActive(bool active, eRedrawFlag redraw = Redraw) override;
    void setPalette(const Palette& palette) override;
    void drawBackground() override;
    void reshape() override;

private:
    void makeBoxes(bool withPort);
    // Boxes of our own in place of any we had, as many as the other's and holding its texts.
    void makeBoxesLike(const IPAddressEntryBox& other);
    int indexOf(const Glob* box) const;

    std::vector<CustomTextBox*> m_boxes; // children: owned by the tree
};
