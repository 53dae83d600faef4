#pragma once
// CustomTextBox: a text box whose keys an owner or a subclass can take over, for entries with rules of their
// own (an address typed in parts, a date). Every key is offered first to the key filter (a function set with
// setKeyFilter) and then to filterKey (for subclasses); either may consume it. A key neither consumes gets the
// ordinary text box handling, and afterKey is told of it, so a rule such as "move on when the part is full"
// can look at the result. Paste, cut and copy are keys like any other (Ctrl+V arrives as 'v' with Ctrl).
//
// The text box state the rules need is public on TextBoxBase: getCaretPos / setCaretPos, getMaxLength,
// getAllowedChars, paste().

#include "toolkit/widgets/TextBoxBase.h"

#include <functional>

class CustomTextBox : public TextBoxBase {
public:
    // Answers true when it consumed the key.
    using KeyFilter = std::function<bool(CustomTextBox& box, const Event& key)>;
    // Told of each key the box handled the ordinary way (`handled` as the ordinary handling answered).
    using AfterKey = std::function<void(CustomTextBox& box, const Event& key, bool handled)>;

    struct InitArgs : TextBoxBase::InitArgs {
        using TextBoxBase::InitArgs::InitArgs;
        InitArgs() = default;
        InitArgs(const TextBoxBase::InitArgs& base) : TextBoxBase::InitArgs(base) {}
    };

    explicit CustomTextBox(const InitArgs& args);
    CustomTextBox(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    CustomTextBox(const CustomTextBox& other) = default;
    CustomTextBox(CustomTextBox&& other) = default;
    CustomTextBox& operator=(const CustomTextBox& other) = default;
    CustomTextBox& operator=(CustomTextBox&& other) = default;
    ~CustomTextBox() override;

    LightweightString<char> idstring() const override;

    void setKeyFilter(KeyFilter filter);
    void setAfterKey(AfterKey after);
    // The ordinary text box handling of a key, for filters that pass a key on after looking at it.
    bool defaultKeyHandling(const Event& key) { return TextBoxBase::handleKey(key); }
    // Whether the caret stands after the last character.
    bool caretAtEnd() const { return getCaretPos() >= text().size(); }
    // Whether the text has as many characters as the maximum length allows (never, without a maximum).
    bool isFull() const { return getMaxLength() > 0 && text().size() >= static_cast<size_t>(getMaxLength()); }

protected:
    // For subclasses: answers true when it consumed the key.
    virtual bool filterKey(const Event& key);
    virtual void afterKey(const Event& key, bool handled);

    // Called by the toolkit
    bool handleKey(const Event& event) override;

private:
    struct Hooks {
        KeyFilter filter;
        AfterKey after;
    };
    ValuePtr<Hooks> m_hooks;
};
