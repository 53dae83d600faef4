#include "toolkit/widgets/TableColumnDescription.h"

#include <cwctype>

TableColumnDescription::TableColumnDescription(UIString title, LightweightString<char> key, uint16_t width)
    : m_title(std::move(title)), m_key(std::move(key)), m_width(width)
{
}

TableColumnDescription& TableColumnDescription::setTitle(UIString title)
{
    m_title = std::move(title);
    return *this;
}

TableColumnDescription& TableColumnDescription::setKey(LightweightString<char> key)
{
    m_key = std::move(key);
    return *this;
}

TableColumnDescription& TableColumnDescription::setWidth(uint16_t width)
{
    m_width = width;
    return *this;
}

TableColumnDescription& TableColumnDescription::setResizeable(bool resizeable)
{
    m_resizeable = resizeable;
    return *this;
}

TableColumnDescription& TableColumnDescription::setColour(const Colour& colour)
{
    m_colour = colour;
    return *this;
}

TableColumnDescription& TableColumnDescription::clearColour()
{
    m_colour.reset();
    return *this;
}

TableColumnDescription& TableColumnDescription::setFieldType(int type)
{
    m_fieldType = type;
    return *this;
}

TableColumnDescription& TableColumnDescription::setEditable(bool editable)
{
    m_editable = editable;
    return *this;
}

TableColumnDescription& TableColumnDescription::setEditOnClick(bool editOnClick)
{
    m_editOnClick = editOnClick;
    return *this;
}

TableColumnDescription& TableColumnDescription::setChoices(std::vector<UIString> choices)
{
    m_choices = std::move(choices);
    return *this;
}

bool TableColumnDescription::textToBool(const LightweightString<wchar_t>& text)
{
    std::wstring t;
    for (wchar_t c : text.view())
        if (!std::iswspace(static_cast<wint_t>(c)))
            t += static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    return t == L"1" || t == L"true" || t == L"yes" || t == L"on";
}
