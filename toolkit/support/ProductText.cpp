#include "toolkit/support/ProductText.h"

#include "toolkit/support/Resources.h"

#include <mutex>
#include <string>

namespace {

std::mutex& nameMutex()
{
    static std::mutex mutex;
    return mutex;
}

LightweightString<wchar_t>& productName()
{
    static LightweightString<wchar_t> name(L"Tessel");
    return name;
}

} // namespace

void setProductName(const LightweightString<wchar_t>& name)
{
    const std::scoped_lock lock(nameMutex());
    productName() = name;
}

LightweightString<wchar_t> getProductName()
{
    const std::scoped_lock lock(nameMutex());
    return productName();
}

LightweightString<wchar_t> replacePlaceholder(const LightweightString<wchar_t>& text, std::wstring_view placeholder,
                                              const LightweightString<wchar_t>& value)
{
    if (placeholder.empty())
        return text;
    std::wstring out(text.view());
    const std::wstring_view with = value.view();
    for (size_t at = out.find(placeholder); at != std::wstring::npos; at = out.find(placeholder, at + with.size()))
        out.replace(at, placeholder.size(), with);
    return LightweightString<wchar_t>(std::move(out));
}

LightweightString<wchar_t> makeProductSpecific(int resId)
{
    return replacePlaceholder(resourceStrW(resId), L"$PRODUCT$", getProductName());
}
