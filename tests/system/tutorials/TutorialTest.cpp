// The tutorial document: what reading makes of a file, and the exact text that writing produces where reading
// and writing are deliberately asymmetric. Expected documents are compact (one line) except where the file
// layout itself is under test.
#include "tutorials/Tutorial.h"

#include "TutorialTestSupport.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <csignal>
#include <sys/resource.h>

using tutorial_test::readBytes;
using tutorial_test::ScratchFolder;
using tutorial_test::writeBytes;

namespace {

// Reads into any persistable type; the whole tutorial is reached through the interface, as a caller that
// persists it inside a larger document would.
template <typename T> T readAs(std::string_view json)
{
    T object;
    const auto root = JSON::parse(json);
    EXPECT_TRUE(root) << json;
    EXPECT_TRUE(static_cast<JSON::iPersistable&>(object).read(root));
    return object;
}
const auto readPhase = readAs<Tutorial::Phase>;
const auto readTutorial = readAs<Tutorial>;

std::string compact(const JSON::iPersistable& object)
{
    JSON::Builder builder;
    object.write(builder);
    std::string text = builder.toString(0, JSON::Builder::eCompact);
    if (!text.empty() && text.back() == '\n')
        text.pop_back();
    return text;
}

class TutorialFile : public ::testing::Test {
protected:
    std::string savedBytes(Tutorial& tutorial)
    {
        EXPECT_TRUE(tutorial.save(m_scratch.wide("saved.CvTutorial")));
        EXPECT_EQ(tutorial.getFile(), m_scratch.wide("saved.CvTutorial"));
        return readBytes(m_scratch.path() / "saved.CvTutorial");
    }
    ScratchFolder m_scratch;
};

TEST(TutorialPhase, TextShorthandIsReadBeforeTheMessageAndWrittenAsOne)
{
    const auto phase = readPhase(R"({"text": "Click here"})");
    EXPECT_EQ(phase.message.origin, eOriginCentre);
    EXPECT_EQ(phase.message.relativity, eRelativeRight);
    EXPECT_EQ(compact(phase), R"({"message":{"origin":"centre","text":"Click here"}})");
    // "message" comes first in the file, yet its own text overrides the shorthand; without one, the shorthand stays.
    EXPECT_EQ(readPhase(R"({"message": {"text": "full"}, "text": "short"})").message.text, L"full");
    EXPECT_EQ(compact(readPhase(R"({"text": "short", "message": {"origin": "bottom right"}})")),
        R"({"message":{"origin":"bottom right","text":"short"}})");
}

TEST(TutorialPhase, MembersAreWrittenOnlyWhenTheySaySomething)
{
    Tutorial::Phase phase;
    phase.pause = -0.0f;
    phase.pointer.y = 50.0; // x is what makes a pointer
    phase.action.modifiers = Tutorial::Action::kShift; // modifiers without an event
    phase.message.target = L"w"; // a message without text
    EXPECT_EQ(compact(phase), "{}");
    phase.pause = -2.5f;
    EXPECT_EQ(compact(phase), R"({"pause":-2.5})");
    EXPECT_EQ(compact(readPhase(R"({"action": {"event": "click"}, "message": {"text": "m"}, "pointer": {"x": 1},
        "pause": 1})")),
        R"({"pause":1,"pointer":{"x":1,"y":-1234},"message":{"origin":"centre","text":"m"},"action":{"event":"click"}})");
}

TEST(TutorialPointer, TargetAndCoordinateNeverTravelTogether)
{
    const auto fromFile = readPhase(R"({"pointer": {"x": 10, "y": 20, "target": "Play"}})");
    EXPECT_EQ(fromFile.pointer.x, Tutorial::kNoCoordinate);
    EXPECT_EQ(fromFile.pointer.y, Tutorial::kNoCoordinate);
    EXPECT_EQ(fromFile.pointer.getDisplayString(), L"Play");
    EXPECT_EQ(compact(fromFile), R"({"pointer":{"target":"Play"}})");

    auto inMemory = readPhase(R"({"pointer": {"x": 10, "y": 20}})");
    EXPECT_EQ(inMemory.pointer.getDisplayString(), L",");
    inMemory.pointer.target = L"dropped";
    EXPECT_EQ(compact(inMemory), R"({"pointer":{"x":10,"y":20}})");
}

TEST(TutorialMessage, OriginAndTargetAreExclusive)
{
    const auto anchored = readPhase(
        R"({"message": {"target": "Timeline", "relativity": "below", "origin": "top left", "text": "t"}})");
    EXPECT_EQ(static_cast<int>(anchored.message.origin), 17);
    EXPECT_TRUE(anchored.message.target.empty());
    EXPECT_EQ(anchored.message.relativity, eRelativeRight);

    Tutorial::Message placed;
    placed.text = L"t";
    placed.origin = eOriginBottom;
    placed.target = L"Timeline";
    placed.relativity = eRelativeAbove;
    EXPECT_EQ(compact(placed), R"({"target":"Timeline","relativity":"above","text":"t"})");
}

TEST(TutorialMessage, PlacementWordsRoundTripAndUnknownOnesGiveDefaults)
{
    for (const auto origin : { eOriginCentre, eOriginLeft, eOriginRight, eOriginTop, eOriginBottom, eOriginTopLeft,
             eOriginTopRight, eOriginBottomLeft, eOriginBottomRight })
        EXPECT_EQ(CoordinateOriginFromString(asString(origin).view()), origin) << asString(origin).str();
    for (const auto relativity : { eRelativeAbove, eRelativeBelow, eRelativeLeft, eRelativeRight, eRelativeOver })
        EXPECT_EQ(WidgetRelativityFromString(asString(relativity).view()), relativity);
    EXPECT_EQ(readPhase(R"({"message": {"text": "t", "origin": "Top Left"}})").message.origin, eOriginCentre);
    EXPECT_EQ(readPhase(R"({"message": {"text": "t", "target": "w", "relativity": "beside"}})").message.relativity,
        eRelativeRight);
    EXPECT_TRUE(asString(static_cast<CoordinateOrigin>(eOriginLeft | eOriginRight)).empty());
}

TEST(TutorialMessage, InequalityIgnoresTheTarget)
{
    Tutorial::Message a;
    a.text = L"hello";
    Tutorial::Message b = a;
    b.target = L"elsewhere";
    EXPECT_FALSE(a != b);
    b.origin = eOriginTop;
    EXPECT_TRUE(a != b);
}

TEST(TutorialAction, ModifiersAreReadByExactNameAndWrittenInFixedOrder)
{
    const auto phase = readPhase(R"({"action": {"event": "key", "modifiers": ["alt", "Shift", "cmd", "x", "ctrl"]}})");
    EXPECT_EQ(phase.action.modifiers, Tutorial::Action::kAlt | Tutorial::Action::kCmd | Tutorial::Action::kCtrl);
    Tutorial::Action all = phase.action;
    all.modifiers |= Tutorial::Action::kShift;
    EXPECT_EQ(compact(all), R"({"event":"key","modifiers":["shift","ctrl","cmd","alt"]})");
    EXPECT_TRUE(Tutorial::Action::asString(Tutorial::Action::kCtrl | Tutorial::Action::kAlt).empty());
}

TEST_F(TutorialFile, SavedLayoutAndDroppedComponents)
{
    Tutorial tutorial = readTutorial(R"({"phases": [{"text": "Hi"}], "components": [{"type": "", "x": 1}, {"x": 2},
        {"type": "viewer", "x": 10.5, "y": 20, "width": 640, "height": 360}], "category": "Basics", "name": "First"})");
    ASSERT_EQ(tutorial.components().size(), 1u);
    EXPECT_EQ(tutorial.components()[0].currentPosition, XY<double>(10.5, 20.0));
    EXPECT_EQ(savedBytes(tutorial), R"({
   "name": "First",
   "category": "Basics",
   "components": [
      {
         "type": "viewer",
         "width": 640,
         "height": 360,
         "x": 10.5,
         "y": 20
      }
   ],
   "phases": [
      {
         "message": {
            "origin": "centre",
            "text": "Hi"
         }
      }
   ]
}
)");
}

TEST_F(TutorialFile, NumbersKeepSinglePrecision)
{
    Tutorial tutorial = readTutorial(R"({"components": [{"type": "a", "x": 0.1, "y": 16777217, "width": 1e39,
        "height": -1e300}], "phases": [{"pause": 0.1, "pointer": {"x": 0.30000000000000004, "y": 1e-50}}]})");
    EXPECT_EQ(tutorial.components()[0].position.x, static_cast<double>(0.1f));
    EXPECT_EQ(tutorial.getPhase(0)->pointer.x, static_cast<double>(0.3f));
    // Beyond the range of float: the largest float of that sign, which still writes as a number.
    EXPECT_EQ(tutorial.components()[0].size.y, -static_cast<double>(FLT_MAX));
    EXPECT_EQ(compact(tutorial), R"({"name":"","category":"","components":[{"type":"a","width":3.4028235e+38,)"
                                 R"("height":-3.4028235e+38,"x":0.1,"y":16777216}],"phases":[{"pause":0.1,)"
                                 R"("pointer":{"x":0.3,"y":0}}]})");
}

TEST_F(TutorialFile, BadFilesAndWrongTypesGiveDefaults)
{
    writeBytes(m_scratch.path() / "bad.CvTutorial", R"({"name": "x", "category": )");
    writeBytes(m_scratch.path() / "list.CvTutorial", R"([{"name": "x"}])");
    writeBytes(m_scratch.path() / "empty.CvTutorial", "");
    Tutorial tutorial = readTutorial(R"({"name": "old", "phases": [{}]})");
    for (const char* name : { "bad.CvTutorial", "list.CvTutorial", "empty.CvTutorial", "missing.CvTutorial" }) {
        tutorial.load(m_scratch.wide(name));
        EXPECT_EQ(compact(tutorial), R"({"name":"","category":"","components":[],"phases":[]})") << name;
        EXPECT_EQ(tutorial.getID(), fromUTF8(name));
    }
    EXPECT_EQ(compact(readTutorial(R"({"name": 5, "category": ["c"], "components": {"type": "x"},
        "phases": [1, "two", {"pause": "3", "pointer": {"x": "1", "target": 7}, "text": 9,
                   "action": {"event": true, "modifiers": "shift"}}]})")),
        R"({"name":"","category":"","components":[],"phases":[{}]})");
}

TEST_F(TutorialFile, FileOverTheLimitIsNotRead)
{
    const auto document = [](size_t size) {
        const std::string head = R"({"name": "Big", "category": "c", "padding": ")";
        return head + std::string(size - head.size() - 2, 'x') + "\"}";
    };
    writeBytes(m_scratch.path() / "big.CvTutorial", document(Tutorial::kMaxFileBytes + 1));
    EXPECT_TRUE(Tutorial(m_scratch.wide("big.CvTutorial")).getName().empty());
    writeBytes(m_scratch.path() / "limit.CvTutorial", document(Tutorial::kMaxFileBytes));
    EXPECT_EQ(Tutorial(m_scratch.wide("limit.CvTutorial")).getName(), L"Big");
}

// A save cut short (here the file size limit is hit mid-write, as a full disk would) keeps the old file whole
// and leaves no temporary file behind.
TEST_F(TutorialFile, FailedSaveLeavesThePreviousFile)
{
    Tutorial tutorial = readTutorial(R"({"name": "Short", "category": "c"})");
    const std::string before = savedBytes(tutorial);
    for (int i = 0; i < 200; ++i)
        tutorial.addPhase(Cv::make<Tutorial::Phase>(readPhase(R"({"text": "a longer phase than the old file"})")));

    rlimit saved {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &saved), 0);
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limited = saved;
    limited.rlim_cur = 1024;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limited), 0);
    const bool ok = tutorial.save(m_scratch.wide("saved.CvTutorial"));
    ::setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, previousHandler);

    EXPECT_FALSE(ok);
    EXPECT_EQ(readBytes(m_scratch.path() / "saved.CvTutorial"), before);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_scratch.path()), {}), 1);
    // Nowhere to make the file at all: a folder on the way is a file.
    EXPECT_FALSE(tutorial.save(m_scratch.wide("saved.CvTutorial/inner.CvTutorial")));
    EXPECT_EQ(readBytes(m_scratch.path() / "saved.CvTutorial"), before);
}

TEST(TutorialModel, CopyConstructionCopiesPhasesAssignmentSharesThem)
{
    Tutorial source = readTutorial(R"({"phases": [{"text": "one"}], "components": [{"type": "t"}]})");
    Tutorial copy(source);
    ASSERT_EQ(copy.getNumPhases(), 1);
    EXPECT_NE(copy.getPhase(0).get(), source.getPhase(0).get());
    copy.getPhase(0)->message.text = L"changed";
    copy.components()[0].type = "u";
    EXPECT_EQ(compact(source), R"({"name":"","category":"","components":[{"type":"t","width":0,"height":0,"x":0,)"
                               R"("y":0}],"phases":[{"message":{"origin":"centre","text":"one"}}]})");
    Tutorial assigned;
    assigned = source;
    EXPECT_EQ(assigned.getPhase(0).get(), source.getPhase(0).get());
}

TEST(TutorialModel, PhasesAreRemovedByIdentity)
{
    Tutorial tutorial;
    const auto a = Cv::make<Tutorial::Phase>(), b = Cv::make<Tutorial::Phase>(), c = Cv::make<Tutorial::Phase>();
    for (const auto& phase : { a, b, c, Cv::Ptr<Tutorial::Phase>() })
        tutorial.addPhase(phase);
    tutorial.removePhase(Cv::make<Tutorial::Phase>(*b)); // equal, but another object
    EXPECT_EQ(tutorial.getNumPhases(), 3);
    tutorial.removePhase(b);
    EXPECT_EQ(tutorial.phases(), (std::vector<Cv::Ptr<Tutorial::Phase>> { a, c }));
    EXPECT_FALSE(tutorial.getPhase(2));
}

TEST(TutorialModel, ComponentPositionIsTheLastExactMatchUnscaled)
{
    const auto tutorial = readTutorial(R"({"components": [{"type": "viewer", "x": 1, "y": 2},
        {"type": "Viewer", "x": 9}, {"type": "viewer", "x": 3, "y": 4}, {"type": "viewer2", "x": 7}]})");
    EXPECT_EQ(tutorial.getComponentPosition("viewer", 2.0f), XY<double>(3.0, 4.0));
    EXPECT_EQ(tutorial.getComponentPosition("view", 1.0f), XY<double>(0.0, 0.0));
}

TEST(TutorialModel, PhaseCountStopsAtSixteenBits)
{
    std::string json = R"({"phases": [{})";
    for (size_t i = 1; i < Tutorial::kMaxPhases + 10; ++i)
        json += ",{}";
    const auto tutorial = readTutorial(json + "]}");
    EXPECT_EQ(tutorial.phases().size(), Tutorial::kMaxPhases);
    EXPECT_EQ(tutorial.getNumPhases(), 0xFFFF);
}

} // namespace
