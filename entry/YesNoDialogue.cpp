#include "entry/YesNoDialogue.h"

#include "toolkit/gfx/FontDesc.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/MultiLineTextBox.h"
#include "toolkit/widgets/TextAlignment.h"
#include "toolkit/widgets/TextLabel.h"

#include <algorithm>

namespace {

constexpr int minButtonWidth = 80;
const char* const yesPressedMsg = "yes_no_button_yes";
const char* const noPressedMsg = "yes_no_button_no";

uint16_t questionHeight(const UIString& question)
{
    const int lines = std::max(1, WordWrappingTextRenderer::calcNumDisplayLines(
                                      question.getString().view(), UifStd::getDefaultFont(),
                                      static_cast<double>(YesNoDialogue::questionWidth)));
    return MultiLineTextBox::calcHeightForLines(lines, getDefaultFontSize(), UifStd::getWidgetGap());
}

uint16_t buttonWidth(const UIString& label)
{
    return static_cast<uint16_t>(std::max<int>(minButtonWidth, Button::calcWidth(label)));
}

} // namespace

YesNoDialogue::InitArgs::InitArgs(UIString panelTitle, UIString questionText, UIString yesLabel, UIString noLabel,
                                  const Palette& pal)
    : StandardPanel::InitArgs(std::move(panelTitle), 0, 0, NoWidgets, pal), question(std::move(questionText)),
      yesText(std::move(yesLabel)), noText(std::move(noLabel))
{
    const int gap = UifStd::getWidgetGap();
    const int buttons = buttonWidth(yesText) + buttonWidth(noText) + gap;
    const int userWidth = 2 * gap + std::max(questionWidth, buttons);
    const int userHeight = 3 * gap + questionHeight(question) + UifStd::getButtonHeight();
    const XY<int> size = StandardPanel::calcPanelSize(userWidth, userHeight, *this);
    width = static_cast<uint16_t>(size.x);
    height = static_cast<uint16_t>(size.y);
    resizable = false;
}

YesNoDialogue::YesNoDialogue(const InitArgs& args)
    : StandardPanel(args), m_words{args.question, args.yesText, args.noText}
{
    build();
}

YesNoDialogue::YesNoDialogue(const YesNoDialogue& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), StandardPanel(other),
      m_words(other.m_words)
{
    build();
}

YesNoDialogue& YesNoDialogue::operator=(const YesNoDialogue& other)
{
    if (this != &other) {
        StandardPanel::operator=(other);
        m_words = other.m_words;
        removeAllChildren();
        build();
    }
    return *this;
}

YesNoDialogue::~YesNoDialogue() = default;

LightweightString<char> YesNoDialogue::idstring() const
{
    return "YesNoDialogue";
}

void YesNoDialogue::build()
{
    const int gap = UifStd::getWidgetGap();
    TextLabel::InitArgs label(m_words.question, questionWidth, questionHeight(m_words.question), getPalette());
    label.wordWrap = true;
    label.alignment = TextAlignment(TextAlignment::Left, TextAlignment::Top);
    m_label = addWidget<TextLabel>(label, UserTopLeft(gap, gap));

    Button::InitArgs no(m_words.noText, buttonWidth(m_words.noText), 0, getPalette());
    no.message = noPressedMsg;
    Button::InitArgs yes(m_words.yesText, buttonWidth(m_words.yesText), 0, getPalette());
    yes.message = yesPressedMsg;
    // Yes at the right edge, where the eye ends; No just before it.
    const int rowFromBottom = gap;
    m_yes = addWidget<Button>(yes, BottomLeft(getUserArea().width() - gap - yes.width, rowFromBottom));
    m_no = addWidget<Button>(no, BottomLeft(getUserArea().width() - 2 * gap - yes.width - no.width, rowFromBottom));
}

void YesNoDialogue::answer(bool yes)
{
    // A second answer (a key after a click, before the panel has gone) must not reach the owner.
    if (m_answered)
        return;
    m_answered = true;
    if (!callMsg(yes ? yesMsg : noMsg))
        return;
    close();
}

bool YesNoDialogue::react(const Event& event)
{
    if (event.isKey() && event.key == Event::KeyReturn && !event.hasAnyModifier()) {
        answer(true);
        return true;
    }
    if (event.isKey() && event.key == Event::KeyEscape) {
        answer(false);
        return true;
    }
    return StandardPanel::react(event);
}

bool YesNoDialogue::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (sender == m_yes && name == yesPressedMsg) {
        answer(true);
        return true;
    }
    if (sender == m_no && name == noPressedMsg) {
        answer(false);
        return true;
    }
    return StandardPanel::handleMessageEvent(name, sender);
}

YesNoDialogue* makeYesNoDialogue(Glob* owner, const UIString& title, const UIString& question,
                                 const UIString& yesText, const UIString& noText)
{
    YesNoDialogue::InitArgs args(title, question, yesText, noText, UifStd::getColourScheme());
    auto* panel = new YesNoDialogue(args);
    panel->setOwner(owner);
    if (!GlobManager::realize(panel)) {
        delete panel;
        return nullptr;
    }
    const XY<int> at = GlobManager::getPosForGlob(panel->getSize());
    panel->setPos(at.x, at.y);
    // Keys go to the question at once, so Return and Escape answer it.
    panel->getYesButton()->takeFocus();
    return panel;
}
