// The catalogue over a prepared folder: what it lists, how categories follow the tutorials, the files that
// create, save, delete and clone touch, and what listeners hear.
#include "tutorials/TutorialsManager.h"

#include "TutorialTestSupport.h"

#include "toolkit/support/FileUtils.h"
#include "toolkit/support/OS.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

using tutorial_test::ScratchFolder;
using tutorial_test::writeBytes;
using Heard = std::vector<std::pair<int, Cv::Ptr<Tutorial>>>;
using Names = std::vector<std::wstring>;

namespace {

// A catalogue of its own over the current data folder, beside the process-wide one.
class TestCatalogue : public TutorialsManager {
public:
    TestCatalogue() : TutorialsManager(SeparateCatalogue {}) {}
};

class TutorialCatalogue : public ::testing::Test {
protected:
    TutorialCatalogue()
    {
        OS()->fileManager().setBaseDataDirectory(m_scratch.wide());
        std::filesystem::create_directories(folder());
    }
    ~TutorialCatalogue() override { OS()->fileManager().setBaseDataDirectory({}); }

    std::filesystem::path folder() const { return m_scratch.path() / "Tutorials"; }
    void addFile(const std::string& file, const std::string& name, const std::string& category)
    {
        writeBytes(folder() / file,
            R"({"name": ")" + name + R"(", "category": ")" + category + R"(", "phases": [{"text": "hi"}]})");
    }
    // Records each notification with its code.
    void listenTo(TutorialsManager& catalogue)
    {
        for (const int code : { 10, 11, 12 })
            m_guards.push_back(catalogue.registerNotification(Cv::makeListener<NotifyMsg>([this, code](const NotifyMsg& m) {
                m_heard.emplace_back(code, m.getObjectAs<Tutorial>());
            }), code));
    }
    static Names names(const std::vector<Cv::Ptr<Tutorial>>& tutorials)
    {
        Names out;
        for (const auto& tutorial : tutorials)
            out.emplace_back(tutorial->getName().view());
        return out;
    }

    ScratchFolder m_scratch;
    std::vector<Cv::Ptr<Cv::Guard>> m_guards;
    Heard m_heard;
};

TEST_F(TutorialCatalogue, ListsNamedAndCategorisedFilesInNameOrder)
{
    std::filesystem::remove(folder());
    EXPECT_TRUE(TestCatalogue().tutorials().empty());
    std::filesystem::create_directories(folder());

    addFile("b.CvTutorial", "Second", "Editing");
    addFile("a.CvTutorial", "First", "Editing");
    addFile("c.CvTutorial", "Third", "Audio");
    addFile("no-category.CvTutorial", "Lost", "");
    addFile("no-name.CvTutorial", "", "Nameless");
    addFile("other.json", "Wrong extension", "Editing");
    const TestCatalogue catalogue;
    EXPECT_EQ(names(catalogue.tutorials()), (Names { L"First", L"Second", L"Third" }));
    EXPECT_EQ(catalogue.getCategories(), (std::set<LightweightString<wchar_t>> { L"Audio", L"Editing" }));
    EXPECT_EQ(names(catalogue.getCategoryContents(L"Editing")), (Names { L"First", L"Second" }));
    EXPECT_TRUE(catalogue.getCategoryContents(L"editing").empty());
    EXPECT_TRUE(catalogue.getCategoryContents(L"").empty());

    // Found by the bare file name with its extension, nothing else.
    const Cv::Ptr<Tutorial> found = catalogue.getTutorial(L"a.CvTutorial");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->getFile(), joinPaths(TutorialsManager::getLocation(), L"a.CvTutorial"));
    EXPECT_FALSE(catalogue.getTutorial(found->getFile()));
    EXPECT_FALSE(catalogue.getTutorial(L"a"));
}

// Files that cannot be tutorials are passed over, and the good ones around them still load.
TEST_F(TutorialCatalogue, BadFilesAreLeftOutWithoutHarmToOthers)
{
    addFile("a-good.CvTutorial", "Good", "Basics");
    writeBytes(folder() / "b-empty.CvTutorial", "");
    writeBytes(folder() / "c-broken.CvTutorial", R"({"name": "Broken", "category": "Basics", "phases": [)");
    writeBytes(folder() / "d-binary.CvTutorial", std::string("\xff\xfe\0\x01{}", 6));
    // What an interrupted save leaves behind: a temporary file beside the real one.
    writeBytes(folder() / "a-good.CvTutorial.tmp-Xa81Qz", R"({"name": "Half", "category": "Bas)");
    std::filesystem::create_directories(folder() / "e-folder.CvTutorial");
    ASSERT_EQ(::mkfifo((folder() / "f-pipe.CvTutorial").c_str(), 0644), 0); // would block a reader
    addFile("h-good.CvTutorial", "Also good", "Basics");

    const TestCatalogue catalogue;
    EXPECT_EQ(names(catalogue.tutorials()), (Names { L"Good", L"Also good" }));
    EXPECT_EQ(catalogue.getTutorial(L"a-good.CvTutorial")->getPhase(0)->message.text, L"hi");
}

TEST_F(TutorialCatalogue, DeletionsRemoveFilesAndEmptiedCategories)
{
    addFile("a.CvTutorial", "One", "Shared");
    addFile("b.CvTutorial", "Two", "Shared");
    addFile("c.CvTutorial", "Three", "Alone");
    TestCatalogue catalogue;
    listenTo(catalogue);
    const Cv::Ptr<Tutorial> one = catalogue.getTutorial(L"a.CvTutorial");
    catalogue.deleteTutorial(one);
    EXPECT_FALSE(std::filesystem::exists(folder() / "a.CvTutorial"));
    EXPECT_EQ(catalogue.getCategories().size(), 2u);
    catalogue.deleteTutorial(catalogue.getTutorial(L"b.CvTutorial"));
    EXPECT_EQ(catalogue.getCategories(), (std::set<LightweightString<wchar_t>> { L"Alone" }));
    EXPECT_EQ(names(catalogue.tutorials()), (Names { L"Three" }));
    EXPECT_EQ(names(TestCatalogue().tutorials()), (Names { L"Three" }));
    ASSERT_EQ(m_heard.size(), 2u);
    EXPECT_EQ(m_heard[0], Heard::value_type(12, one));

    // Not the catalogue's object, though it has the same file: the file stays, the deletion is still heard.
    const auto stranger = Cv::make<Tutorial>(joinPaths(TutorialsManager::getLocation(), L"c.CvTutorial"));
    catalogue.deleteTutorial(stranger);
    EXPECT_TRUE(std::filesystem::exists(folder() / "c.CvTutorial"));
    EXPECT_EQ(catalogue.tutorials().size(), 1u);
    EXPECT_EQ(m_heard.back(), Heard::value_type(12, stranger));
    catalogue.deleteTutorial(nullptr);
    catalogue.save(nullptr);
    EXPECT_EQ(m_heard.size(), 3u);
}

TEST_F(TutorialCatalogue, CreateWritesAFileAtOnceUnderAUniqueName)
{
    TestCatalogue catalogue;
    listenTo(catalogue);
    const Cv::Ptr<Tutorial> first = catalogue.createTutorial(L"Trimming", L"Editing");
    const Cv::Ptr<Tutorial> second = catalogue.createTutorial(L"Trimming", L"Editing");
    EXPECT_NE(first->getID(), second->getID());
    for (const auto& tutorial : { first, second }) {
        EXPECT_TRUE(tutorial->getID().endsWith(L".CvTutorial"));
        EXPECT_EQ(getDirectory(tutorial->getFile()), TutorialsManager::getLocation());
        EXPECT_EQ(catalogue.getTutorial(tutorial->getID()), tutorial);
    }
    EXPECT_EQ(m_heard, (Heard { { 10, first }, { 10, second } }));
    EXPECT_EQ(catalogue.getCategories().size(), 1u);
    // Both are there after a restart.
    EXPECT_EQ(names(TestCatalogue().getCategoryContents(L"Editing")), (Names { L"Trimming", L"Trimming" }));
}

TEST_F(TutorialCatalogue, SaveWritesEditsAndNotifies)
{
    addFile("a.CvTutorial", "One", "Shared");
    TestCatalogue catalogue;
    listenTo(catalogue);
    const Cv::Ptr<Tutorial> tutorial = catalogue.getTutorial(L"a.CvTutorial");
    tutorial->setCategory(L"Moved");
    catalogue.save(tutorial);
    EXPECT_EQ(m_heard, (Heard { { 11, tutorial } }));
    EXPECT_EQ(TestCatalogue().getCategories(), (std::set<LightweightString<wchar_t>> { L"Moved" }));
}

TEST_F(TutorialCatalogue, CloneIsSeparateButSavesOverItsSource)
{
    addFile("a.CvTutorial", "Original", "Shared");
    TestCatalogue catalogue;
    listenTo(catalogue);
    const Cv::Ptr<Tutorial> source = catalogue.getTutorial(L"a.CvTutorial");
    EXPECT_FALSE(catalogue.clone(nullptr));
    const Cv::Ptr<Tutorial> copy = catalogue.clone(source);
    EXPECT_NE(copy->getPhase(0).get(), source->getPhase(0).get());
    EXPECT_EQ(catalogue.tutorials().size(), 1u);
    EXPECT_TRUE(m_heard.empty());

    copy->setName(L"Copy");
    copy->getPhase(0)->message.text = L"changed";
    EXPECT_EQ(source->getPhase(0)->message.text, L"hi");
    catalogue.save(copy);
    EXPECT_EQ(Tutorial(source->getFile()).getName(), L"Copy");
    EXPECT_EQ(m_heard, (Heard { { 11, copy } }));
}

} // namespace
