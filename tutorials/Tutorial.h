#pragma once
// A tutorial: a named, categorised list of phases that guide the user through the editor, and the user-interface
// components it refers to, stored as one JSON document per file. Playing it back is the host editor's business;
// this is the model and its file format (docs/tutorials.md describes the document).
//
// Reading never fails: missing or mistyped members take their defaults, so any parsable document gives some
// tutorial. Numbers are kept at single precision, as they are written.

#include "toolkit/support/JSON.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/support/ScreenAnchors.h"
#include "toolkit/support/XY.h"

#include <cstdint>
#include <vector>

class Tutorial : public JSON::iPersistable {
public:
    // Marks a pointer coordinate that was not given. Compared exactly.
    static constexpr double kNoCoordinate = -1234.0;
    // A larger file is not read at all: a tutorial is a few kilobytes, and the catalogue reads every file.
    static constexpr uint64_t kMaxFileBytes = 16ull << 20;
    // Reading keeps at most this many phases, so that getNumPhases() can count them all.
    static constexpr size_t kMaxPhases = 0xFFFF;

    // Where a phase points: at a named target, or at a screen coordinate.
    class Pointer : public JSON::iPersistable {
    public:
        Pointer() = default;
        Pointer(const Pointer&) = default;
        Pointer(Pointer&&) = default;
        Pointer& operator=(const Pointer&) = default;
        Pointer& operator=(Pointer&&) = default;
        ~Pointer() override = default;

        void write(JSON::Builder& builder) const override;
        bool read(const Cv::Ptr<JSON::Element>& element) override;

        // Only x decides whether a coordinate was given; y is not looked at.
        bool valid() const { return x != kNoCoordinate || !target.empty(); }
        // The target, or "," for a pointer at a coordinate (callers show that text as it is).
        LightweightString<wchar_t> getDisplayString() const;

        double x = kNoCoordinate;
        double y = kNoCoordinate;
        LightweightString<wchar_t> target;
    };

    // What a phase tells the user, placed either beside a named target or at an origin of the screen.
    class Message : public JSON::iPersistable {
    public:
        Message() = default;
        Message(const Message&) = default;
        Message(Message&&) = default;
        Message& operator=(const Message&) = default;
        Message& operator=(Message&&) = default;
        ~Message() override = default;

        void write(JSON::Builder& builder) const override;
        bool read(const Cv::Ptr<JSON::Element>& element) override;

        bool valid() const { return !text.empty(); }
        // The target is left out on purpose: two messages that read and sit alike count as the same.
        bool operator!=(const Message& other) const;

        LightweightString<wchar_t> text;
        CoordinateOrigin origin = eOriginCentre;
        LightweightString<wchar_t> target;
        WidgetRelativity relativity = eRelativeRight;
    };

    // The user action that ends a phase: an event name and the modifier keys held.
    class Action : public JSON::iPersistable {
    public:
        // The modifier bits of the toolkit's key events.
        static constexpr uint32_t kCmd = 0x100000;
        static constexpr uint32_t kShift = 0x1000000;
        static constexpr uint32_t kCtrl = 0x2000000;
        static constexpr uint32_t kAlt = 0x4000000;

        Action() = default;
        Action(const Action&) = default;
        Action(Action&&) = default;
        Action& operator=(const Action&) = default;
        Action& operator=(Action&&) = default;
        ~Action() override = default;

        void write(JSON::Builder& builder) const override;
        bool read(const Cv::Ptr<JSON::Element>& element) override;

        bool valid() const { return !event.empty(); }
        // "cmd", "shift", "ctrl" or "alt" for one of the bits above; empty for anything else, combinations too.
        static LightweightString<char> asString(uint32_t modifier);

        LightweightString<char> event;
        uint32_t modifiers = 0;
    };

    // A component of the editor's interface that the tutorial refers to by type name.
    class UIComponent : public JSON::iPersistable {
    public:
        UIComponent() = default;
        UIComponent(const UIComponent&) = default;
        UIComponent(UIComponent&&) = default;
        UIComponent& operator=(const UIComponent&) = default;
        UIComponent& operator=(UIComponent&&) = default;
        ~UIComponent() override = default;

        void write(JSON::Builder& builder) const override;
        bool read(const Cv::Ptr<JSON::Element>& element) override;

        LightweightString<char> type;
        XY<double> position;
        // Starts as the recorded position; for the host to move during playback. Never written.
        XY<double> currentPosition;
        XY<double> size;
    };

    // One step of the tutorial.
    class Phase : public JSON::iPersistable {
    public:
        Phase() = default;
        Phase(const Phase&) = default;
        Phase(Phase&&) = default;
        Phase& operator=(const Phase&) = default;
        Phase& operator=(Phase&&) = default;
        ~Phase() override = default;

        void write(JSON::Builder& builder) const override;
        bool read(const Cv::Ptr<JSON::Element>& element) override;

        Pointer pointer;
        Message message;
        Action action;
        float pause = 0.0f; // the host decides the unit
    };

    Tutorial() = default;
    // Loads the file at path (see load).
    explicit Tutorial(const LightweightString<wchar_t>& path);
    // Copies every phase into a new Phase object, so the copy can be edited without touching the source.
    Tutorial(const Tutorial&) = default;
    Tutorial(Tutorial&&) = default;
    // Member-wise: the two tutorials then share their phase objects. Copy-construct for an independent copy.
    Tutorial& operator=(const Tutorial&) = default;
    Tutorial& operator=(Tutorial&&) = default;
    ~Tutorial() override = default;

    // Replaces the contents with the file's and remembers path as the tutorial's file. A file that is missing,
    // not JSON, not a regular file or larger than kMaxFileBytes leaves the tutorial empty.
    void load(const LightweightString<wchar_t>& path);
    // Writes the document atomically to path and remembers path as the tutorial's file. Answers whether the
    // file was written; a failed save leaves any previous file as it was.
    bool save(const LightweightString<wchar_t>& path);

    const LightweightString<wchar_t>& getName() const { return m_name; }
    const LightweightString<wchar_t>& getCategory() const { return m_category; }
    void setName(const LightweightString<wchar_t>& name) { m_name = name; }
    void setCategory(const LightweightString<wchar_t>& category) { m_category = category; }
    const LightweightString<wchar_t>& getFile() const { return m_file; }
    // The file name without its folder: how the catalogue knows the tutorial.
    LightweightString<wchar_t> getID() const;

    // Counts at most 65535 phases.
    uint16_t getNumPhases() const;
    const std::vector<Cv::Ptr<Phase>>& phases() const { return m_phases; }
    // Null when index is past the end.
    Cv::Ptr<Phase> getPhase(uint16_t index) const;
    // A null phase is ignored.
    void addPhase(const Cv::Ptr<Phase>& phase);
    // Removes that very object (not an equal one); a phase that is not there is ignored.
    void removePhase(const Cv::Ptr<Phase>& phase);

    std::vector<UIComponent>& components() { return m_components; }
    const std::vector<UIComponent>& components() const { return m_components; }
    // The position of the last component of exactly this type, or (0, 0). The scale is accepted for callers
    // that pass one and is not applied: positions are kept as recorded.
    XY<double> getComponentPosition(const LightweightString<char>& type, float scale) const;

protected:
    // Through the JSON::iPersistable interface; callers normally use load and save.
    void write(JSON::Builder& builder) const override;
    bool read(const Cv::Ptr<JSON::Element>& element) override;

private:
    // Copy-constructing gives every phase a new object; assigning shares the source's phase objects.
    class PhaseList : public std::vector<Cv::Ptr<Phase>> {
    public:
        PhaseList() = default;
        PhaseList(const PhaseList& other);
        PhaseList(PhaseList&&) = default;
        PhaseList& operator=(const PhaseList&) = default;
        PhaseList& operator=(PhaseList&&) = default;
    };

    PhaseList m_phases;
    LightweightString<wchar_t> m_name;
    LightweightString<wchar_t> m_category;
    LightweightString<wchar_t> m_file;
    std::vector<UIComponent> m_components;
};
