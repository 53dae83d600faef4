#include "toolkit/support/Resources.h"
#include "toolkit/support/UIString.h"

#include "FileTestSupport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <tuple>

namespace fs = std::filesystem;
using namespace FileTestSupport;

namespace {

const std::string shippedTable = std::string(TESSEL_SOURCE_DIR) + "/toolkit/data/strings.en.txt";

// Points the process's table at a file for one test, and back to the search afterwards.
class TableFile {
public:
    explicit TableFile(std::string_view contents) { writeBytes(path(), contents); }
    ~TableFile() { StringTable::setGlobalFile({}); }
    std::string folder() const { return m_folder.path().string(); }
    std::string path() const { return m_folder.file("strings.en.txt"); }

private:
    ScratchFolder m_folder { "tessel-strings" };
};

} // namespace

TEST(StringTable, ParsesEscapesAndReportsBadLines)
{
    StringTable table;
    table.parse("# comment\n"
                "\n"
                "100\tOne\\nTwo\\tTabbed \\\\ slash\n"
                "101\t\n"
                "102\tcaf\xC3\xA9 $FILE$\r\n"
                "abc\tnot an id\n"
                "103 no tab\n"
                "104\tbad \\q escape\n"
                "999999\treserved\n"
                "-5\tnegative\n"
                "100\tOne again");
    ASSERT_NE(table.find(100), nullptr);
    EXPECT_EQ(*table.find(100), L"One again");
    ASSERT_NE(table.find(101), nullptr);
    EXPECT_TRUE(table.find(101)->empty());
    EXPECT_EQ(*table.find(102), L"caf\u00e9 $FILE$");
    EXPECT_EQ(table.find(104), nullptr);
    EXPECT_EQ(table.find(ResId::none), nullptr);
    EXPECT_EQ(table.malformedLines(), (std::vector<size_t>{6, 7, 8, 9, 10}));
    EXPECT_EQ(table.duplicateIds(), (std::vector<int>{100}));

    table.parse("100\tOne\\nTwo\\tTabbed \\\\ slash\n");
    EXPECT_EQ(*table.find(100), L"One\nTwo\tTabbed \\ slash");
}

TEST(StringTable, LookupOfNoneUnknownAndKnownIds)
{
    const TableFile file("500\tSave to file\n501\t$TIME$ remaining\n");
    StringTable::setGlobalFile(file.path());
    EXPECT_EQ(resourceStrW(500), L"Save to file");
    EXPECT_EQ(resourceStrW(ResId(501)), L"$TIME$ remaining"); // placeholders are the caller's to fill
    EXPECT_EQ(resourceStr(500), "Save to file");
    EXPECT_TRUE(resourceStrW(ResId::none).empty());
    EXPECT_EQ(resourceStrW(12345), L"[#12345]");
    EXPECT_EQ(resourceStrW(-7), L"[#-7]");
    // The missing text is shown as it is, whatever the format.
    EXPECT_EQ(resourceStrW(12345, resFmtLowerCase), StringTable::missingText(12345));
}

TEST(StringTable, UnreadableTableAnswersTheMissingTextForEveryId)
{
    StringTable::setGlobalFile("/nonexistent/strings.en.txt");
    EXPECT_EQ(resourceStrW(10000), L"[#10000]");
    EXPECT_TRUE(resourceStrW(ResId::none).empty());
    StringTable::setGlobalFile({});
}

TEST(StringTable, FormatsAdaptTheText)
{
    const wchar_t* text = L"\u00e9dit the LUT list";
    const std::tuple<const wchar_t*, ResStrFmt, const wchar_t*> rows[] = {{text, resFmtAsIs, text},
        {text, resFmtUpperCase, L"\u00c9DIT THE LUT LIST"}, {text, resFmtLowerCase, L"\u00e9dit the lut list"},
        {text, resFmtTitleCase, L"\u00c9dit The LUT List"}, {L"Add", resFmtEllipsis, L"Add..."},
        {L"Add...", resFmtEllipsis, L"Add..."}, {L"Add\u2026", resFmtEllipsis, L"Add\u2026"},
        {L"", resFmtEllipsis, L"..."}};
    for (const auto& [input, format, expected] : rows)
        EXPECT_EQ(applyResStrFmt(input, format), expected) << static_cast<int>(format);
    // A format this build does not know leaves the text alone. (7 is the largest value the enumeration can hold;
    // a larger one would be undefined behaviour before the call.)
    EXPECT_EQ(applyResStrFmt(text, static_cast<ResStrFmt>(7)), text);
}

TEST(StringTable, UIStringShowsTheResourceOrTheLiteral)
{
    const TableFile file("10750\tAdd\n");
    StringTable::setGlobalFile(file.path());
    EXPECT_EQ(UIString(ResId(10750), resFmtEllipsis).getString(), L"Add...");
    EXPECT_EQ(UIString(ResId(10750)).getString(), L"Add");
    EXPECT_EQ(UIString(L"literal text").getString(), L"literal text");
    EXPECT_TRUE(UIString().getString().empty());
    EXPECT_EQ(UIString(ResId(77777)).getString(), L"[#77777]");
}

TEST(StringTable, DataFolderFromTheEnvironmentComesFirst)
{
    const TableFile file("1\tfrom the environment\n");
    ScopedEnv dataDir("TESSEL_DATA_DIR", file.folder().c_str());
    EXPECT_EQ(fs::path(StringTable::findDataFile()), fs::path(file.path()));
    StringTable::setGlobalFile({});
    EXPECT_EQ(resourceStrW(1), L"from the environment");

    // A folder without the table is passed over.
    for (const char* elsewhere : {"/nonexistent", static_cast<const char*>(nullptr)}) {
        ScopedEnv other("TESSEL_DATA_DIR", elsewhere);
        EXPECT_TRUE(fs::equivalent(StringTable::findDataFile(), shippedTable));
    }
}

TEST(ShippedStringTable, IsWellFormed)
{
    StringTable table;
    ASSERT_TRUE(table.load(shippedTable));
    EXPECT_TRUE(table.malformedLines().empty());
    EXPECT_TRUE(table.duplicateIds().empty());
    EXPECT_GT(table.size(), 50u);
}

TEST(ShippedStringTable, PlaceholdersAreWhereCallersFillThem)
{
    StringTable table;
    ASSERT_TRUE(table.load(shippedTable));
    // The texts whose callers replace a placeholder, by placeholder.
    const std::map<std::wstring, std::set<int>> filledBy = {
        {L"$TIME$", {12196, 12197}},
        {L"$FILE$", {10819}},
        {L"$KEY$", {13604, 13605, 13607, 13613}},
        {L"$LOCATION$", {13348}},
    };
    std::set<int> withPlaceholder;
    for (const auto& [placeholder, ids] : filledBy)
        for (const int id : ids) {
            const auto* text = table.find(id);
            ASSERT_NE(text, nullptr) << id;
            EXPECT_TRUE(text->contains(placeholder)) << id;
            withPlaceholder.insert(id);
        }

    // No other text may hold a placeholder: nobody would replace it and the user would see it.
    const std::wregex anyPlaceholder(L"\\$[A-Z]+\\$");
    std::ifstream in(shippedTable);
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        const int id = std::stoi(line);
        const std::wstring text = table.find(id)->str();
        if (!withPlaceholder.count(id)) {
            EXPECT_FALSE(std::regex_search(text, anyPlaceholder)) << id;
        }
    }
}
