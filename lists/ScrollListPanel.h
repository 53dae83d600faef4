#pragma once
// ScrollListPanel: a ScrollList filling a panel with the standard do-it button. The do-it button is enabled
// exactly while a line is selected, and choosing a line (double click, Return) counts as pressing it: both
// reach informOwner(), whose default tells the owner StandardPanel::doItMsg.

#include "lists/ScrollList.h"
#include "toolkit/ui/StandardPanel.h"

#include <vector>

class ScrollListPanel : public StandardPanel {
public:
    struct InitArgs : StandardPanel::InitArgs {
        InitArgs() = default;
        InitArgs(UIString panelTitle, std::vector<LightweightString<wchar_t>> lines, uint16_t w, uint16_t h,
            const Palette& pal = Palette(), Canvas* c = nullptr)
            : StandardPanel::InitArgs(std::move(panelTitle), w, h, CloseButton | DoItButton, pal, c)
            , strings(std::move(lines))
        {
        }
        std::vector<LightweightString<wchar_t>> strings;
        bool multi = false;
    };

    explicit ScrollListPanel(const InitArgs& args);
    ScrollListPanel(const ScrollListPanel& other);
    ScrollListPanel(ScrollListPanel&& other)
        : ScrollListPanel(static_cast<const ScrollListPanel&>(other))
    {
    }
    ScrollListPanel& operator=(const ScrollListPanel&) = delete;
    ScrollListPanel& operator=(ScrollListPanel&&) = delete;
    ~ScrollListPanel() override;

    LightweightString<char> idstring() const override;

    void setStrings(const std::vector<UIString>& strings);
    void setStrings(const std::vector<LightweightString<wchar_t>>& strings);
    void setStrings(const std::vector<ScrollListItem>& items);
    int getSelectedItem() const { return m_list->getSelectedItem(); }
    LightweightString<wchar_t> getSelectedItemStringW() const { return m_list->getSelectedItemStringW(); }
    // Appends the text of every selected line, in line order.
    void getSelectedItemStrings(std::vector<LightweightString<wchar_t>>& out) const;
    bool itemSelected(int index) const { return m_list->itemSelected(index); }
    void multiSelect(bool multi, bool replaceOnPlainClick = true, bool ownerFlag = false);
    int numItems() const { return m_list->numItems(); }
    void selectItem(int index);
    ScrollList* getList() const { return m_list; }

    // The choice is made: tells the owner doItMsg.
    virtual void informOwner();

    // Called by the toolkit
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void reshape() override;

private:
    void makeList(const std::vector<LightweightString<wchar_t>>& strings, bool multi);
    void updateDoIt();

    ScrollList* m_list = nullptr;
};
