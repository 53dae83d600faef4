#pragma once
// LightweightString: immutable-by-default text that shares its buffer between copies (copy-on-write),
// so that passing text around costs one atomic increment. Narrow text is UTF-8; wide text is UTF-32.

#include "toolkit/support/CopyOnWrite.h"

#include <algorithm>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

template <typename CharT>
class LightweightString {
public:
    using value_type = CharT;
    using StdString = std::basic_string<CharT>;
    using View = std::basic_string_view<CharT>;
    using const_iterator = typename View::const_iterator;
    static constexpr size_t npos = View::npos;

    LightweightString() noexcept = default;
    LightweightString(const CharT* text) : LightweightString(text ? View(text) : View()) {}
    LightweightString(const CharT* text, size_t length) : LightweightString(View(text, length)) {}
    LightweightString(View text) : m_text(text.empty() ? Shared() : Shared(StdString(text))) {}
    LightweightString(const StdString& text) : LightweightString(View(text)) {}
    LightweightString(StdString&& text) : m_text(text.empty() ? Shared() : Shared(std::move(text))) {}
    LightweightString(size_t count, CharT c) : LightweightString(StdString(count, c)) {}
    template <typename It>
    LightweightString(It first, It last) : LightweightString(StdString(first, last)) {}

    const CharT* c_str() const noexcept { return m_text.get() ? m_text.get()->c_str() : emptyText(); }
    const CharT* data() const noexcept { return c_str(); }
    size_t size() const noexcept { return m_text.get() ? m_text.get()->size() : 0; }
    size_t length() const noexcept { return size(); }
    bool empty() const noexcept { return size() == 0; }
    View view() const noexcept { return m_text.get() ? View(*m_text.get()) : View(); }
    operator View() const noexcept { return view(); }
    StdString str() const { return StdString(view()); }
    CharT operator[](size_t i) const noexcept { return (*m_text.get())[i]; }
    CharT front() const noexcept { return m_text.get()->front(); }
    CharT back() const noexcept { return m_text.get()->back(); }
    const_iterator begin() const noexcept { return view().begin(); }
    const_iterator end() const noexcept { return view().end(); }

    size_t find(View what, size_t from = 0) const noexcept { return view().find(what, from); }
    size_t find(CharT c, size_t from = 0) const noexcept { return view().find(c, from); }
    size_t rfind(View what, size_t from = npos) const noexcept { return view().rfind(what, from); }
    size_t rfind(CharT c, size_t from = npos) const noexcept { return view().rfind(c, from); }
    bool contains(View what) const noexcept { return find(what) != npos; }
    bool startsWith(View prefix) const noexcept { return view().starts_with(prefix); }
    bool endsWith(View suffix) const noexcept { return view().ends_with(suffix); }
    LightweightString substr(size_t from, size_t count = npos) const
    {
        if (from >= size())
            return {};
        if (from == 0 && count >= size())
            return *this;
        return LightweightString(view().substr(from, count));
    }

    // Mutators detach first, so other copies keep the old text.
    LightweightString& append(View text)
    {
        if (!text.empty())
            mutableText().append(text);
        return *this;
    }
    LightweightString& operator+=(View text) { return append(text); }
    LightweightString& operator+=(const LightweightString& text) { return append(text.view()); }
    LightweightString& operator+=(const CharT* text) { return append(text ? View(text) : View()); }
    LightweightString& operator+=(CharT c) { return push_back(c); }
    LightweightString& push_back(CharT c)
    {
        mutableText().push_back(c);
        return *this;
    }
    LightweightString& insert(size_t at, View text)
    {
        if (!text.empty())
            mutableText().insert(std::min(at, size()), text);
        return *this;
    }
    LightweightString& erase(size_t from, size_t count = npos)
    {
        if (from < size())
            mutableText().erase(from, count);
        return *this;
    }
    LightweightString& replace(size_t from, size_t count, View with)
    {
        if (from <= size())
            mutableText().replace(from, count, with);
        return *this;
    }
    void resize(size_t count, CharT fill = CharT())
    {
        if (count != size())
            mutableText().resize(count, fill);
    }
    void clear() noexcept { m_text.reset(); }

    friend LightweightString operator+(LightweightString a, View b) { return std::move(a.append(b)); }
    friend LightweightString operator+(LightweightString a, const LightweightString& b) { return std::move(a.append(b.view())); }
    friend LightweightString operator+(LightweightString a, const CharT* b) { return std::move(a += b); }
    friend LightweightString operator+(LightweightString a, CharT b) { return std::move(a.push_back(b)); }
    friend LightweightString operator+(const CharT* a, const LightweightString& b) { return LightweightString(a).append(b.view()); }

    friend bool operator==(const LightweightString& a, const LightweightString& b) noexcept { return a.m_text.sharesWith(b.m_text) || a.view() == b.view(); }
    friend bool operator==(const LightweightString& a, View b) noexcept { return a.view() == b; }
    friend bool operator==(const LightweightString& a, const CharT* b) noexcept { return a.view() == (b ? View(b) : View()); }
    friend bool operator==(const LightweightString& a, const StdString& b) noexcept { return a.view() == View(b); }
    friend std::strong_ordering operator<=>(const LightweightString& a, const LightweightString& b) noexcept { return a.view() <=> b.view(); }
    friend std::strong_ordering operator<=>(const LightweightString& a, View b) noexcept { return a.view() <=> b; }
    friend std::strong_ordering operator<=>(const LightweightString& a, const StdString& b) noexcept { return a.view() <=> View(b); }

private:
    using Shared = CopyOnWrite<StdString>;

    static const CharT* emptyText() noexcept
    {
        static constexpr CharT empty[1] = {};
        return empty;
    }
    StdString& mutableText() { return m_text.mutableValue(); }

    Shared m_text;
};

template <typename CharT>
struct std::hash<LightweightString<CharT>> {
    size_t operator()(const LightweightString<CharT>& s) const noexcept
    {
        return std::hash<std::basic_string_view<CharT>>()(s.view());
    }
};

// UTF-8 <-> wide (UTF-32). Malformed input never fails: each maximal invalid subsequence of UTF-8, and each
// surrogate or out-of-range wide value, becomes U+FFFD.
LightweightString<wchar_t> fromUTF8(std::string_view utf8);
LightweightString<char> toUTF8(std::wstring_view wide);
