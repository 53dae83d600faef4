#include "toolkit/support/JSON.h"
#include "toolkit/support/TextFile.h"

#include "FileTestSupport.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <random>
#include <string>
#include <vector>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

Cv::Ptr<JSON::Element> parseText(std::string_view text)
{
    return JSON::parse(text);
}

std::string nested(int depth, bool objects)
{
    std::string text;
    for (int i = 0; i < depth; ++i)
        text += objects ? "{\"a\":" : "[";
    text += "1";
    for (int i = 0; i < depth; ++i)
        text += objects ? "}" : "]";
    return text;
}

template <typename T>
concept Addable = requires(JSON::Builder builder, T value) { builder.add("k", value); };

// ---- Reading

TEST(JsonElement, MembersAreClassifiedAndKeepTheirOrderWithinEachClass)
{
    const auto root = parseText(R"({"b":"x","n2":1,"c":{"k":true},"flag":false,"d":[1,"s"],"a":"y",)"
                                R"("n1":2.5,"z":null,"on":true})");
    ASSERT_TRUE(root);
    EXPECT_TRUE(root->isObject());
    // The names of one class of members, in document order.
    const auto names = [&root](size_t count, LightweightString<char> (JSON::Element::*nameAt)(size_t) const) {
        std::vector<std::string> all;
        for (size_t i = 0; i < count; ++i)
            all.push_back(((*root).*nameAt)(i).str());
        return all;
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(names(root->getNumStringAttribs(), &JSON::Element::getStringAttribName), (Names{"b", "a"}));
    EXPECT_EQ(names(root->getNumNumericAttribs(), &JSON::Element::getNumericAttribName), (Names{"n2", "n1"}));
    EXPECT_EQ(names(root->getNumChildren(), &JSON::Element::getChildName), (Names{"c", "d"}));
    EXPECT_EQ(names(root->getNumBoolAttribs(), &JSON::Element::getBoolAttribName), (Names{"flag", "on"}));
    EXPECT_EQ(names(root->getNumNullAttribs(), &JSON::Element::getNullAttribName), Names{"z"});
    EXPECT_EQ(root->getString(1), "y");
    EXPECT_EQ(root->getNumber(size_t{1}), 2.5);
    EXPECT_EQ(root->getBool(1), std::optional<bool>(true));
    EXPECT_TRUE(root->getChild(0)->isObject() && root->getChild(1)->isArray());
}

TEST(JsonElement, AbsentAndWronglyTypedMembersReadAsAbsent)
{
    const auto root = parseText(R"({"text":"5","zero":0,"no":false,"child":{},"nothing":null})");
    ASSERT_TRUE(root);

    // Present zero and false are distinguishable from absence.
    EXPECT_EQ(root->getNumber("zero"), std::optional<double>(0.0));
    EXPECT_EQ(root->getNumber("missing"), std::nullopt);
    EXPECT_EQ(root->getDouble("missing", -1.0), -1.0);
    EXPECT_FALSE(root->getBool("no", true));
    EXPECT_TRUE(root->getBool("missing", true));

    // Wrong JSON types are absent for the asked type.
    EXPECT_EQ(root->getNumber("text"), std::nullopt);
    EXPECT_FALSE(root->hasString("zero"));
    EXPECT_EQ(root->getString("zero"), "");
    EXPECT_EQ(root->getWString("child"), L"");
    EXPECT_TRUE(root->getBool("zero", true));
    EXPECT_FALSE(root->getChild("text"));
    EXPECT_FALSE(root->getChild("nothing"));
    EXPECT_TRUE(root->getChild("child"));

    // Out-of-range indices.
    EXPECT_FALSE(root->getChild(1));
    EXPECT_EQ(root->getString(7), "");
    EXPECT_EQ(root->getStringAttribName(7), "");
    EXPECT_EQ(root->getNumber(size_t{3}), std::nullopt);
    EXPECT_EQ(root->getBool(size_t{9}), std::nullopt);
}

TEST(JsonElement, DuplicateKeysAreKeptAndLookupAnswersTheFirst)
{
    const auto root = parseText(R"({"k":"first","k":"second","n":1,"n":2})");
    ASSERT_TRUE(root);
    EXPECT_EQ(root->getNumStringAttribs(), 2u);
    EXPECT_EQ(root->getString("k"), "first");
    EXPECT_EQ(root->getString(1), "second");
    EXPECT_EQ(root->getInt("n", 0), 1);
}

TEST(JsonElement, ArrayElementsAreUnnamedMembers)
{
    const auto root = parseText(R"([["shift","ctrl"],{"x":1},3,"s",[]])");
    ASSERT_TRUE(root);
    EXPECT_TRUE(root->isArray());
    ASSERT_EQ(root->getNumChildren(), 3u);
    EXPECT_EQ(root->getChildName(0), "");
    const auto modifiers = root->getChild(0);
    ASSERT_EQ(modifiers->getNumStringAttribs(), 2u);
    EXPECT_EQ(modifiers->getString(1), "ctrl");
    EXPECT_EQ(root->getChild(1)->getInt("x", 0), 1);
    EXPECT_EQ(root->getChild(2)->getNumChildren(), 0u);
    EXPECT_EQ(root->getNumber(size_t{0}), 3.0);
    EXPECT_EQ(root->getString(size_t{0}), "s");
}

TEST(JsonElement, ALoneScalarIsAScalarElementWithOneUnnamedMember)
{
    const auto text = parseText(R"( "abc" )");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->kind(), JSON::Element::Kind::Scalar);
    EXPECT_EQ(text->getString(size_t{0}), "abc");
    EXPECT_EQ(text->getStringAttribName(0), "");

    const auto number = parseText("-12.5e1");
    ASSERT_TRUE(number);
    EXPECT_EQ(number->getNumber(size_t{0}), -125.0);

    const auto null = parseText("null");
    ASSERT_TRUE(null);
    EXPECT_EQ(null->getNumNullAttribs(), 1u);
    EXPECT_EQ(parseText("false")->getBool(size_t{0}), std::optional<bool>(false));
}

TEST(JsonElement, ChildrenOutliveTheirRoot)
{
    Cv::Ptr<JSON::Element> child;
    {
        auto root = parseText(R"({"list":[{"name":"kept"}]})");
        ASSERT_TRUE(root);
        child = root->getChild("list")->getChild(0);
    }
    ASSERT_TRUE(child);
    EXPECT_EQ(child->getString("name"), "kept");
}

TEST(JsonElement, IntegersAreTruncatedTowardZeroAndClamped)
{
    const auto root = parseText(R"({"a":2.9,"b":-2.9,"big":1e20,"small":-1e20,"max":2147483647})");
    ASSERT_TRUE(root);
    EXPECT_EQ(root->getInt("a", 0), 2);
    EXPECT_EQ(root->getInt("b", 0), -2);
    EXPECT_EQ(root->getInt("big", 0), std::numeric_limits<int>::max());
    EXPECT_EQ(root->getInt("small", 0), std::numeric_limits<int>::min());
    EXPECT_EQ(root->getInt("max", 0), 2147483647);
}

TEST(JsonParse, NumbersKeepFullDoublePrecision)
{
    std::mt19937_64 random(7);
    for (int i = 0; i < 2000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (!std::isfinite(value))
            continue;
        char text[64];
        std::snprintf(text, sizeof text, "[%.17g]", value);
        const auto root = parseText(text);
        ASSERT_TRUE(root) << text;
        ASSERT_EQ(root->getNumber(size_t{0}), value) << text;
    }
    // At the ends of the range: the largest and the smallest doubles are kept, what overflows is refused and
    // what underflows is a zero of its sign.
    EXPECT_EQ(parseText("[1.7976931348623157e308]")->getNumber(size_t{0}), std::numeric_limits<double>::max());
    EXPECT_EQ(parseText("[4.9406564584124654e-324]")->getNumber(size_t{0}),
        std::numeric_limits<double>::denorm_min());
    EXPECT_FALSE(parseText("[1.8e308]"));
    EXPECT_FALSE(parseText("[-1" + std::string(400, '0') + "]"));
    EXPECT_EQ(parseText("[1e-400]")->getNumber(size_t{0}), 0.0);
    EXPECT_TRUE(std::signbit(*parseText("[-0.00001e-99999999999999999999]")->getNumber(size_t{0})));
    EXPECT_EQ(parseText("[0." + std::string(400, '0') + "1e400]")->getNumber(size_t{0}), 0.1);
    // Beyond 2^53 only the nearest double is kept, but the result is still the correctly rounded one.
    EXPECT_EQ(parseText("[9007199254740993]")->getNumber(size_t{0}), 9007199254740992.0);
    EXPECT_EQ(parseText("[18446744073709551615]")->getNumber(size_t{0}), 18446744073709551616.0);
}

TEST(JsonParse, StringsAreUnescapedToUtf8AndWideTextParses)
{
    const auto root = parseText(R"({"s":"a\"b\\c\/d\n\u00e9\u20ac\ud83d\ude00","nul":"x\u0000y","k\u00e9y":1})");
    ASSERT_TRUE(root);
    EXPECT_EQ(root->getString("s"), "a\"b\\c/d\n\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(root->getWString("s"), L"a\"b\\c/d\n\u00e9\u20ac\U0001F600");
    EXPECT_EQ(root->getString("nul").size(), 3u);
    EXPECT_EQ(root->getNumber("k\xC3\xA9y"), 1.0);

    const auto wide = JSON::parse(LightweightString<wchar_t>(L"{\"legend\":\"Größe €\",\"n\":[1,2]}"));
    ASSERT_TRUE(wide);
    EXPECT_EQ(wide->getWString("legend"), L"Größe €");
    EXPECT_EQ(wide->getChild("n")->getNumNumericAttribs(), 2u);
}

TEST(JsonParse, RejectsWhatIsNotStrictJson)
{
    const char* bad[] = {
        "", "   ", "{", "]", "[1,]", R"({"a":1,})", "// note\n1", "/* c */ {}", "[NaN]", "[Infinity]", "[-Infinity]",
        "[1] x", "[1][2]", "'a'", "[01]", "{a:1}", R"({"a" 1})", "[.5]", "[1.]", "[+1]", "[0x10]", "[\"\t\"]",
        "[\"\xff\"]", "[\"\xc0\xaf\"]", "[\"\xed\xa0\x80\"]", R"(["\udc00"])", R"(["\ud800"])", R"(["\x41"])",
        "[1e400]", "\xEF\xBB\xBF{}", "[true false]", "tru", "nul",
    };
    for (const char* text : bad)
        EXPECT_FALSE(parseText(text)) << text;
    // A NUL byte must not end the input early.
    EXPECT_FALSE(parseText(std::string_view("[1]\0[", 5)));
    EXPECT_FALSE(parseText(std::string_view("[\"a\0\"]", 6)));
}

TEST(JsonParse, NestingIsLimited)
{
    EXPECT_TRUE(parseText(nested(JSON::kMaxDepth, false)));
    EXPECT_TRUE(parseText(nested(JSON::kMaxDepth, true)));
    EXPECT_FALSE(parseText(nested(JSON::kMaxDepth + 1, false)));
    EXPECT_FALSE(parseText(nested(JSON::kMaxDepth + 1, true)));
    // Far past the limit, unbalanced: refused without using the stack.
    EXPECT_FALSE(parseText(std::string(1'000'000, '[')));

    Cv::Ptr<JSON::Element> element = parseText(nested(JSON::kMaxDepth, false));
    int depth = 1;
    for (; element->getNumChildren() == 1; ++depth)
        element = element->getChild(0);
    EXPECT_EQ(depth, JSON::kMaxDepth);
    EXPECT_EQ(element->getNumber(size_t{0}), 1.0);
}

TEST(JsonParseFile, ReadsFilesAndAnswersNullForWhatItCannotRead)
{
    const FileTestSupport::ScratchFolder folder("tessel-json");
    const fs::path file = folder.file("doc.json");
    FileTestSupport::writeBytes(file, "\xEF\xBB\xBF{\"name\":\"x\"}\n");
    const auto root = JSON::parseFile(fromUTF8(file.string()));
    ASSERT_TRUE(root);
    EXPECT_EQ(root->getString("name"), "x");

    EXPECT_FALSE(JSON::parseFile(L""));
    EXPECT_FALSE(JSON::parseFile(fromUTF8((file.string() + ".missing"))));
    EXPECT_FALSE(JSON::parseFile(fromUTF8(fs::temp_directory_path().string())));

    // A named pipe with no writer would block a plain open for ever.
    const fs::path pipe = folder.file("pipe.json");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(JSON::parseFile(fromUTF8(pipe.string())));

    // Too large: refused from its size alone (the file is sparse, nothing is read).
    fs::resize_file(file, JSON::kMaxFileBytes + 1);
    EXPECT_FALSE(JSON::parseFile(fromUTF8(file.string())));
}

// ---- Writing

TEST(JsonBuilder, PrintsTheDocumentedLayoutByteForByte)
{
    JSON::Builder builder;
    builder.add("name", "Intro");
    builder.startArray("components");
    builder.endArray();
    builder.startArray("phases");
    builder.startChild();
    builder.add("pause", 1.5f);
    builder.startChild("pointer");
    builder.add("x", 10.0f);
    builder.endChild();
    builder.endChild();
    builder.startChild(nullptr);
    builder.endChild();
    builder.add("ignored key", true);
    builder.endArray();
    builder.startChild("empty");
    builder.endChild();

    EXPECT_EQ(builder.toString(3, 0),
        "{\n"
        "   \"name\": \"Intro\",\n"
        "   \"components\": [],\n"
        "   \"phases\": [\n"
        "      {\n"
        "         \"pause\": 1.5,\n"
        "         \"pointer\": {\n"
        "            \"x\": 10\n"
        "         }\n"
        "      },\n"
        "      {},\n"
        "      true\n"
        "   ],\n"
        "   \"empty\": {}\n"
        "}\n");
    EXPECT_EQ(builder.toString(0, JSON::Builder::eCompact),
        R"({"name":"Intro","components":[],"phases":[{"pause":1.5,"pointer":{"x":10}},{},true],"empty":{}})"
        "\n");
    EXPECT_EQ(builder.toString(0, 0).substr(0, 17), "{\n\"name\": \"Intro\"");
    EXPECT_EQ(JSON::Builder().toString(), "{}\n");
    EXPECT_EQ(JSON::Builder(JSON::Builder::Root::Array).toString(), "[]\n");
}

TEST(JsonBuilder, PrintToAppendsTheSameLinesToATextFile)
{
    JSON::Builder builder;
    builder.add("a", 1);
    builder.startArray("b");
    builder.add({}, L"wide \u00e9");
    builder.endArray();
    TextFile file;
    file.appendLine("before");
    builder.printTo(file, 3, 0);
    EXPECT_EQ(file.getText(TextFile::eEOLLF), "before\n" + builder.toString(3, 0));
}

TEST(JsonBuilder, EscapesTextAndWritesUtf8ThatParsesBack)
{
    const std::string awkward = std::string("q\"b\\s/\b\f\n\r\t\x01\x1f\x7f \xC3\xA9\xF0\x9F\x98\x80")
        + std::string(1, '\0') + "end";
    JSON::Builder builder;
    builder.add(LightweightString<char>("k\"ey\n"), LightweightString<char>(awkward));
    builder.add("bad", "a\xff" "b\xC3");
    const std::string text = builder.toString(2, 0);
    EXPECT_NE(text.find(R"("q\"b\\s/\b\f\n\r\t\u0001\u001f)"), std::string::npos) << text;

    const auto root = JSON::parse(text);
    ASSERT_TRUE(root) << text;
    EXPECT_EQ(root->getString("k\"ey\n"), LightweightString<char>(awkward));
    EXPECT_EQ(root->getString("bad"), "a\xEF\xBF\xBD" "b\xEF\xBF\xBD");
}

TEST(JsonBuilder, FloatsUseTheShortestTextThatReadsBack)
{
    auto written = [](float value) {
        JSON::Builder builder;
        builder.add("v", value);
        return builder.toString(0, JSON::Builder::eCompact);
    };
    EXPECT_EQ(written(0.1f), "{\"v\":0.1}\n");
    EXPECT_EQ(written(2.0f), "{\"v\":2}\n");
    EXPECT_EQ(written(-1234.0f), "{\"v\":-1234}\n");
    EXPECT_EQ(written(std::nanf("")), "{\"v\":null}\n");
    EXPECT_EQ(written(std::numeric_limits<float>::infinity()), "{\"v\":null}\n");

    std::mt19937 random(11);
    for (int i = 0; i < 5000; ++i) {
        const float value = std::bit_cast<float>(static_cast<uint32_t>(random()));
        if (!std::isfinite(value))
            continue;
        const auto root = JSON::parse(written(value));
        ASSERT_TRUE(root);
        ASSERT_EQ(static_cast<float>(*root->getNumber("v")), value) << written(value);
    }
    JSON::Builder builder;
    builder.add("d", 0.1);
    builder.add("i", -7);
    builder.add("u", 18446744073709551615ull);
    EXPECT_EQ(builder.toString(0, JSON::Builder::eCompact), "{\"d\":0.1,\"i\":-7,\"u\":18446744073709551615}\n");
}

TEST(JsonBuilder, OptionalTextUnmatchedClosesAndUnclosedContainers)
{
    JSON::Builder builder;
    builder.add("kept", "");
    builder.add("dropped", "", true);
    builder.add("dropped wide", LightweightString<wchar_t>(), true);
    builder.add("written", L"w", true);
    builder.endArray(); // nothing open: ignored
    builder.startArray("list");
    builder.endChild(); // does not match the array: ignored
    builder.add("", 1);
    builder.startChild();
    EXPECT_EQ(builder.depth(), 2);
    EXPECT_EQ(builder.toString(0, JSON::Builder::eCompact), R"({"kept":"","written":"w","list":[1,{}]})" "\n");
}

TEST(JsonBuilder, TextNeverTurnsIntoABool)
{
    JSON::Builder builder;
    const char* text = "yes";
    builder.add("a", text);
    builder.add("b", std::string("str"));
    builder.add("c", 'x' == 'x');
    EXPECT_EQ(builder.toString(0, JSON::Builder::eCompact), R"({"a":"yes","b":"str","c":true})" "\n");
    // Pointers that are not text must not compile into a bool.
    static_assert(!Addable<const int*>);
    static_assert(!Addable<void*>);
    static_assert(Addable<const char*> && Addable<bool> && Addable<unsigned short> && Addable<float>);
}

TEST(JsonBuilder, AnEmptyKeyInAnObjectReadsBackAsAnUnnamedChild)
{
    JSON::Builder builder;
    builder.startChild("");
    builder.startArray("params");
    builder.endArray();
    builder.endChild();
    const auto root = JSON::parse(builder.toString());
    ASSERT_TRUE(root);
    ASSERT_EQ(root->getNumChildren(), 1u);
    EXPECT_EQ(root->getChildName(0), "");
    EXPECT_TRUE(root->getChild(0)->getChild("params"));
}

} // namespace
