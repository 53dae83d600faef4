#pragma once
// DescriptionReader: reads one entry of a parameter description (a JSON object) into a parameter, with the
// defaults that stand for absent keys. Kept apart from the widgets so that descriptions can be read, tested
// and fuzzed without a screen; the builder makes rows from what this answers.
//
// "type" (exact, case-sensitive)     parameter made
//   "bool"                           GenericParam::BoolParam     "default" bool, else false
//   "int" with a "values" child      GenericParam::ChoiceParam   "choice", else first value, else 0xFFFFFFFF
//   "int"                            GenericParam::IntParam      "default", "min", "max" integers, else -1
//   "text"                           GenericParam::TextParam     "value", "hint", "obfuscated", "advance"
//   "float"                          GenericParam::DoubleParam   "default", "min", "max" numbers, else -1.0
//   "label"                          GenericParam::LabelParam    no value
//   anything else, or none           no parameter (the row is a plain line of text)
// Every kind takes "name" (UTF-8), "legend" and "tooltip". A range applies only when "min" differs from
// "max", so an entry that gives neither, or gives both equal, is unbounded.

#include "parampanels/detail/Conditions.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/support/UIString.h"
#include "toolkit/support/params/BoolParam.h"
#include "toolkit/support/params/ChoiceParam.h"
#include "toolkit/support/params/NumericParams.h"
#include "toolkit/support/params/TextParam.h"

#include <vector>

namespace JSON {
class Element;
}

class DescriptionReader {
public:
    enum class Kind { Bool, Choice, Int, Text, Float, Label, Unknown };

    // The kind an entry makes; Unknown for a null entry.
    static Kind kindOf(const Cv::Ptr<JSON::Element>& entry);

    // The entry's parameter of the kind its "type" names; null for an unknown kind or a null entry.
    static Cv::Ptr<GenericParam::iParam> readParam(const Cv::Ptr<JSON::Element>& entry);

    // Each reads the keys of one kind, whatever the entry's "type" says. A null entry reads as an empty one.
    static Cv::Ptr<GenericParam::BoolParam> readBool(const Cv::Ptr<JSON::Element>& entry);
    static Cv::Ptr<GenericParam::ChoiceParam> readChoice(const Cv::Ptr<JSON::Element>& entry);
    static Cv::Ptr<GenericParam::IntParam> readInt(const Cv::Ptr<JSON::Element>& entry);
    static Cv::Ptr<GenericParam::DoubleParam> readFloat(const Cv::Ptr<JSON::Element>& entry);
    static Cv::Ptr<GenericParam::TextParam> readText(const Cv::Ptr<JSON::Element>& entry);
    static Cv::Ptr<GenericParam::LabelParam> readLabel(const Cv::Ptr<JSON::Element>& entry);

    // The "values" members that are numbers, in stored order: label from the name, value from the number.
    static std::vector<GenericParam::ChoiceParam::Choice> readChoices(const Cv::Ptr<JSON::Element>& values);
    // "tooltip" truncated to an integer; ResId::none when absent or negative.
    static ResId getTooltip(const Cv::Ptr<JSON::Element>& entry);
    static LightweightString<char> getName(const Cv::Ptr<JSON::Element>& entry);
    static LightweightString<wchar_t> getLegend(const Cv::Ptr<JSON::Element>& entry);
    // The condition texts, for attachConditions once every row exists.
    static EntryConditions readConditions(const Cv::Ptr<JSON::Element>& entry);
};
