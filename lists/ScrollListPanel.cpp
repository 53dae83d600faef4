#include "lists/ScrollListPanel.h"

ScrollListPanel::ScrollListPanel(const InitArgs& args)
    : StandardPanel(args)
{
    makeList(args.strings, args.multi);
}

ScrollListPanel::ScrollListPanel(const ScrollListPanel& other)
    : EventHandler(other)
    , Cv::InternalRefCount(other)
    , iVirtual(other)
    , iObject(other)
    , StandardPanel(other)
{
    std::vector<LightweightString<wchar_t>> texts;
    for (int i = 0; i < other.numItems(); ++i)
        texts.push_back(other.m_list->getItemW(i));
    makeList(texts, other.m_list->isMultiSelect());
}

ScrollListPanel::~ScrollListPanel() = default;

LightweightString<char> ScrollListPanel::idstring() const
{
    return "ScrollListPanel";
}

void ScrollListPanel::makeList(const std::vector<LightweightString<wchar_t>>& strings, bool multi)
{
    const GlobBox area = getUserArea();
    ScrollList::InitArgs args(
        strings, static_cast<uint16_t>(area.width()), static_cast<uint16_t>(area.height()), 0, getPalette());
    m_list = addWidget<ScrollList>(args, UserTopLeft(0, 0));
    if (multi)
        m_list->multiSelect(true);
    updateDoIt();
}

void ScrollListPanel::setStrings(const std::vector<UIString>& strings)
{
    std::vector<LightweightString<wchar_t>> texts;
    texts.reserve(strings.size());
    for (const UIString& s : strings)
        texts.push_back(s.getString());
    setStrings(texts);
}

void ScrollListPanel::setStrings(const std::vector<LightweightString<wchar_t>>& strings)
{
    m_list->setStrings(strings);
    updateDoIt();
}

void ScrollListPanel::setStrings(const std::vector<ScrollListItem>& items)
{
    m_list->setStrings(items);
    updateDoIt();
}

void ScrollListPanel::getSelectedItemStrings(std::vector<LightweightString<wchar_t>>& out) const
{
    for (int i = 0; i < m_list->numItems(); ++i)
        if (m_list->itemSelected(i))
            out.push_back(m_list->getItemW(i));
}

void ScrollListPanel::multiSelect(bool multi, bool replaceOnPlainClick, bool ownerFlag)
{
    m_list->multiSelect(multi, replaceOnPlainClick, ownerFlag);
}

void ScrollListPanel::selectItem(int index)
{
    m_list->selectItem(index, ScrollList::RedrawFlag);
    updateDoIt();
}

void ScrollListPanel::informOwner()
{
    callMsg(doItMsg);
}

void ScrollListPanel::updateDoIt()
{
    // setStandardWidgetEnabled redraws only when the state changes.
    setStandardWidgetEnabled(DoItButton, m_list->getSelectedItem() >= 0);
}

bool ScrollListPanel::handleMessageEvent(LightweightString<char> name, Glob* /*sender*/)
{
    if (name == doItMsg || name == ScrollList::itemSelectedMsg) {
        informOwner();
        return true;
    }
    if (name == ScrollList::clickMsg) {
        updateDoIt();
        return true;
    }
    return false;
}

void ScrollListPanel::reshape()
{
    StandardPanel::reshape();
    if (m_list) {
        const GlobBox area = getUserArea();
        m_list->resize(area.width(), area.height());
    }
}
