// The public JSON parsing suite: files named y_ must parse, n_ must be refused, and i_ (where the standard
// leaves the choice to the reader) may go either way but must not crash. Run under the sanitizers as well.
#include "toolkit/support/JSON.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const fs::path kSuite = fs::path(TESSEL_TEST_DATA_DIR) / "json-test-suite" / "test_parsing";

std::vector<fs::path> suiteFiles(char verdict)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(kSuite))
        if (entry.path().filename().string().starts_with(std::string(1, verdict) + "_"))
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string readBytes(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool isValidUtf8(const LightweightString<char>& text)
{
    return toUTF8(fromUTF8(text.view()).view()) == text;
}

// Reads everything a caller could read (so that a bad tree shows up under the sanitizers) and checks what
// every tree promises: names and strings are valid UTF-8 and numbers are finite.
void walk(const Cv::Ptr<JSON::Element>& element, const fs::path& file)
{
    for (size_t i = 0; i < element->getNumStringAttribs(); ++i) {
        EXPECT_TRUE(isValidUtf8(element->getString(i))) << file.filename();
        EXPECT_TRUE(isValidUtf8(element->getStringAttribName(i))) << file.filename();
    }
    for (size_t i = 0; i < element->getNumNumericAttribs(); ++i)
        EXPECT_TRUE(std::isfinite(*element->getNumber(i))) << file.filename();
    for (size_t i = 0; i < element->getNumChildren(); ++i) {
        EXPECT_TRUE(isValidUtf8(element->getChildName(i))) << file.filename();
        walk(element->getChild(i), file);
    }
}

TEST(JsonSuite, AcceptsEveryValidDocument)
{
    const auto files = suiteFiles('y');
    ASSERT_GT(files.size(), 90u) << "suite not found in " << kSuite;
    for (const fs::path& file : files) {
        const auto root = JSON::parse(readBytes(file));
        EXPECT_TRUE(root) << file.filename();
        if (root)
            walk(root, file);
        EXPECT_TRUE(JSON::parseFile(fromUTF8(file.string()))) << file.filename();
    }
}

TEST(JsonSuite, RefusesEveryInvalidDocument)
{
    const auto files = suiteFiles('n');
    ASSERT_GT(files.size(), 180u) << "suite not found in " << kSuite;
    for (const fs::path& file : files) {
        EXPECT_FALSE(JSON::parse(readBytes(file))) << file.filename();
        EXPECT_FALSE(JSON::parseFile(fromUTF8(file.string()))) << file.filename();
    }
}

TEST(JsonSuite, SurvivesDocumentsLeftToTheReader)
{
    const auto files = suiteFiles('i');
    ASSERT_GT(files.size(), 30u) << "suite not found in " << kSuite;
    size_t accepted = 0;
    for (const fs::path& file : files) {
        const auto root = JSON::parse(readBytes(file));
        if (root) {
            walk(root, file);
            ++accepted;
        }
    }
    RecordProperty("accepted", static_cast<int>(accepted));
}

} // namespace
