#include "toolkit/testing/RecordingOwner.h"

#include <algorithm>
#include <string>

RecordingOwner::RecordingOwner(const GlobCreationInfo& info)
    : Glob(info)
{
}

RecordingOwner::RecordingOwner(uint16_t width, uint16_t height)
    : Glob(width, height)
{
}

size_t RecordingOwner::count(const char* name) const
{
    return static_cast<size_t>(
        std::count_if(m_messages.begin(), m_messages.end(), [name](const Received& r) { return r.name == name; }));
}

std::vector<std::string> RecordingOwner::names() const
{
    std::vector<std::string> out;
    for (const Received& r : m_messages)
        out.push_back(r.name.str());
    return out;
}

LightweightString<char> RecordingOwner::last() const
{
    return m_messages.empty() ? LightweightString<char>() : m_messages.back().name;
}

Glob* RecordingOwner::lastSender() const
{
    return m_messages.empty() ? nullptr : m_messages.back().sender;
}

bool RecordingOwner::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    m_messages.push_back({ name, sender, sender ? sender->getIdStamp() : IdStamp() });
    if (onMessage) {
        const Received copy = m_messages.back(); // the reaction may record more messages
        onMessage(copy);
    }
    return true;
}
