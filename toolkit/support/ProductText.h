#pragma once
// Texts that name the product. One library serves several editions of the editor, so a text that should say
// which edition the user runs holds "$PRODUCT$", and the host says once at start-up what it is called.

#include "toolkit/support/LightweightString.h"

#include <string_view>

// The product's name as the user sees it. Thread-safe.
void setProductName(const LightweightString<wchar_t>& name);
LightweightString<wchar_t> getProductName();

// The text with every occurrence of a placeholder ("$KEY$", "$LOCATION$") replaced by a value.
LightweightString<wchar_t> replacePlaceholder(const LightweightString<wchar_t>& text, std::wstring_view placeholder,
                                              const LightweightString<wchar_t>& value);

// The text of a resource with every "$PRODUCT$" replaced by the product's name.
LightweightString<wchar_t> makeProductSpecific(int resId);
