#pragma once
// TitleTextBox: a text box with its legend at the left, as a row of a panel shows it. The legend takes what
// the entry leaves of the width; the entry is an ordinary TextBoxBase area at the right, so every text box
// operation (ghost label, obfuscation, adaptors, callbacks) applies to it unchanged. A press on the legend
// gives the entry the focus, as a label beside a field does.

#include "toolkit/support/UIString.h"
#include "toolkit/widgets/TextBoxBase.h"

#include <cstdint>

class TitleTextBox : public TextBoxBase {
public:
    struct InitArgs : TextBoxBase::InitArgs {
        InitArgs() = default;
        // The entry is `entry` pixels wide at the right of `totalWidth`; a height of 0 is the button height.
        InitArgs(UIString titleText, LightweightString<wchar_t> initialText, uint16_t entry, uint16_t totalWidth,
                 uint16_t h = 0, const Palette& pal = Palette(), Canvas* c = nullptr)
            : TextBoxBase::InitArgs(std::move(initialText), totalWidth, h, pal, c)
            , title(std::move(titleText))
            , entryWidth(entry)
        {
        }
        // For boxes made by type name: the "title", "text" and "entryWidth" settings.
        InitArgs(const GlobCreationInfo& info);

        UIString title;
        uint16_t entryWidth = 0;
    };

    explicit TitleTextBox(const InitArgs& args);
    // An entry filling the whole width, with no legend.
    TitleTextBox(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    TitleTextBox(const TitleTextBox&) = default;
    TitleTextBox(TitleTextBox&&) = default;
    TitleTextBox& operator=(const TitleTextBox&) = default;
    TitleTextBox& operator=(TitleTextBox&&) = default;
    ~TitleTextBox() override;

    LightweightString<char> idstring() const override;

    void setTitle(const UIString& title);
    const UIString& getTitle() const { return m_title; }
    // Clamped to the widget's width.
    void setEntryWidth(uint16_t width);
    uint16_t getEntryWidth() const;

    GlobBox entryArea() const override;

    // Called by the toolkit
    void drawBackground() override;

private:
    UIString m_title;
    uint16_t m_entryWidth = 0;
};
