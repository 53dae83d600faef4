#include "toolkit/support/TextFile.h"

#include "FileTestSupport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace FileTestSupport;

class TextFileTest : public ::testing::Test {
protected:
    fs::path file(const std::string& name) const { return m_scratch.path() / name; }
    static LightweightString<wchar_t> wide(const fs::path& path) { return fromUTF8(path.string()); }

    ScratchFolder m_scratch { "tessel-textfile" };
};

TEST_F(TextFileTest, LoadingSplitsEveryKindOfLineBreak)
{
    writeBytes(file("mixed.txt"), "\xEF\xBB\xBF" "one\r\ntwo\rthree\n\nfive\r\n");
    const TextFile text(wide(file("mixed.txt")), true);
    EXPECT_TRUE(text.loaded());
    EXPECT_EQ(text.lines(), (std::vector<std::string>{"one", "two", "three", "", "five"}));
    EXPECT_EQ(text.getLine(5), ""); // past the end

    // "\r\r\n" is a CR line break followed by a CR LF one: two lines.
    EXPECT_EQ(TextFile::splitLines("a\r\r\nb").size(), 3u);
    EXPECT_EQ(TextFile::splitLines("no break").size(), 1u);
    EXPECT_EQ(TextFile::splitLines("\n").size(), 1u);
    EXPECT_TRUE(TextFile::splitLines("").empty());
}

TEST_F(TextFileTest, MissingFilesAndLoadExistingFalseStartEmpty)
{
    writeBytes(file("old.txt"), "old contents\n");
    EXPECT_EQ(TextFile(wide(file("old.txt")), false).getNumLines(), 0u);
    const TextFile missing(wide(file("missing.txt")), true);
    EXPECT_FALSE(missing.loaded());
    EXPECT_EQ(missing.getNumLines(), 0u);
    EXPECT_FALSE(TextFile(wide(m_scratch.path()), true).loaded());

    // Too large to load: judged by its size, nothing is read.
    writeBytes(file("huge.txt"), "x");
    fs::resize_file(file("huge.txt"), TextFile::kMaxLoadBytes + 1);
    EXPECT_FALSE(TextFile(wide(file("huge.txt")), true).loaded());
}

TEST_F(TextFileTest, SavesEachLineWithTheChosenLineBreak)
{
    TextFile text;
    text.appendLine("first");
    text.appendLine(LightweightString<wchar_t>(L"zweite \u00e9\u20ac"));
    text.appendLine("");
    const std::string utf8Second = "zweite \xC3\xA9\xE2\x82\xAC";

    ASSERT_TRUE(text.save(wide(file("lf.txt")), TextFile::eEOLLF));
    EXPECT_EQ(readBytes(file("lf.txt")), "first\n" + utf8Second + "\n\n");
    ASSERT_TRUE(text.save(wide(file("crlf.txt")), TextFile::eEOLCRLF));
    EXPECT_EQ(readBytes(file("crlf.txt")), "first\r\n" + utf8Second + "\r\n\r\n");
    for (const int unknownCode : {1, 99}) { // codes other than CR LF give the native LF
        ASSERT_TRUE(text.save(wide(file("other.txt")), unknownCode));
        EXPECT_EQ(readBytes(file("other.txt")), readBytes(file("lf.txt"))) << unknownCode;
    }

    // What was saved reads back line for line.
    const TextFile again(wide(file("crlf.txt")), true);
    EXPECT_EQ(again.lines(), text.lines());
    EXPECT_EQ(again.getWLine(1), L"zweite \u00e9\u20ac");
}

TEST_F(TextFileTest, AppendingTextWithLineBreaksAddsSeveralLines)
{
    TextFile text;
    text.appendLine("a\r\nb\rc\n");
    text.appendLine("d\n\ne");
    ASSERT_EQ(text.getNumLines(), 6u);
    EXPECT_EQ(text.getLine(2), "c");
    EXPECT_EQ(text.getLine(4), "");
    EXPECT_EQ(text.getText(TextFile::eEOLLF), "a\nb\nc\nd\n\ne\n");
}

TEST_F(TextFileTest, SavingReplacesTheFileWholeOrNotAtAll)
{
    writeBytes(file("doc.txt"), "previous\n");
    TextFile text(wide(file("doc.txt")), true);
    text.appendLine("added");
    ASSERT_TRUE(text.save(TextFile::eEOLLF));
    EXPECT_EQ(readBytes(file("doc.txt")), "previous\nadded\n");

    // A destination that cannot be replaced: the save fails, the folder there is untouched and no
    // temporary file is left behind.
    fs::create_directory(file("folder.txt"));
    fs::path inside = file("folder.txt") / "keep";
    writeBytes(inside, "kept");
    const size_t before = m_scratch.entries();
    EXPECT_FALSE(text.save(wide(file("folder.txt")), TextFile::eEOLLF));
    EXPECT_EQ(m_scratch.entries(), before);
    EXPECT_EQ(readBytes(inside), "kept");

    EXPECT_FALSE(text.save(L"", TextFile::eEOLLF));
    // A folder in the way of the path is not a folder to create.
    EXPECT_FALSE(text.save(wide(file("doc.txt") / "below.txt"), TextFile::eEOLLF));
}

TEST_F(TextFileTest, SavingCreatesMissingFolders)
{
    TextFile text;
    text.appendLine("{}");
    const fs::path deep = file("Tutorials") / "nested" / "a.CvTutorial";
    ASSERT_TRUE(text.save(wide(deep), TextFile::eEOLLF));
    EXPECT_EQ(readBytes(deep), "{}\n");
}

} // namespace
