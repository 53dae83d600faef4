#pragma once
// TitledGlob<T>: any widget with a title at its left, as the rows of a panel show a legend before the control.
//
// The title takes a column of titleWidth pixels (by default the title's own width and a widget gap); the
// widget fills the rest and is centred vertically. The widget is an ordinary child: talk to it through
// widget(). Its messages reach the titled widget's owner under their own names (the titled widget passes
// them on, so the sender the owner sees is the titled widget), so wrapping a widget does not change who hears
// it.
//
// Type names: a titled widget is "Titled" followed by the widget's type name ("TitledSlider"). Register one
// for GlobManager with registerTitledType<T>("Slider"); it is then made from the info's size, palette and
// "title" setting.

#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/support/UIString.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <cstdint>

// Measuring and drawing shared by every TitledGlob<T>.
namespace TitledGlobDetail {
uint16_t calcTitleWidth(const UIString& title);
void drawTitle(Pictor::Painter& painter, const UIString& title, const GlobBox& column, const Palette& palette,
               bool enabled);
} // namespace TitledGlobDetail

template <class T>
class TitledGlob : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // A title width of 0 fits the title. The titled widget's size is the title column plus the widget,
        // unless the GlobCreationInfo size is set.
        InitArgs(UIString titleText, typename T::InitArgs widgetArgs, uint16_t titleColumn = 0)
            : GlobCreationInfo(0, 0, widgetArgs.palette, widgetArgs.canvas)
            , title(std::move(titleText))
            , widget(std::move(widgetArgs))
            , titleWidth(titleColumn)
        {
        }

        UIString title;
        typename T::InitArgs widget;
        uint16_t titleWidth = 0;
    };

    explicit TitledGlob(const InitArgs& args)
        : Glob(args)
        , m_title{args.title, args.titleWidth ? args.titleWidth : TitledGlobDetail::calcTitleWidth(args.title)}
    {
        auto* made = new T(args.widget);
        const int w = args.width ? args.width : m_title.width + made->getWidth();
        const int h = args.height ? args.height : std::max<int>(made->getHeight(), UifStd::getButtonHeight());
        resize(w, h);
        adopt(made);
    }
    // A widget of T's own (width, height) construction beside an empty title column.
    TitledGlob(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr)
        : TitledGlob(UIString(), width, height, palette, canvas)
    {
    }
    TitledGlob(UIString title, uint16_t width, uint16_t height, const Palette& palette = Palette(),
               Canvas* canvas = nullptr)
        : Glob(width, height, palette, canvas)
        , m_title{title, static_cast<uint16_t>(title.empty() ? 0 : TitledGlobDetail::calcTitleWidth(title))}
    {
        adopt(new T(static_cast<uint16_t>(std::max(0, width - m_title.width)), height, palette, canvas));
    }
    // A copy is a new widget: it wraps a copy of the original's widget.
    TitledGlob(const TitledGlob& other)
        : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), Glob(other),
          m_title(other.m_title)
    {
        adopt(new T(*other.m_widget));
    }
    TitledGlob(TitledGlob&& other) : TitledGlob(static_cast<const TitledGlob&>(other)) {}
    TitledGlob& operator=(const TitledGlob& other)
    {
        if (this != &other) {
            Glob::operator=(other);
            m_title = other.m_title;
            *m_widget = *other.m_widget;
            reshape();
        }
        return *this;
    }
    TitledGlob& operator=(TitledGlob&& other) { return *this = static_cast<const TitledGlob&>(other); }
    ~TitledGlob() override = default;

    LightweightString<char> idstring() const override
    {
        return LightweightString<char>("Titled") + (m_widget ? m_widget->idstring() : LightweightString<char>());
    }

    T* widget() const { return m_widget; }
    void setTitle(const UIString& title)
    {
        m_title.text = title;
        redraw();
    }
    const UIString& getTitle() const { return m_title.text; }
    uint16_t getTitleWidth() const { return m_title.width; }
    void setTitleWidth(uint16_t width)
    {
        m_title.width = width;
        reshape();
        redraw();
    }

    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override
    {
        // The wrapped widget's news is the owner's; a titled widget has nothing to add.
        if (sender == m_widget) {
            callMsg(name);
            return true;
        }
        return Glob::handleMessageEvent(name, sender);
    }
    void reshape() override
    {
        if (!m_widget)
            return;
        const int w = std::max(0, getWidth() - m_title.width);
        const int h = std::min<int>(getHeight(), m_widget->getHeight() ? m_widget->getHeight() : getHeight());
        m_widget->resize(w, h);
        WidgetDetails d = getWidget(m_widget);
        d.position = BottomLeft(m_title.width, (getHeight() - m_widget->getHeight()) / 2);
        setWidgetDetails(d);
    }
    void drawText() override
    {
        TitledGlobDetail::drawTitle(painter(), m_title.text, GlobBox(0, 0, m_title.width, getHeight()),
                                    getPalette(), isEnabledInTree());
    }

private:
    void adopt(T* widget)
    {
        m_widget = widget;
        addChild(m_widget, BottomLeft(m_title.width, (getHeight() - m_widget->getHeight()) / 2));
        reshape();
    }

    // The title column: copied as one.
    struct Title {
        UIString text;
        uint16_t width = 0;
    };
    Title m_title;
    T* m_widget = nullptr; // a child: owned by the tree
};

// Makes "Titled" + widgetTypeName known to GlobManager::createGlob.
template <class T>
bool registerTitledType(const char* widgetTypeName)
{
    return GlobManager::registerType(LightweightString<char>("Titled") + widgetTypeName,
                                     [](const GlobCreationInfo& info) -> Glob* {
                                         LightweightString<char> title;
                                         UIString text;
                                         if (info.config.in("title", title) == 0)
                                             text = UIString(fromUTF8(title.view()));
                                         auto* made = new TitledGlob<T>(text, info.width, info.height, info.palette,
                                                                        info.canvas);
                                         if (!info.name.empty())
                                             made->setName(info.name);
                                         return made;
                                     });
}
