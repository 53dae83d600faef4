#pragma once
// Radio groups: a set of buttons of which one is down at a time.
//
// RadioSetBase<B> is the group machinery, a mixin rather than a widget, so that a widget that is already a
// panel (a scrolling list whose lines are buttons) can be a group too. Buttons join with addWidget: they
// become latching and report their activations to the group, which puts the activated one down and every
// other one up. The group keeps only watched pointers; a member that dies simply drops out.
//
//   event                                   | group does
//   ----------------------------------------+------------------------------------------------------------
//   a member is activated (click, Space)    | it goes down, the others up; selectionChangedMsg if it was
//                                           | not the selected one already
//   Up/Left, Down/Right on a member         | selects and focuses the previous / next usable member (live,
//                                           | visible, enabled), stopping at the ends; selectionChangedMsg
//   select(i, flags) from code              | the same without the keys; tells the owner only with NotifyFlag
//   Tab, back-tab                           | the group is one stop: only the selected member (or, with
//                                           | none selected, the first usable one) takes the focus; a
//                                           | member the user activates takes it too
//
// Who hears selectionChangedMsg: when the group is itself a widget, its owner; otherwise the owner of the
// button that was selected.
//
// Buttons may also be put down directly (setDown) by a derived group that allows several at once; the
// selected index is then the first member that is down.
//
// radio_set is the group of plain Buttons; RadioSet is a widget that makes a column (or row) of radio
// buttons from labels and is their group.

#include "toolkit/ui/Glob.h"
#include "toolkit/widgets/Button.h"

#include <cstddef>
#include <vector>

template <class B>
class RadioSetBase : public iButtonGroup {
public:
    enum SelectFlags : unsigned {
        RedrawFlag = 1u << 0,
        NotifyFlag = 1u << 1,
    };

    RadioSetBase() = default;
    // A copy is an empty group: buttons belong to one group.
    RadioSetBase(const RadioSetBase&) : iButtonGroup() {}
    RadioSetBase& operator=(const RadioSetBase&) { return *this; }
    virtual ~RadioSetBase() { clearWidgets(); }

    // Adds a button to the group (once); it becomes latching. A button that is down when it joins stays
    // down only when nothing else is.
    void addWidget(B* button)
    {
        // Asking the button rather than searching the members keeps a list of many lines linear to build.
        if (!button || button->getGroup() == this)
            return;
        button->setLatching(true);
        button->setGroup(this);
        if (button->isDown() && getSelectedIndex() >= 0)
            button->setDown(false);
        m_members.push_back(GlobWatch(button));
    }
    void removeWidget(B* button)
    {
        const int index = indexOf(button);
        if (index < 0)
            return;
        if (button->getGroup() == this)
            button->setGroup(nullptr);
        m_members.erase(m_members.begin() + index);
    }
    // Leaves every member alone but out of the group.
    void clearWidgets()
    {
        for (const GlobWatch& w : m_members)
            if (auto* b = static_cast<B*>(w.get()); b && b->getGroup() == this)
                b->setGroup(nullptr);
        m_members.clear();
    }

    size_t numWidgets() const { return m_members.size(); }
    // Null for an index out of range or a member that has died.
    B* getWidget(size_t index) const { return index < m_members.size() ? static_cast<B*>(m_members[index].get()) : nullptr; }
    int indexOf(const B* button) const
    {
        for (size_t i = 0; i < m_members.size(); ++i)
            if (button && m_members[i].get() == button)
                return static_cast<int>(i);
        return -1;
    }
    // The first member that is down, or -1.
    int getSelectedIndex() const
    {
        for (size_t i = 0; i < m_members.size(); ++i)
            if (B* b = getWidget(i); b && b->isDown())
                return static_cast<int>(i);
        return -1;
    }
    B* getSelectedWidget() const
    {
        const int i = getSelectedIndex();
        return i < 0 ? nullptr : getWidget(static_cast<size_t>(i));
    }

    // Puts member `index` down and the others up; -1 (or any index out of range) puts them all up. Answers
    // whether the group still exists afterwards (the owner told with NotifyFlag may destroy it).
    bool select(int index, unsigned flags = RedrawFlag)
    {
        const int before = getSelectedIndex();
        const eRedrawFlag redraw = (flags & RedrawFlag) ? Redraw : NoRedraw;
        B* chosen = index >= 0 ? getWidget(static_cast<size_t>(index)) : nullptr;
        for (size_t i = 0; i < m_members.size(); ++i)
            if (B* b = getWidget(i))
                b->setDown(b == chosen, redraw);
        if (!(flags & NotifyFlag) || getSelectedIndex() == before)
            return true;
        return notifySelection(chosen);
    }
    bool selectWidget(B* button, unsigned flags = RedrawFlag) { return select(indexOf(button), flags); }

    // Whether the arrow keys move the selection and the group is one tab stop (on by default). A list that
    // moves its selection itself switches this off; its members then take the focus as plain buttons do.
    void setArrowKeys(bool on) { m_arrowKeys = on; }

    // What the group tells its owner when the user changed the selection.
    static constexpr const char* selectionChangedMsg = "radio_set_selection_changed";

protected:
    void buttonActivated(Button& button) override
    {
        const int index = indexOf(static_cast<B*>(&button));
        if (index < 0)
            return;
        GlobWatch watch(&button);
        select(index, RedrawFlag | NotifyFlag);
        // Now the group's tab stop: keep the keyboard with it, so the arrows go on from here.
        if (m_arrowKeys && watch)
            button.takeFocus();
    }

    bool memberAcceptsFocus(const Button& button) const override
    {
        if (!m_arrowKeys)
            return true;
        const int selected = getSelectedIndex();
        if (selected >= 0)
            return getWidget(static_cast<size_t>(selected)) == &button;
        for (size_t i = 0; i < m_members.size(); ++i)
            if (B* b = getWidget(i); b && b->isVisible() && b->isEnabledInTree())
                return b == &button;
        return false;
    }

    bool buttonKey(Button& button, int key) override
    {
        if (!m_arrowKeys)
            return false;
        int step = 0;
        if (key == Event::KeyUp || key == Event::KeyLeft)
            step = -1;
        else if (key == Event::KeyDown || key == Event::KeyRight)
            step = 1;
        const int from = indexOf(static_cast<B*>(&button));
        if (step == 0 || from < 0)
            return false;
        for (int i = from + step; i >= 0 && i < static_cast<int>(m_members.size()); i += step) {
            B* next = getWidget(static_cast<size_t>(i));
            if (!next || !next->isVisible() || !next->isEnabledInTree())
                continue;
            GlobWatch watch(next);
            next->takeFocus();
            if (watch)
                select(i, RedrawFlag | NotifyFlag);
            return true;
        }
        return true; // at an end: the key is still the group's, so focus does not wander off
    }

private:
    bool notifySelection(B* chosen)
    {
        if (auto* self = dynamic_cast<Glob*>(this))
            return self->callMsg(selectionChangedMsg);
        if (chosen)
            chosen->callMsg(selectionChangedMsg);
        return true;
    }

    std::vector<GlobWatch> m_members;
    bool m_arrowKeys = true;
};

class radio_set : public RadioSetBase<Button> {
};

// A widget holding a column (or a row) of radio buttons made from labels, and their group.
class RadioSet : public Glob, public radio_set {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // A width of 0 fits the widest label (or, in a row, every label); each button is the standard
        // button height.
        InitArgs(std::vector<UIString> buttonLabels, int selectedIndex = 0, bool inARow = false, uint16_t w = 0,
                 const Palette& pal = Palette(), Canvas* c = nullptr)
            : GlobCreationInfo(w, 0, pal, c), labels(std::move(buttonLabels)), selected(selectedIndex), row(inARow)
        {
        }
        // For sets made by type name: "labels" (a list), "selected" (an index) and "row" (a boolean), read by
        // SettingsReader.
        InitArgs(const GlobCreationInfo& info);

        std::vector<UIString> labels;
        int selected = 0;
        bool row = false;
    };

    explicit RadioSet(const InitArgs& args);
    RadioSet(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    // A copy has the same buttons (new ones) in a group of its own.
    RadioSet(const RadioSet& other);
    RadioSet(RadioSet&& other) : RadioSet(static_cast<const RadioSet&>(other)) {}
    RadioSet& operator=(const RadioSet& other) = delete;
    RadioSet& operator=(RadioSet&& other) = delete;
    ~RadioSet() override;

    LightweightString<char> idstring() const override;

    // Both bases have an addWidget (make a child; join the group) and a getWidget (a child's placement; a
    // member by index): a widget that is also a group brings both into view like this.
    using Glob::addWidget;
    using radio_set::addWidget;
    using Glob::getWidget;
    using radio_set::getWidget;

    // Adds a radio button with the label after the others.
    Button* addButton(const UIString& label);
    int getSelected() const { return getSelectedIndex(); }

    static XY<int> calcSize(const std::vector<UIString>& labels, bool row);

    // Called by the toolkit
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void setActive(bool active, eRedrawFlag redraw = Redraw) override;

private:
    bool m_row = false;
};
