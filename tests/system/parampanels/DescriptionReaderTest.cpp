// Reading description entries: which parameter each "type" makes, what absent keys default to, when a range
// applies, and where a choice list starts.
#include "parampanels/detail/DescriptionReader.h"

#include "toolkit/support/JSON.h"

#include <gtest/gtest.h>

#include <string>

using GenericParam::ChoiceParam;

namespace {

Cv::Ptr<JSON::Element> entry(const std::string& json)
{
    Cv::Ptr<JSON::Element> parsed = JSON::parse(json);
    EXPECT_TRUE(parsed) << json;
    return parsed;
}

template <typename T>
Cv::Ptr<T> read(const std::string& json)
{
    Cv::Ptr<GenericParam::iParam> param = DescriptionReader::readParam(entry(json));
    Cv::Ptr<T> typed = param.dynamicCast<T>();
    EXPECT_TRUE(typed) << json << " made " << (param ? param->getValueTypeName().str() : std::string("nothing"));
    return typed;
}

} // namespace

TEST(DescriptionReader, TypeWordsAreExactAndOnlySixMakeParameters)
{
    EXPECT_TRUE(read<GenericParam::BoolParam>(R"({"type": "bool"})"));
    EXPECT_TRUE(read<GenericParam::IntParam>(R"({"type": "int"})"));
    EXPECT_TRUE(read<ChoiceParam>(R"({"type": "int", "values": {"a": 1}})"));
    EXPECT_TRUE(read<GenericParam::TextParam>(R"({"type": "text"})"));
    EXPECT_TRUE(read<GenericParam::DoubleParam>(R"({"type": "float"})"));
    EXPECT_TRUE(read<GenericParam::LabelParam>(R"({"type": "label"})"));
    // "values" turns only an "int" into a choice.
    EXPECT_TRUE(read<GenericParam::BoolParam>(R"({"type": "bool", "values": {"a": 1}})"));

    for (const char* json : {R"({})", R"({"type": "Bool"})", R"({"type": "double"})", R"({"type": "choice"})",
                             R"({"type": "action"})", R"({"type": " int"})", R"({"type": 1})"}) {
        EXPECT_EQ(DescriptionReader::kindOf(entry(json)), DescriptionReader::Kind::Unknown) << json;
        EXPECT_FALSE(DescriptionReader::readParam(entry(json))) << json;
    }
    EXPECT_FALSE(DescriptionReader::readParam(nullptr));
}

TEST(DescriptionReader, AbsentKeysTakeTheirDefaults)
{
    const auto flag = read<GenericParam::BoolParam>(R"({"type": "bool"})");
    const auto count = read<GenericParam::IntParam>(R"({"type": "int"})");
    const auto amount = read<GenericParam::DoubleParam>(R"({"type": "float"})");
    const auto text = read<GenericParam::TextParam>(R"({"type": "text"})");
    ASSERT_TRUE(flag && count && amount && text);
    EXPECT_FALSE(flag->getValue());
    EXPECT_EQ(flag->getTooltip(), ResId(ResId::none));
    EXPECT_EQ(count->getValue(), -1);
    EXPECT_FALSE(count->isRangeEnabled());
    EXPECT_EQ(amount->getValue(), -1.0);
    EXPECT_FALSE(amount->isRangeEnabled());
    EXPECT_TRUE(text->getValue().empty() && text->getHint().empty());
    EXPECT_FALSE(text->isObfuscated() || text->isAdvance());

    // A key of the wrong JSON type counts as absent.
    const auto quoted = read<GenericParam::IntParam>(R"({"type": "int", "default": "5", "tooltip": "12"})");
    ASSERT_TRUE(quoted);
    EXPECT_EQ(quoted->getValue(), -1);
    EXPECT_EQ(quoted->getTooltip(), ResId(ResId::none));
}

TEST(DescriptionReader, GivenKeysAreReadWithTheirTypes)
{
    const auto count = read<GenericParam::IntParam>(
        R"({"type": "int", "name": "größe", "legend": "Größe", "tooltip": 1234.9, "default": -7.9})");
    ASSERT_TRUE(count);
    EXPECT_EQ(count->getName(), "größe");
    EXPECT_EQ(count->getLegend(), L"Größe");
    EXPECT_EQ(count->getTooltip(), ResId(1234));
    EXPECT_EQ(count->getValue(), -7); // truncated toward zero

    const auto text = read<GenericParam::TextParam>(
        R"({"type": "text", "value": "abc", "hint": "Type here", "obfuscated": true, "advance": true})");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->getValue(), L"abc");
    EXPECT_EQ(text->getHint(), L"Type here");
    EXPECT_TRUE(text->isObfuscated() && text->isAdvance());

    EXPECT_EQ(DescriptionReader::getTooltip(entry(R"({"tooltip": -1})")), ResId(ResId::none));
    EXPECT_EQ(DescriptionReader::getTooltip(entry(R"({"tooltip": -0.5})")), ResId(ResId::none));
    EXPECT_EQ(DescriptionReader::getTooltip(entry(R"({"tooltip": 0})")), ResId(0));
}

TEST(DescriptionReader, RangeAppliesOnlyWhenMinAndMaxDiffer)
{
    const auto open = read<GenericParam::IntParam>(R"({"type": "int", "min": 0, "max": 0, "default": 4})");
    ASSERT_TRUE(open);
    EXPECT_FALSE(open->isRangeEnabled());

    const auto bounded = read<GenericParam::IntParam>(R"({"type": "int", "min": 0, "max": 10, "default": 4})");
    ASSERT_TRUE(bounded);
    EXPECT_TRUE(bounded->isRangeEnabled());
    EXPECT_EQ(bounded->getValue(), 4);

    // One bound given: the other is -1, which differs, so that is a range too.
    const auto oneSided = read<GenericParam::IntParam>(R"({"type": "int", "max": 5})");
    ASSERT_TRUE(oneSided);
    EXPECT_TRUE(oneSided->isRangeEnabled());
    oneSided->setValue(-3);
    EXPECT_EQ(oneSided->getValue(), -1);

    const auto ranged = read<GenericParam::DoubleParam>(R"({"type": "float", "min": 0, "max": 1, "default": 3})");
    ASSERT_TRUE(ranged);
    EXPECT_TRUE(ranged->isRangeEnabled());
    EXPECT_EQ(ranged->getValue(), 1.0); // a default outside the range starts clamped
}

TEST(DescriptionReader, ChoicesStartAtChoiceThenFirstValueThenNoChoice)
{
    const char* values = R"("values": {"One": 1, "Two": 2, "Three": 3})";
    const auto first = read<ChoiceParam>(std::string(R"({"type": "int", )") + values + "}");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->getValue(), 1u);
    ASSERT_EQ(first->getNumChoices(), 3u);
    EXPECT_EQ(first->getChoices()[2].label, L"Three");
    EXPECT_EQ(first->getChoices()[2].value, 3u);

    // A value, not a position.
    const auto chosen = read<ChoiceParam>(std::string(R"({"type": "int", "choice": "3", )") + values + "}");
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->getValue(), 3u);
    EXPECT_EQ(chosen->getSelectedLabel(), L"Three");

    const auto emptyChoice = read<ChoiceParam>(std::string(R"({"type": "int", "choice": "", )") + values + "}");
    ASSERT_TRUE(emptyChoice);
    EXPECT_EQ(emptyChoice->getValue(), 1u);
    // Not a number: 0, stored as given although no choice has it.
    const auto word = read<ChoiceParam>(std::string(R"({"type": "int", "choice": "two", )") + values + "}");
    ASSERT_TRUE(word);
    EXPECT_EQ(word->getValue(), 0u);

    const auto none = read<ChoiceParam>(R"({"type": "int", "values": {}})");
    ASSERT_TRUE(none);
    EXPECT_EQ(none->getValue(), ChoiceParam::noChoice);

    // Only numeric members are choices; their order is the order written.
    const auto mixed = read<ChoiceParam>(
        R"({"type": "int", "values": {"x": "y", "Low": 20, "on": true, "High": 10, "sub": {}}})");
    ASSERT_TRUE(mixed);
    ASSERT_EQ(mixed->getNumChoices(), 2u);
    EXPECT_EQ(mixed->getChoices()[0].label, L"Low");
    EXPECT_EQ(mixed->getChoices()[1].value, 10u);
    EXPECT_EQ(mixed->getValue(), 20u);
}
