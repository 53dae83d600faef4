#pragma once
// EventHandler: anything that input and named messages can be delivered to.

struct Event;

class EventHandler {
public:
    virtual ~EventHandler() = default;
    // Answers true when the event was handled; an unhandled mouse or key event is offered to the parent.
    virtual bool react(const Event& event) = 0;
};
