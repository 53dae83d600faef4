#pragma once
// HintWindow: the small message that shows first-use hints, with a check box at its bottom right through which
// the user switches hints off (or on again). Any change of the box also forgets which hints were given, so
// switching hints back on shows each of them once more.

#include "toolkit/widgets/StatusMessage.h"

class Checkbox;

class HintWindow : public StatusMessage {
public:
    // The check box's label.
    static constexpr int checkboxLabelId = 11466;
    // Every message of a check box begins so.
    static constexpr const char* checkboxMsgPrefix = "Checkbox ";

    explicit HintWindow(const StatusMessage::InitArgs& args);
    // A copy has a check box of its own.
    HintWindow(const HintWindow& other);
    HintWindow(HintWindow&& other)
        : HintWindow(static_cast<const HintWindow&>(other))
    {
    }
    HintWindow& operator=(const HintWindow& other) = default;
    HintWindow& operator=(HintWindow&& other) = default;

    LightweightString<char> idstring() const override;

    // Called by the toolkit
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;

private:
    void addCheckbox();
};
