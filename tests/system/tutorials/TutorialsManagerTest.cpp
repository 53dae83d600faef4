// The catalogue over a prepared folder: what it lists, how categories follow the tutorials, the files that
// create, save, delete and clone touch, and what listeners hear.
#include "tutorials/TutorialsManager.h"

#include "TutorialTestSupport.h"

#include "toolkit/support/FileUtils.h"
#include "toolkit/support/OS.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <utility>
#include <vector>

using tutorial_test::readBytes;
using tutorial_test::ScratchFolder;
using tutorial_test::toPath;
using tutorial_test::writeBytes;

namespace {

// A catalogue of its own over the current data folder, beside the process-wide one.
class TestCatalogue : public TutorialsManager {
public:
    TestCatalogue()
        : TutorialsManager(SeparateCatalogue {})
    {
    }
};

std::string tutorialJson(const std::string& name, const std::string& category)
{
    return R"({"name": ")" + name + R"(", "category": ")" + category + R"(", "phases": [{"text": "hi"}]})";
}

class TutorialCatalogue : public ::testing::Test {
protected:
    TutorialCatalogue()
    {
        OS()->fileManager().setBaseDataDirectory(m_scratch.wide());
        std::filesystem::create_directories(folder());
    }
    ~TutorialCatalogue() override { OS()->fileManager().setBaseDataDirectory({}); }

    std::filesystem::path folder() const { return m_scratch.path() / "Tutorials"; }
    void addFile(const std::string& name, const std::string& bytes) { writeBytes(folder() / name, bytes); }

    // Records every notification the catalogue issues, with its code.
    void listenTo(TutorialsManager& catalogue)
    {
        for (const int code : { TutorialsManager::eTutorialCreated, TutorialsManager::eTutorialSaved,
                 TutorialsManager::eTutorialDeleted }) {
            m_guards.push_back(catalogue.registerNotification(
                Cv::makeListener<NotifyMsg>([this, code](const NotifyMsg& message) {
                    m_heard.emplace_back(code, message.getObjectAs<Tutorial>());
                }),
                code));
        }
    }

    static std::vector<std::wstring> names(const std::vector<Cv::Ptr<Tutorial>>& tutorials)
    {
        std::vector<std::wstring> out;
        for (const auto& tutorial : tutorials)
            out.emplace_back(tutorial->getName().view());
        return out;
    }

    ScratchFolder m_scratch;
    std::vector<Cv::Ptr<Cv::Guard>> m_guards;
    std::vector<std::pair<int, Cv::Ptr<Tutorial>>> m_heard;
};

TEST_F(TutorialCatalogue, LocationFollowsTheDataFolder)
{
    EXPECT_EQ(TutorialsManager::getLocation(), joinPaths(m_scratch.wide(), L"Tutorials"));
    ScratchFolder other;
    OS()->fileManager().setBaseDataDirectory(other.wide());
    EXPECT_EQ(TutorialsManager::getLocation(), joinPaths(other.wide(), L"Tutorials"));
}

TEST_F(TutorialCatalogue, MissingOrEmptyFolderGivesAnEmptyCatalogue)
{
    EXPECT_TRUE(TestCatalogue().tutorials().empty());
    std::filesystem::remove(folder());
    const TestCatalogue catalogue;
    EXPECT_TRUE(catalogue.tutorials().empty());
    EXPECT_TRUE(catalogue.getCategories().empty());
}

TEST_F(TutorialCatalogue, ListsNamedAndCategorisedFilesInNameOrder)
{
    addFile("b.CvTutorial", tutorialJson("Second", "Editing"));
    addFile("a.CvTutorial", tutorialJson("First", "Editing"));
    addFile("c.CvTutorial", tutorialJson("Third", "Audio"));
    addFile("no-category.CvTutorial", tutorialJson("Lost", ""));
    addFile("no-name.CvTutorial", tutorialJson("", "Nameless"));
    addFile("other.json", tutorialJson("Wrong extension", "Editing"));

    const TestCatalogue catalogue;
    EXPECT_EQ(names(catalogue.tutorials()), (std::vector<std::wstring> { L"First", L"Second", L"Third" }));
    EXPECT_EQ(catalogue.getCategories(), (std::set<LightweightString<wchar_t>> { L"Audio", L"Editing" }));
    EXPECT_EQ(names(catalogue.getCategoryContents(L"Editing")), (std::vector<std::wstring> { L"First", L"Second" }));
    EXPECT_TRUE(catalogue.getCategoryContents(L"editing").empty());
    EXPECT_TRUE(catalogue.getCategoryContents(L"").empty());
    EXPECT_TRUE(catalogue.getCategoryContents(L"Nameless").empty());
}

TEST_F(TutorialCatalogue, TutorialsAreFoundByBareFileName)
{
    addFile("a.CvTutorial", tutorialJson("First", "Editing"));
    const TestCatalogue catalogue;
    const Cv::Ptr<Tutorial> found = catalogue.getTutorial(L"a.CvTutorial");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->getName(), L"First");
    EXPECT_EQ(found->getFile(), joinPaths(TutorialsManager::getLocation(), L"a.CvTutorial"));
    EXPECT_FALSE(catalogue.getTutorial(found->getFile()));
    EXPECT_FALSE(catalogue.getTutorial(L"a"));
    EXPECT_FALSE(catalogue.getTutorial(L"A.CvTutorial"));
}

// Files that cannot be tutorials are passed over, and the good ones around them still load.
TEST_F(TutorialCatalogue, BadFilesAreLeftOutWithoutHarmToOthers)
{
    addFile("a-good.CvTutorial", tutorialJson("Good", "Basics"));
    addFile("b-empty.CvTutorial", "");
    addFile("c-broken.CvTutorial", R"({"name": "Broken", "category": "Basics", "phases": [)");
    addFile("d-array.CvTutorial", "[" + tutorialJson("Array", "Basics") + "]");
    addFile("e-binary.CvTutorial", std::string("\xff\xfe\0\x01{}", 6));
    // What an interrupted save leaves behind: a temporary file beside the real one.
    addFile("a-good.CvTutorial.tmp-Xa81Qz", R"({"name": "Half", "category": "Bas)");
    std::filesystem::create_directories(folder() / "f-folder.CvTutorial");
    // A pipe would block a reader for ever.
    ASSERT_EQ(::mkfifo((folder() / "g-pipe.CvTutorial").c_str(), 0644), 0);
    const std::string head = R"({"name": "Huge", "category": "Basics", "padding": ")";
    addFile("h-huge.CvTutorial", head + std::string(Tutorial::kMaxFileBytes, ' ') + "\"}");
    addFile("i-good.CvTutorial", tutorialJson("Also good", "Basics"));

    const TestCatalogue catalogue;
    EXPECT_EQ(names(catalogue.tutorials()), (std::vector<std::wstring> { L"Good", L"Also good" }));
    EXPECT_EQ(catalogue.getCategories().size(), 1u);
    EXPECT_EQ(catalogue.getTutorial(L"a-good.CvTutorial")->getPhase(0)->message.text, L"hi");
}

TEST_F(TutorialCatalogue, CategoriesFollowDeletions)
{
    addFile("a.CvTutorial", tutorialJson("One", "Shared"));
    addFile("b.CvTutorial", tutorialJson("Two", "Shared"));
    addFile("c.CvTutorial", tutorialJson("Three", "Alone"));
    TestCatalogue catalogue;
    listenTo(catalogue);
    ASSERT_EQ(catalogue.getCategories().size(), 2u);

    const Cv::Ptr<Tutorial> one = catalogue.getTutorial(L"a.CvTutorial");
    catalogue.deleteTutorial(one);
    EXPECT_FALSE(std::filesystem::exists(folder() / "a.CvTutorial"));
    EXPECT_EQ(catalogue.getCategories().count(L"Shared"), 1u);
    EXPECT_EQ(names(catalogue.tutorials()), (std::vector<std::wstring> { L"Two", L"Three" }));

    catalogue.deleteTutorial(catalogue.getTutorial(L"b.CvTutorial"));
    EXPECT_EQ(catalogue.getCategories(), (std::set<LightweightString<wchar_t>> { L"Alone" }));
    EXPECT_TRUE(catalogue.getCategoryContents(L"Shared").empty());
    EXPECT_TRUE(std::filesystem::exists(folder() / "c.CvTutorial"));

    ASSERT_EQ(m_heard.size(), 2u);
    EXPECT_EQ(m_heard[0].first, TutorialsManager::eTutorialDeleted);
    EXPECT_EQ(m_heard[0].second, one);
    EXPECT_EQ(TestCatalogue().tutorials().size(), 1u);
}

TEST_F(TutorialCatalogue, DeletingAnUnknownTutorialNotifiesAndTouchesNoFile)
{
    addFile("a.CvTutorial", tutorialJson("One", "Shared"));
    TestCatalogue catalogue;
    listenTo(catalogue);
    // The same file, but not the catalogue's object.
    const auto stranger = Cv::make<Tutorial>(joinPaths(TutorialsManager::getLocation(), L"a.CvTutorial"));
    catalogue.deleteTutorial(stranger);
    EXPECT_TRUE(std::filesystem::exists(folder() / "a.CvTutorial"));
    EXPECT_EQ(catalogue.tutorials().size(), 1u);
    ASSERT_EQ(m_heard.size(), 1u);
    EXPECT_EQ(m_heard[0].first, TutorialsManager::eTutorialDeleted);
    EXPECT_EQ(m_heard[0].second, stranger);

    catalogue.deleteTutorial(nullptr);
    catalogue.save(nullptr);
    EXPECT_EQ(m_heard.size(), 1u);
}

TEST_F(TutorialCatalogue, CreateWritesAFileAtOnceUnderAUniqueName)
{
    TestCatalogue catalogue;
    listenTo(catalogue);
    const Cv::Ptr<Tutorial> first = catalogue.createTutorial(L"Trimming", L"Editing");
    const Cv::Ptr<Tutorial> second = catalogue.createTutorial(L"Trimming", L"Editing");
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->getID(), second->getID());
    for (const auto& tutorial : { first, second }) {
        EXPECT_TRUE(tutorial->getID().endsWith(L".CvTutorial"));
        EXPECT_EQ(getDirectory(tutorial->getFile()), TutorialsManager::getLocation());
        EXPECT_TRUE(fileExists(tutorial->getFile()));
        EXPECT_EQ(catalogue.getTutorial(tutorial->getID()), tutorial);
    }
    EXPECT_EQ(catalogue.getCategories().count(L"Editing"), 1u);
    ASSERT_EQ(m_heard.size(), 2u);
    EXPECT_EQ(m_heard[0], std::make_pair(int(TutorialsManager::eTutorialCreated), first));
    EXPECT_EQ(m_heard[1], std::make_pair(int(TutorialsManager::eTutorialCreated), second));

    // Both are there after a restart, empty but named.
    const TestCatalogue reopened;
    ASSERT_EQ(reopened.getCategoryContents(L"Editing").size(), 2u);
    const Cv::Ptr<Tutorial> again = reopened.getTutorial(first->getID());
    ASSERT_TRUE(again);
    EXPECT_EQ(again->getName(), L"Trimming");
    EXPECT_EQ(again->getNumPhases(), 0);
}

TEST_F(TutorialCatalogue, SaveWritesEditsAndNotifies)
{
    addFile("a.CvTutorial", tutorialJson("One", "Shared"));
    TestCatalogue catalogue;
    listenTo(catalogue);
    const Cv::Ptr<Tutorial> tutorial = catalogue.getTutorial(L"a.CvTutorial");
    tutorial->setCategory(L"Moved");
    tutorial->addPhase(Cv::make<Tutorial::Phase>());
    tutorial->getPhase(1)->action.event = "click";
    catalogue.save(tutorial);

    ASSERT_EQ(m_heard.size(), 1u);
    EXPECT_EQ(m_heard[0], std::make_pair(int(TutorialsManager::eTutorialSaved), tutorial));
    const Tutorial reread(tutorial->getFile());
    EXPECT_EQ(reread.getCategory(), L"Moved");
    ASSERT_EQ(reread.getNumPhases(), 2);
    EXPECT_EQ(reread.getPhase(1)->action.event, "click");
}

TEST_F(TutorialCatalogue, CloneIsSeparateButSavesOverItsSource)
{
    addFile("a.CvTutorial", tutorialJson("Original", "Shared"));
    TestCatalogue catalogue;
    listenTo(catalogue);
    const Cv::Ptr<Tutorial> source = catalogue.getTutorial(L"a.CvTutorial");
    EXPECT_FALSE(catalogue.clone(nullptr));
    const Cv::Ptr<Tutorial> copy = catalogue.clone(source);
    ASSERT_TRUE(copy);
    EXPECT_NE(copy.get(), source.get());
    EXPECT_NE(copy->getPhase(0).get(), source->getPhase(0).get());
    EXPECT_EQ(copy->getFile(), source->getFile());
    EXPECT_EQ(catalogue.tutorials().size(), 1u);
    EXPECT_TRUE(m_heard.empty());

    copy->setName(L"Copy");
    copy->getPhase(0)->message.text = L"changed";
    EXPECT_EQ(source->getPhase(0)->message.text, L"hi");
    catalogue.save(copy);
    EXPECT_EQ(Tutorial(source->getFile()).getName(), L"Copy");
    EXPECT_EQ(source->getName(), L"Original");
    ASSERT_EQ(m_heard.size(), 1u);
    EXPECT_EQ(m_heard[0].second, copy);
}

TEST_F(TutorialCatalogue, CopiesShareTutorialsButNotListeners)
{
    addFile("a.CvTutorial", tutorialJson("One", "Shared"));
    TestCatalogue catalogue;
    listenTo(catalogue);
    TutorialsManager copy(catalogue);
    EXPECT_EQ(copy.getNumListeners(), 0u);
    EXPECT_EQ(copy.getTutorial(L"a.CvTutorial"), catalogue.getTutorial(L"a.CvTutorial"));
    copy.deleteTutorial(copy.getTutorial(L"a.CvTutorial"));
    EXPECT_TRUE(m_heard.empty());
    EXPECT_EQ(catalogue.tutorials().size(), 1u);
    EXPECT_TRUE(copy.getCategories().empty());
}

} // namespace
