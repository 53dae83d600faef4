#pragma once
// Small widgets for the widget-core tests: one that records what reaches it, one that can take the focus,
// and one that paints a single colour and counts its paints.

#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/TabOrderable.h"

#include <functional>
#include <vector>

class ProbeGlob : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;
    };
    explicit ProbeGlob(const InitArgs& args)
        : Glob(args)
    {
    }
    ProbeGlob(uint16_t w, uint16_t h)
        : Glob(w, h)
    {
    }

    bool react(const Event& e) override
    {
        events.push_back(e);
        if (onEvent) {
            GlobWatch self(this);
            onEvent(*this, e);
            if (!self)
                return true;
        }
        if (e.isMessage())
            return Glob::react(e);
        return handles;
    }
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override
    {
        messages.push_back({ name, sender });
        return true;
    }

    size_t countOf(int type) const
    {
        size_t n = 0;
        for (const Event& e : events)
            n += e.type == type ? 1 : 0;
        return n;
    }
    const Event* lastOf(int type) const
    {
        for (auto it = events.rbegin(); it != events.rend(); ++it)
            if (it->type == type)
                return &*it;
        return nullptr;
    }

    struct Heard {
        LightweightString<char> name;
        Glob* sender;
    };
    std::vector<Event> events;
    std::vector<Heard> messages;
    bool handles = true;
    std::function<void(ProbeGlob&, const Event&)> onEvent;
};

// Like a text box: takes the focus and the keys, but leaves Tab and back-tab to move the focus on.
class FocusProbe : public ProbeGlob, public TabOrderable {
public:
    using ProbeGlob::ProbeGlob;
    bool react(const Event& e) override
    {
        const bool handled = ProbeGlob::react(e);
        return handled && !(e.isKey() && (e.key == Event::KeyTab || e.key == Event::KeyBackTab));
    }
    bool acceptsFocus() const override { return wantsFocus; }
    bool wantsFocus = true;
};

class ColourGlob : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs(uint16_t w, uint16_t h, Colour c)
            : GlobCreationInfo(w, h)
            , colour(c)
        {
        }
        Colour colour;
    };
    explicit ColourGlob(const InitArgs& args)
        : Glob(args)
        , colour(args.colour)
    {
    }

    void draw() override
    {
        ++paints;
        painter().fillRect(getLocalBox(), colour);
    }

    Colour colour;
    int paints = 0;
};
