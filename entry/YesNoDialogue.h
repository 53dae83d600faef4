#pragma once
// YesNoDialogue: a small panel that asks one question and offers two answers. The owner hears which answer
// was given by name, and the panel then closes itself:
//
//   the user                              | owner hears
//   --------------------------------------+-------------
//   clicks the first button, or Return    | yesMsg
//   clicks the second button, or Escape   | noMsg
//
// The buttons carry the caller's own words ("Replace" / "Keep both"), so the question never has to be
// phrased for a fixed Yes and No.

#include "toolkit/ui/StandardPanel.h"

class Button;
class TextLabel;

class YesNoDialogue : public StandardPanel {
public:
    struct InitArgs : StandardPanel::InitArgs {
        InitArgs() = default;
        // The size fits the question wrapped at the standard width and the two buttons.
        InitArgs(UIString panelTitle, UIString questionText, UIString yesLabel, UIString noLabel,
                 const Palette& pal = Palette());

        UIString question;
        UIString yesText;
        UIString noText;
    };

    explicit YesNoDialogue(const InitArgs& args);
    YesNoDialogue(const YesNoDialogue& other);
    YesNoDialogue(YesNoDialogue&& other) : YesNoDialogue(static_cast<const YesNoDialogue&>(other)) {}
    YesNoDialogue& operator=(const YesNoDialogue& other);
    YesNoDialogue& operator=(YesNoDialogue&& other) { return *this = static_cast<const YesNoDialogue&>(other); }
    ~YesNoDialogue() override;

    Button* getYesButton() const { return m_yes; }
    Button* getNoButton() const { return m_no; }
    // Tells the owner and closes. Answers nothing: the panel is gone afterwards (after the dispatch).
    void answer(bool yes);

    static constexpr const char* yesMsg = "yes_no_answered_yes";
    static constexpr const char* noMsg = "yes_no_answered_no";
    // The width the question is wrapped at.
    static constexpr int questionWidth = 320;

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool react(const Event& event) override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;

private:
    void build();

    // What the panel says: a copy says the same and makes its own label and buttons for it.
    struct Words {
        UIString question;
        UIString yesText;
        UIString noText;
    };

    Words m_words;
    TextLabel* m_label = nullptr; // children: owned by the tree
    Button* m_yes = nullptr;
    Button* m_no = nullptr;
    bool m_answered = false;
};

// Asks the question in a new top-level panel, centred on the pointer, whose answer goes to `owner` as
// YesNoDialogue::yesMsg or noMsg. Answers the panel, or null when there is no screen to show it on.
YesNoDialogue* makeYesNoDialogue(Glob* owner, const UIString& title, const UIString& question,
                                 const UIString& yesText, const UIString& noText);
