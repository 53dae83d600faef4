#pragma once
// UIString: a displayable text, either a numbered resource of the string table or a literal.

#include "toolkit/support/LightweightString.h"

// Id of a text in the string table. 999999 is the "no resource" value: the literal text is shown instead.
struct ResId {
    static constexpr int none = 999999;

    constexpr ResId() = default;
    constexpr explicit ResId(int value) : id(value) {}
    constexpr bool isNone() const { return id == none; }
    constexpr bool operator==(const ResId&) const = default;

    int id = none;
};

// How a resource text is adapted for its place of use.
enum ResStrFmt {
    resFmtAsIs = 0,
    resFmtUpperCase,
    resFmtLowerCase,
    resFmtTitleCase,
    resFmtEllipsis, // appends "..." for items that open a further panel
};

class UIString {
public:
    UIString() = default;
    UIString(const wchar_t* text) : m_text(text) {}
    UIString(LightweightString<wchar_t> text) : m_text(std::move(text)) {}
    UIString(ResId id, ResStrFmt format = resFmtAsIs) : m_id(id), m_format(format) {}

    ResId getResId() const { return m_id; }
    bool isResource() const { return !m_id.isNone(); }
    // The text to show: the resource's text, or the literal when there is no resource.
    LightweightString<wchar_t> getString() const;
    bool empty() const { return !isResource() && m_text.empty(); }

    bool operator==(const UIString& other) const { return m_id == other.m_id && m_text == other.m_text; }

private:
    ResId m_id;
    ResStrFmt m_format = resFmtAsIs;
    LightweightString<wchar_t> m_text;
};
