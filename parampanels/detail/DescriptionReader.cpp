#include "parampanels/detail/DescriptionReader.h"

#include "toolkit/support/DataConvert.h"
#include "toolkit/support/JSON.h"

#include <climits>
#include <cmath>

namespace {

// Numbers are truncated toward zero and held to the range of int, as JSON::Element::getInt does.
int truncateToInt(double value)
{
    if (std::isnan(value))
        return 0;
    if (value <= static_cast<double>(INT_MIN))
        return INT_MIN;
    if (value >= static_cast<double>(INT_MAX))
        return INT_MAX;
    return static_cast<int>(value);
}

// An absent entry reads like an empty object, so that every reader answers its defaults.
const JSON::Element* emptyEntry()
{
    static const Cv::Ptr<JSON::Element> empty = JSON::parse(std::string_view("{}"));
    return empty.get();
}

const JSON::Element& entryOf(const Cv::Ptr<JSON::Element>& entry)
{
    return entry ? *entry : *emptyEntry();
}

} // namespace

DescriptionReader::Kind DescriptionReader::kindOf(const Cv::Ptr<JSON::Element>& entry)
{
    if (!entry)
        return Kind::Unknown;
    const LightweightString<char> type = entry->getString("type");
    if (type == "bool")
        return Kind::Bool;
    if (type == "int")
        return entry->getChild("values") ? Kind::Choice : Kind::Int;
    if (type == "text")
        return Kind::Text;
    if (type == "float")
        return Kind::Float;
    if (type == "label")
        return Kind::Label;
    return Kind::Unknown;
}

Cv::Ptr<GenericParam::iParam> DescriptionReader::readParam(const Cv::Ptr<JSON::Element>& entry)
{
    switch (kindOf(entry)) {
    case Kind::Bool:
        return readBool(entry);
    case Kind::Choice:
        return readChoice(entry);
    case Kind::Int:
        return readInt(entry);
    case Kind::Text:
        return readText(entry);
    case Kind::Float:
        return readFloat(entry);
    case Kind::Label:
        return readLabel(entry);
    case Kind::Unknown:
        break;
    }
    return {};
}

Cv::Ptr<GenericParam::BoolParam> DescriptionReader::readBool(const Cv::Ptr<JSON::Element>& entry)
{
    const bool initial = entryOf(entry).getBool("default", false);
    return Cv::make<GenericParam::BoolParam>(getLegend(entry), getName(entry), getTooltip(entry), initial);
}

Cv::Ptr<GenericParam::ChoiceParam> DescriptionReader::readChoice(const Cv::Ptr<JSON::Element>& entry)
{
    const JSON::Element& e = entryOf(entry);
    std::vector<GenericParam::ChoiceParam::Choice> choices = readChoices(e.getChild("values"));

    // "choice" names a value, not a position; it wins over the first member when given.
    uint32_t initial = choices.empty() ? GenericParam::ChoiceParam::noChoice : choices.front().value;
    const LightweightString<wchar_t> choice = e.getWString("choice");
    if (!choice.empty()) {
        unsigned value = 0;
        DataConvert::convert(choice.view(), value);
        initial = value;
    }
    return Cv::make<GenericParam::ChoiceParam>(getLegend(entry), getName(entry), getTooltip(entry), initial,
                                               std::move(choices));
}

Cv::Ptr<GenericParam::IntParam> DescriptionReader::readInt(const Cv::Ptr<JSON::Element>& entry)
{
    const JSON::Element& e = entryOf(entry);
    const int initial = e.getInt("default", -1);
    const int min = e.getInt("min", -1);
    const int max = e.getInt("max", -1);
    // Two equal bounds (both absent included) mean no range: a range is stated by two different numbers.
    return Cv::make<GenericParam::IntParam>(getLegend(entry), getName(entry), getTooltip(entry), initial, min, max,
                                            min != max);
}

Cv::Ptr<GenericParam::DoubleParam> DescriptionReader::readFloat(const Cv::Ptr<JSON::Element>& entry)
{
    const JSON::Element& e = entryOf(entry);
    const double initial = e.getDouble("default", -1.0);
    const double min = e.getDouble("min", -1.0);
    const double max = e.getDouble("max", -1.0);
    return Cv::make<GenericParam::DoubleParam>(getLegend(entry), getName(entry), getTooltip(entry), initial, min,
                                               max, min != max);
}

Cv::Ptr<GenericParam::TextParam> DescriptionReader::readText(const Cv::Ptr<JSON::Element>& entry)
{
    const JSON::Element& e = entryOf(entry);
    return Cv::make<GenericParam::TextParam>(getLegend(entry), getName(entry), getTooltip(entry),
                                             e.getWString("value"), e.getWString("hint"),
                                             e.getBool("obfuscated", false), e.getBool("advance", false));
}

Cv::Ptr<GenericParam::LabelParam> DescriptionReader::readLabel(const Cv::Ptr<JSON::Element>& entry)
{
    return Cv::make<GenericParam::LabelParam>(getLegend(entry), getName(entry), getTooltip(entry));
}

std::vector<GenericParam::ChoiceParam::Choice> DescriptionReader::readChoices(const Cv::Ptr<JSON::Element>& values)
{
    std::vector<GenericParam::ChoiceParam::Choice> choices;
    if (!values)
        return choices;
    choices.reserve(values->getNumNumericAttribs());
    for (size_t i = 0; i < values->getNumNumericAttribs(); ++i) {
        const std::optional<double> number = values->getNumber(i);
        if (!number)
            continue;
        // A negative number wraps like the unsigned value it is stored as (-1 is 0xFFFFFFFF).
        const uint32_t value = static_cast<uint32_t>(truncateToInt(*number));
        choices.push_back({fromUTF8(values->getNumericAttribName(i).view()), value});
    }
    return choices;
}

ResId DescriptionReader::getTooltip(const Cv::Ptr<JSON::Element>& entry)
{
    const std::optional<double> tooltip = entryOf(entry).getNumber("tooltip");
    if (!tooltip || *tooltip < 0)
        return ResId(ResId::none);
    return ResId(truncateToInt(*tooltip));
}

LightweightString<char> DescriptionReader::getName(const Cv::Ptr<JSON::Element>& entry)
{
    return entryOf(entry).getString("name");
}

LightweightString<wchar_t> DescriptionReader::getLegend(const Cv::Ptr<JSON::Element>& entry)
{
    return entryOf(entry).getWString("legend");
}

EntryConditions DescriptionReader::readConditions(const Cv::Ptr<JSON::Element>& entry)
{
    const JSON::Element& e = entryOf(entry);
    EntryConditions conditions;
    conditions.name = e.getString("name");
    conditions.activeIf = e.getString("active if");
    conditions.visibleIf = e.getString("visible if");
    conditions.lowerBound = e.getString("must not be lower than");
    conditions.upperBound = e.getString("must not be higher than");
    return conditions;
}
