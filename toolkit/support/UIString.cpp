#include "toolkit/support/UIString.h"

#include "toolkit/support/Resources.h"

LightweightString<wchar_t> UIString::getString() const
{
    // A literal is shown exactly as given; only texts from the table are adapted to their place.
    if (!isResource())
        return m_text;
    return resourceStrW(m_id, m_format);
}
