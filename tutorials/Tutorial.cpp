#include "tutorials/Tutorial.h"

#include "toolkit/support/FileUtils.h"
#include "toolkit/support/TextFile.h"
#include "toolkit/ui/Event.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <sys/stat.h>
#include <utility>

static_assert(Tutorial::Action::kCmd == static_cast<uint32_t>(Event::Cmd));
static_assert(Tutorial::Action::kShift == static_cast<uint32_t>(Event::Shift));
static_assert(Tutorial::Action::kCtrl == static_cast<uint32_t>(Event::Ctrl));
static_assert(Tutorial::Action::kAlt == static_cast<uint32_t>(Event::Alt));

namespace {

// The order in which modifiers are written, whatever order they were read in.
constexpr std::array<std::pair<uint32_t, const char*>, 4> kModifierNames { {
    { Tutorial::Action::kShift, "shift" },
    { Tutorial::Action::kCtrl, "ctrl" },
    { Tutorial::Action::kCmd, "cmd" },
    { Tutorial::Action::kAlt, "alt" },
} };

// Numbers are stored at the precision they are written with. A value beyond the range of float becomes the
// largest float of its sign: converting it directly would be undefined, and infinity could not be written.
float toFloat(double value)
{
    return static_cast<float>(std::clamp(value, -static_cast<double>(FLT_MAX), static_cast<double>(FLT_MAX)));
}

double readCoordinate(const JSON::Element& element, std::string_view key, double fallback)
{
    const std::optional<double> value = element.getNumber(key);
    return value ? toFloat(*value) : fallback;
}

// Regular files up to the limit only: a named pipe would block the reader, and a huge file would cost
// its size in memory several times over before being refused.
bool isReadableTutorialFile(const LightweightString<wchar_t>& path)
{
    struct stat info {};
    if (::stat(toUTF8(path.view()).c_str(), &info) != 0)
        return false;
    return S_ISREG(info.st_mode) && static_cast<uint64_t>(info.st_size) <= Tutorial::kMaxFileBytes;
}

} // namespace

// ---- Pointer

void Tutorial::Pointer::write(JSON::Builder& builder) const
{
    // A coordinate wins over a target: when both are set only the coordinate is kept.
    if (x == kNoCoordinate) {
        if (!target.empty())
            builder.add("target", target);
        return;
    }
    builder.add("x", static_cast<float>(x));
    builder.add("y", static_cast<float>(y));
}

bool Tutorial::Pointer::read(const Cv::Ptr<JSON::Element>& element)
{
    if (!element)
        return true;
    // A named target wins over a coordinate: x and y are then not read at all.
    target = element->getWString("target");
    if (!target.empty()) {
        x = y = kNoCoordinate;
        return true;
    }
    x = readCoordinate(*element, "x", kNoCoordinate);
    y = readCoordinate(*element, "y", kNoCoordinate);
    return true;
}

LightweightString<wchar_t> Tutorial::Pointer::getDisplayString() const
{
    return target.empty() ? LightweightString<wchar_t>(L",") : target;
}

// ---- Message

void Tutorial::Message::write(JSON::Builder& builder) const
{
    if (!target.empty()) {
        builder.add("target", target);
        builder.add("relativity", asString(relativity));
    } else {
        builder.add("origin", asString(origin));
    }
    builder.add("text", text);
}

bool Tutorial::Message::read(const Cv::Ptr<JSON::Element>& element)
{
    if (!element)
        return true;
    // Without its own text the message keeps the one the phase gave in short form.
    if (element->hasString("text"))
        text = element->getWString("text");
    if (element->hasString("origin")) {
        origin = CoordinateOriginFromString(element->getString("origin").view());
        target.clear();
        relativity = eRelativeRight;
        return true;
    }
    relativity = WidgetRelativityFromString(element->getString("relativity").view());
    target = element->getWString("target");
    return true;
}

bool Tutorial::Message::operator!=(const Message& other) const
{
    return text != other.text || origin != other.origin || relativity != other.relativity;
}

// ---- Action

void Tutorial::Action::write(JSON::Builder& builder) const
{
    if (event.empty())
        return;
    builder.add("event", event);
    if (modifiers == 0)
        return;
    builder.startArray("modifiers");
    for (const auto& [bit, name] : kModifierNames)
        if (modifiers & bit)
            builder.add("", name);
    builder.endArray();
}

bool Tutorial::Action::read(const Cv::Ptr<JSON::Element>& element)
{
    if (!element)
        return true;
    event = element->getString("event");
    modifiers = 0;
    const Cv::Ptr<JSON::Element> list = element->getChild("modifiers");
    if (!list)
        return true;
    for (size_t i = 0; i < list->getNumStringAttribs(); ++i) {
        const LightweightString<char> name = list->getString(i);
        for (const auto& [bit, known] : kModifierNames)
            if (name == known)
                modifiers |= bit;
    }
    return true;
}

LightweightString<char> Tutorial::Action::asString(uint32_t modifier)
{
    for (const auto& [bit, name] : kModifierNames)
        if (modifier == bit)
            return name;
    return {};
}

// ---- UIComponent

void Tutorial::UIComponent::write(JSON::Builder& builder) const
{
    builder.add("type", type);
    builder.add("width", static_cast<float>(size.x));
    builder.add("height", static_cast<float>(size.y));
    builder.add("x", static_cast<float>(position.x));
    builder.add("y", static_cast<float>(position.y));
}

bool Tutorial::UIComponent::read(const Cv::Ptr<JSON::Element>& element)
{
    if (!element)
        return true;
    type = element->getString("type");
    size = XY<double>(readCoordinate(*element, "width", 0.0), readCoordinate(*element, "height", 0.0));
    position = XY<double>(readCoordinate(*element, "x", 0.0), readCoordinate(*element, "y", 0.0));
    currentPosition = position;
    return true;
}

// ---- Phase

void Tutorial::Phase::write(JSON::Builder& builder) const
{
    if (pause != 0.0f)
        builder.add("pause", pause);
    if (pointer.valid()) {
        builder.startChild("pointer");
        pointer.write(builder);
        builder.endChild();
    }
    if (message.valid()) {
        builder.startChild("message");
        message.write(builder);
        builder.endChild();
    }
    if (action.valid()) {
        builder.startChild("action");
        action.write(builder);
        builder.endChild();
    }
}

bool Tutorial::Phase::read(const Cv::Ptr<JSON::Element>& element)
{
    if (!element)
        return true;
    pause = toFloat(element->getDouble("pause", 0.0));
    if (const auto child = element->getChild("pointer"))
        pointer.read(child);
    // The short form of a message: its text alone, read first so that a full message can still override it.
    if (element->hasString("text"))
        message.text = element->getWString("text");
    if (const auto child = element->getChild("message"))
        message.read(child);
    if (const auto child = element->getChild("action"))
        action.read(child);
    return true;
}

// ---- Tutorial

Tutorial::Tutorial(const LightweightString<wchar_t>& path)
{
    load(path);
}

Tutorial::PhaseList::PhaseList(const PhaseList& other)
    : std::vector<Cv::Ptr<Phase>>()
{
    reserve(other.size());
    for (const Cv::Ptr<Phase>& phase : other)
        push_back(Cv::make<Phase>(*phase));
}

void Tutorial::load(const LightweightString<wchar_t>& path)
{
    m_phases.clear();
    m_components.clear();
    m_name.clear();
    m_category.clear();
    m_file = path;
    if (!isReadableTutorialFile(path))
        return;
    if (const Cv::Ptr<JSON::Element> root = JSON::parseFile(path))
        read(root);
}

bool Tutorial::save(const LightweightString<wchar_t>& path)
{
    m_file = path;
    TextFile file(path, false);
    JSON::Builder builder;
    write(builder);
    builder.printTo(file, 3, 0);
    return file.save(path, 1);
}

LightweightString<wchar_t> Tutorial::getID() const
{
    return stripPath(m_file);
}

uint16_t Tutorial::getNumPhases() const
{
    return static_cast<uint16_t>(std::min(m_phases.size(), kMaxPhases));
}

Cv::Ptr<Tutorial::Phase> Tutorial::getPhase(uint16_t index) const
{
    return index < m_phases.size() ? m_phases[index] : Cv::Ptr<Phase>();
}

void Tutorial::addPhase(const Cv::Ptr<Phase>& phase)
{
    if (phase)
        m_phases.push_back(phase);
}

void Tutorial::removePhase(const Cv::Ptr<Phase>& phase)
{
    const auto found = std::find(m_phases.begin(), m_phases.end(), phase);
    if (found != m_phases.end())
        m_phases.erase(found);
}

XY<double> Tutorial::getComponentPosition(const LightweightString<char>& type, float /*scale*/) const
{
    XY<double> position(0.0, 0.0);
    for (const UIComponent& component : m_components)
        if (component.type == type)
            position = component.position;
    return position;
}

void Tutorial::write(JSON::Builder& builder) const
{
    builder.add("name", m_name);
    builder.add("category", m_category);
    builder.startArray("components");
    for (const UIComponent& component : m_components) {
        builder.startChild();
        component.write(builder);
        builder.endChild();
    }
    builder.endArray();
    builder.startArray("phases");
    for (const Cv::Ptr<Phase>& phase : m_phases) {
        builder.startChild();
        phase->write(builder);
        builder.endChild();
    }
    builder.endArray();
}

bool Tutorial::read(const Cv::Ptr<JSON::Element>& element)
{
    m_phases.clear();
    m_components.clear();
    if (!element) {
        m_name.clear();
        m_category.clear();
        return true;
    }
    m_name = element->getWString("name");
    m_category = element->getWString("category");
    if (const auto list = element->getChild("components")) {
        for (size_t i = 0; i < list->getNumChildren(); ++i) {
            UIComponent component;
            component.read(list->getChild(i));
            // A component without a type could never be found again.
            if (!component.type.empty())
                m_components.push_back(std::move(component));
        }
    }
    if (const auto list = element->getChild("phases")) {
        const size_t count = std::min(list->getNumChildren(), kMaxPhases);
        m_phases.reserve(count);
        for (size_t i = 0; i < count; ++i) {
            auto phase = Cv::make<Phase>();
            phase->read(list->getChild(i));
            m_phases.push_back(std::move(phase));
        }
    }
    return true;
}
