#pragma once
// RecordingOwner: a plain panel that writes down every named message it receives, for tests to check what a
// widget told its owner. An optional reaction runs after each message is recorded (to answer a widget, or to
// destroy it from inside its own report).

#include "toolkit/ui/Glob.h"

#include <cstddef>
#include <functional>
#include <vector>

class RecordingOwner : public Glob {
public:
    struct Received {
        LightweightString<char> name;
        Glob* sender = nullptr;
        IdStamp senderStamp;
    };

    explicit RecordingOwner(const GlobCreationInfo& info);
    RecordingOwner(uint16_t width, uint16_t height);

    LightweightString<char> idstring() const override { return "RecordingOwner"; }

    const std::vector<Received>& getMessages() const { return m_messages; }
    size_t count() const { return m_messages.size(); }
    size_t count(const char* name) const;
    bool heard(const char* name) const { return count(name) > 0; }
    // The names in the order heard.
    std::vector<std::string> names() const;
    // The last message's name; empty when none.
    LightweightString<char> last() const;
    Glob* lastSender() const;
    void clear() { m_messages.clear(); }

    std::function<void(const Received&)> onMessage;

    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;

private:
    std::vector<Received> m_messages;
};
