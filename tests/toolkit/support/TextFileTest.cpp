#include "toolkit/support/TextFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class TextFileTest : public ::testing::Test {
protected:
    TextFileTest()
        : m_folder(fs::temp_directory_path()
              / ("tessel-textfile-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name())
                  + "-" + std::to_string(::getpid())))
    {
        fs::remove_all(m_folder);
        fs::create_directories(m_folder);
    }
    ~TextFileTest() override
    {
        std::error_code error;
        fs::remove_all(m_folder, error);
    }

    fs::path file(const std::string& name) const { return m_folder / name; }
    static LightweightString<wchar_t> wide(const fs::path& path) { return fromUTF8(path.string()); }
    static void write(const fs::path& path, std::string_view bytes)
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    static std::string read(const fs::path& path)
    {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    size_t entriesInFolder() const
    {
        return static_cast<size_t>(std::distance(fs::directory_iterator(m_folder), fs::directory_iterator()));
    }

    fs::path m_folder;
};

TEST_F(TextFileTest, LoadingSplitsEveryKindOfLineBreak)
{
    write(file("mixed.txt"), "\xEF\xBB\xBF" "one\r\ntwo\rthree\n\nfive\r\n");
    const TextFile text(wide(file("mixed.txt")), true);
    EXPECT_TRUE(text.loaded());
    ASSERT_EQ(text.getNumLines(), 5u);
    EXPECT_EQ(text.getLine(0), "one");
    EXPECT_EQ(text.getLine(1), "two");
    EXPECT_EQ(text.getLine(2), "three");
    EXPECT_EQ(text.getLine(3), "");
    EXPECT_EQ(text.getLine(4), "five");
    EXPECT_EQ(text.getLine(5), "");

    // "\r\r\n" is a CR line break followed by a CR LF one: two lines.
    EXPECT_EQ(TextFile::splitLines("a\r\r\nb").size(), 3u);
    EXPECT_EQ(TextFile::splitLines("no break").size(), 1u);
    EXPECT_EQ(TextFile::splitLines("\n").size(), 1u);
    EXPECT_TRUE(TextFile::splitLines("").empty());
}

TEST_F(TextFileTest, MissingFilesAndLoadExistingFalseStartEmpty)
{
    write(file("old.txt"), "old contents\n");
    EXPECT_EQ(TextFile(wide(file("old.txt")), false).getNumLines(), 0u);
    const TextFile missing(wide(file("missing.txt")), true);
    EXPECT_FALSE(missing.loaded());
    EXPECT_EQ(missing.getNumLines(), 0u);
    EXPECT_FALSE(TextFile(wide(m_folder), true).loaded());

    // Too large to load: judged by its size, nothing is read.
    write(file("huge.txt"), "x");
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
    EXPECT_EQ(read(file("lf.txt")), "first\n" + utf8Second + "\n\n");
    ASSERT_TRUE(text.save(wide(file("one.txt")), 1));
    EXPECT_EQ(read(file("one.txt")), read(file("lf.txt")));
    ASSERT_TRUE(text.save(wide(file("crlf.txt")), TextFile::eEOLCRLF));
    EXPECT_EQ(read(file("crlf.txt")), "first\r\n" + utf8Second + "\r\n\r\n");
    ASSERT_TRUE(text.save(wide(file("native.txt")), 99));
    EXPECT_EQ(read(file("native.txt")), read(file("lf.txt")));

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
    write(file("doc.txt"), "previous\n");
    TextFile text(wide(file("doc.txt")), true);
    text.appendLine("added");
    ASSERT_TRUE(text.save(TextFile::eEOLLF));
    EXPECT_EQ(read(file("doc.txt")), "previous\nadded\n");

    // A destination that cannot be replaced: the save fails, the folder there is untouched and no
    // temporary file is left behind.
    fs::create_directory(file("folder.txt"));
    fs::path inside = file("folder.txt") / "keep";
    write(inside, "kept");
    const size_t before = entriesInFolder();
    EXPECT_FALSE(text.save(wide(file("folder.txt")), TextFile::eEOLLF));
    EXPECT_EQ(entriesInFolder(), before);
    EXPECT_EQ(read(inside), "kept");

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
    EXPECT_EQ(read(deep), "{}\n");
}

} // namespace
