// The tutorial document: what reading makes of a file, and the exact bytes that writing produces for the cases
// where reading and writing are deliberately asymmetric.
#include "tutorials/Tutorial.h"

#include "TutorialTestSupport.h"

#include "toolkit/support/JSON.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <csignal>
#include <sys/resource.h>

using tutorial_test::readBytes;
using tutorial_test::ScratchFolder;
using tutorial_test::writeBytes;

namespace {

// The whole-document read and write are reached through the persistable interface, as the catalogue's
// callers would persist a tutorial inside a larger document.
Tutorial readDocument(std::string_view json)
{
    Tutorial tutorial;
    const auto root = JSON::parse(json);
    EXPECT_TRUE(root) << json;
    EXPECT_TRUE(static_cast<JSON::iPersistable&>(tutorial).read(root));
    return tutorial;
}

Tutorial::Phase readPhase(std::string_view json)
{
    Tutorial::Phase phase;
    const auto root = JSON::parse(json);
    EXPECT_TRUE(root) << json;
    EXPECT_TRUE(phase.read(root));
    return phase;
}

std::string written(const JSON::iPersistable& object)
{
    JSON::Builder builder;
    object.write(builder);
    return builder.toString(3, 0);
}

class TutorialFile : public ::testing::Test {
protected:
    // What save() puts on disk.
    std::string savedBytes(Tutorial& tutorial)
    {
        const auto path = m_scratch.wide("saved.CvTutorial");
        EXPECT_TRUE(tutorial.save(path));
        EXPECT_EQ(tutorial.getFile(), path);
        return readBytes(m_scratch.path() / "saved.CvTutorial");
    }

    ScratchFolder m_scratch;
};

// ---- Phases: the text shorthand, conditional members and pauses

TEST(TutorialPhase, TextShorthandBecomesAMessageAnchoredAtTheCentre)
{
    const Tutorial::Phase phase = readPhase(R"({"text": "Click here"})");
    EXPECT_EQ(phase.message.text, L"Click here");
    EXPECT_EQ(phase.message.origin, eOriginCentre);
    EXPECT_EQ(phase.message.relativity, eRelativeRight);
    EXPECT_TRUE(phase.message.target.empty());
    EXPECT_FALSE(phase.pointer.valid());
    EXPECT_FALSE(phase.action.valid());

    EXPECT_EQ(written(phase), "{\n"
                              "   \"message\": {\n"
                              "      \"origin\": \"centre\",\n"
                              "      \"text\": \"Click here\"\n"
                              "   }\n"
                              "}\n");
}

TEST(TutorialPhase, MessageObjectOverridesTheShorthandOnlyWithItsOwnText)
{
    // "message" comes first in the file, yet the shorthand is read before it.
    EXPECT_EQ(readPhase(R"({"message": {"text": "full"}, "text": "short"})").message.text, L"full");
    const Tutorial::Phase placed = readPhase(R"({"text": "short", "message": {"origin": "bottom right"}})");
    EXPECT_EQ(placed.message.text, L"short");
    EXPECT_EQ(placed.message.origin, eOriginBottomRight);
}

TEST(TutorialPhase, PauseIsWrittenUnlessZero)
{
    Tutorial::Phase phase;
    phase.pause = 0.0f;
    EXPECT_EQ(written(phase), "{}\n");
    phase.pause = -0.0f;
    EXPECT_EQ(written(phase), "{}\n");
    phase.pause = -2.5f;
    EXPECT_EQ(written(phase), "{\n   \"pause\": -2.5\n}\n");
    EXPECT_EQ(readPhase(written(phase)).pause, -2.5f);
    EXPECT_EQ(readPhase("{}").pause, 0.0f);
}

TEST(TutorialPhase, MembersAreWrittenInFixedOrder)
{
    const Tutorial::Phase phase = readPhase(R"({"action": {"event": "click"}, "message": {"text": "m"},
                                                "pointer": {"target": "t"}, "pause": 1})");
    EXPECT_EQ(written(phase), "{\n"
                              "   \"pause\": 1,\n"
                              "   \"pointer\": {\n"
                              "      \"target\": \"t\"\n"
                              "   },\n"
                              "   \"message\": {\n"
                              "      \"origin\": \"centre\",\n"
                              "      \"text\": \"m\"\n"
                              "   },\n"
                              "   \"action\": {\n"
                              "      \"event\": \"click\"\n"
                              "   }\n"
                              "}\n");
}

// ---- Pointers: a target and a coordinate never travel together

TEST(TutorialPointer, TargetInTheFileWinsOverCoordinates)
{
    const Tutorial::Phase phase = readPhase(R"({"pointer": {"x": 10, "y": 20, "target": "Play button"}})");
    EXPECT_EQ(phase.pointer.target, L"Play button");
    EXPECT_EQ(phase.pointer.x, Tutorial::kNoCoordinate);
    EXPECT_EQ(phase.pointer.y, Tutorial::kNoCoordinate);
    EXPECT_EQ(phase.pointer.getDisplayString(), L"Play button");
    EXPECT_EQ(written(phase), "{\n   \"pointer\": {\n      \"target\": \"Play button\"\n   }\n}\n");
}

TEST(TutorialPointer, CoordinatesInMemoryDropTheTargetOnWriting)
{
    Tutorial::Phase phase = readPhase(R"({"pointer": {"x": 10, "y": 20}})");
    phase.pointer.target = L"ignored";
    EXPECT_EQ(written(phase), "{\n   \"pointer\": {\n      \"x\": 10,\n      \"y\": 20\n   }\n}\n");
}

TEST(TutorialPointer, ValidityLooksAtXAndTargetOnly)
{
    Tutorial::Pointer pointer;
    EXPECT_FALSE(pointer.valid());
    pointer.y = 50.0;
    EXPECT_FALSE(pointer.valid());
    Tutorial::Phase phase;
    phase.pointer = pointer;
    EXPECT_EQ(written(phase), "{}\n");

    // A missing y stays the marker and is written as it is.
    const Tutorial::Phase onlyX = readPhase(R"({"pointer": {"x": 3}})");
    EXPECT_TRUE(onlyX.pointer.valid());
    EXPECT_EQ(onlyX.pointer.y, Tutorial::kNoCoordinate);
    EXPECT_EQ(onlyX.pointer.getDisplayString(), L",");
    EXPECT_EQ(written(onlyX), "{\n   \"pointer\": {\n      \"x\": 3,\n      \"y\": -1234\n   }\n}\n");
}

// ---- Messages: placed against a target or at a screen origin

TEST(TutorialMessage, OriginInTheFileStopsReadingTargetAndRelativity)
{
    const Tutorial::Phase phase = readPhase(
        R"({"message": {"target": "Timeline", "relativity": "below", "origin": "top left", "text": "t"}})");
    EXPECT_EQ(phase.message.origin, eOriginTopLeft);
    EXPECT_EQ(static_cast<int>(phase.message.origin), 17);
    EXPECT_TRUE(phase.message.target.empty());
    EXPECT_EQ(phase.message.relativity, eRelativeRight);
}

TEST(TutorialMessage, TargetWritesRelativityInsteadOfOrigin)
{
    Tutorial::Message message;
    message.text = L"Drag the clip here";
    message.origin = eOriginBottom;
    message.target = L"Timeline";
    message.relativity = eRelativeAbove;
    EXPECT_EQ(written(message), "{\n"
                                "   \"target\": \"Timeline\",\n"
                                "   \"relativity\": \"above\",\n"
                                "   \"text\": \"Drag the clip here\"\n"
                                "}\n");

    Tutorial::Message back;
    back.read(JSON::parse(written(message)));
    EXPECT_EQ(back.target, L"Timeline");
    EXPECT_EQ(back.relativity, eRelativeAbove);
    EXPECT_EQ(back.origin, eOriginCentre);
}

TEST(TutorialMessage, EveryNamedPlacementSurvivesTheFile)
{
    for (const CoordinateOrigin origin : { eOriginCentre, eOriginLeft, eOriginRight, eOriginTop, eOriginBottom,
             eOriginTopLeft, eOriginTopRight, eOriginBottomLeft, eOriginBottomRight }) {
        Tutorial::Message message;
        message.text = L"x";
        message.origin = origin;
        Tutorial::Message back;
        back.read(JSON::parse(written(message)));
        EXPECT_EQ(back.origin, origin) << asString(origin).str();
    }
    for (const WidgetRelativity relativity :
        { eRelativeAbove, eRelativeBelow, eRelativeLeft, eRelativeRight, eRelativeOver }) {
        Tutorial::Message message;
        message.text = L"x";
        message.target = L"t";
        message.relativity = relativity;
        Tutorial::Message back;
        back.read(JSON::parse(written(message)));
        EXPECT_EQ(back.relativity, relativity) << asString(relativity).str();
    }
}

TEST(TutorialMessage, UnknownPlacementWordsGiveTheDefaults)
{
    EXPECT_EQ(readPhase(R"({"message": {"text": "t", "origin": "Top Left"}})").message.origin, eOriginCentre);
    EXPECT_EQ(readPhase(R"({"message": {"text": "t", "origin": ""}})").message.origin, eOriginCentre);
    const Tutorial::Phase phase = readPhase(R"({"message": {"text": "t", "target": "w", "relativity": "beside"}})");
    EXPECT_EQ(phase.message.relativity, eRelativeRight);
    // A value no word names is written as an empty word, which reads back as the default.
    EXPECT_TRUE(asString(static_cast<CoordinateOrigin>(eOriginLeft | eOriginRight)).empty());
}

TEST(TutorialMessage, InequalityIgnoresTheTarget)
{
    Tutorial::Message a;
    a.text = L"hello";
    Tutorial::Message b = a;
    b.target = L"elsewhere";
    EXPECT_FALSE(a != b);
    b.relativity = eRelativeOver;
    EXPECT_TRUE(a != b);
    b = a;
    b.origin = eOriginTop;
    EXPECT_TRUE(a != b);
    b = a;
    b.text = L"Hello";
    EXPECT_TRUE(a != b);
}

// ---- Actions and modifiers

TEST(TutorialAction, ModifiersAreWrittenInFixedOrderAndReadByExactName)
{
    const Tutorial::Phase phase
        = readPhase(R"({"action": {"event": "key", "modifiers": ["alt", "Shift", "cmd", "bogus", "ctrl", "shift"]}})");
    EXPECT_EQ(phase.action.modifiers,
        Tutorial::Action::kAlt | Tutorial::Action::kCmd | Tutorial::Action::kCtrl | Tutorial::Action::kShift);
    EXPECT_EQ(written(phase.action), "{\n"
                                     "   \"event\": \"key\",\n"
                                     "   \"modifiers\": [\n"
                                     "      \"shift\",\n"
                                     "      \"ctrl\",\n"
                                     "      \"cmd\",\n"
                                     "      \"alt\"\n"
                                     "   ]\n"
                                     "}\n");

    EXPECT_EQ(readPhase(R"({"action": {"event": "k", "modifiers": ["Shift", "ALT"]}})").action.modifiers, 0u);
}

TEST(TutorialAction, ModifiersWithoutAnEventAreNotWritten)
{
    Tutorial::Phase phase;
    phase.action.modifiers = Tutorial::Action::kShift;
    EXPECT_EQ(written(phase), "{}\n");
    EXPECT_EQ(written(phase.action), "{}\n");
}

TEST(TutorialAction, ModifierNamesAreForSingleBitsOnly)
{
    EXPECT_EQ(Tutorial::Action::asString(Tutorial::Action::kCmd), "cmd");
    EXPECT_EQ(Tutorial::Action::asString(Tutorial::Action::kShift), "shift");
    EXPECT_EQ(Tutorial::Action::asString(Tutorial::Action::kCtrl), "ctrl");
    EXPECT_EQ(Tutorial::Action::asString(Tutorial::Action::kAlt), "alt");
    EXPECT_TRUE(Tutorial::Action::asString(Tutorial::Action::kCtrl | Tutorial::Action::kAlt).empty());
    EXPECT_TRUE(Tutorial::Action::asString(0).empty());
}

// ---- The whole document

TEST_F(TutorialFile, DocumentLayoutWithComponents)
{
    Tutorial tutorial = readDocument(R"({
        "phases": [{"text": "Welcome"}],
        "components": [
            {"type": "", "x": 1},
            {"x": 2},
            {"type": "viewer", "x": 10.5, "y": 20, "width": 640, "height": 360},
            {"type": "bin"}
        ],
        "category": "Basics", "name": "First steps", "extra": [1, 2]})");
    ASSERT_EQ(tutorial.components().size(), 2u);
    EXPECT_EQ(tutorial.components()[1].position, XY<double>(0.0, 0.0));
    EXPECT_EQ(tutorial.components()[0].currentPosition, tutorial.components()[0].position);

    EXPECT_EQ(savedBytes(tutorial), "{\n"
                                    "   \"name\": \"First steps\",\n"
                                    "   \"category\": \"Basics\",\n"
                                    "   \"components\": [\n"
                                    "      {\n"
                                    "         \"type\": \"viewer\",\n"
                                    "         \"width\": 640,\n"
                                    "         \"height\": 360,\n"
                                    "         \"x\": 10.5,\n"
                                    "         \"y\": 20\n"
                                    "      },\n"
                                    "      {\n"
                                    "         \"type\": \"bin\",\n"
                                    "         \"width\": 0,\n"
                                    "         \"height\": 0,\n"
                                    "         \"x\": 0,\n"
                                    "         \"y\": 0\n"
                                    "      }\n"
                                    "   ],\n"
                                    "   \"phases\": [\n"
                                    "      {\n"
                                    "         \"message\": {\n"
                                    "            \"origin\": \"centre\",\n"
                                    "            \"text\": \"Welcome\"\n"
                                    "         }\n"
                                    "      }\n"
                                    "   ]\n"
                                    "}\n");
}

TEST_F(TutorialFile, EmptyTutorialStillWritesEveryMember)
{
    Tutorial tutorial;
    EXPECT_EQ(savedBytes(tutorial), "{\n"
                                    "   \"name\": \"\",\n"
                                    "   \"category\": \"\",\n"
                                    "   \"components\": [],\n"
                                    "   \"phases\": []\n"
                                    "}\n");
}

TEST_F(TutorialFile, NumbersKeepSinglePrecision)
{
    Tutorial tutorial = readDocument(R"({"components": [{"type": "a", "x": 0.1, "y": 16777217, "width": 1e39,
        "height": -1e300}], "phases": [{"pause": 0.1, "pointer": {"x": 0.30000000000000004, "y": 1e-50}}]})");
    const Tutorial::UIComponent& component = tutorial.components().at(0);
    EXPECT_EQ(component.position.x, static_cast<double>(0.1f));
    EXPECT_EQ(component.position.y, 16777216.0);
    // Out of the range of float: the largest float of that sign, which still writes as a number.
    EXPECT_EQ(component.size.x, static_cast<double>(FLT_MAX));
    EXPECT_EQ(component.size.y, -static_cast<double>(FLT_MAX));
    const Tutorial::Phase& phase = *tutorial.getPhase(0);
    EXPECT_EQ(phase.pause, 0.1f);
    EXPECT_EQ(phase.pointer.x, static_cast<double>(0.3f));
    EXPECT_EQ(phase.pointer.y, 0.0);

    const std::string bytes = savedBytes(tutorial);
    EXPECT_NE(bytes.find("\"x\": 0.1,"), std::string::npos) << bytes;
    EXPECT_NE(bytes.find("\"y\": 16777216\n"), std::string::npos) << bytes;
    EXPECT_NE(bytes.find("\"width\": 3.4028235e+38,"), std::string::npos) << bytes;
    EXPECT_NE(bytes.find("\"pause\": 0.1,"), std::string::npos) << bytes;
    EXPECT_NE(bytes.find("\"x\": 0.3,"), std::string::npos) << bytes;
    EXPECT_EQ(bytes.find("null"), std::string::npos) << bytes;
}

TEST_F(TutorialFile, SaveThenLoadGivesTheSameDocument)
{
    Tutorial tutorial = readDocument(R"({"name": "Überblick ✂", "category": "Schnitt \"A\"",
        "components": [{"type": "viewer", "x": -5, "y": 7.25, "width": 3, "height": 4}],
        "phases": [
            {"pause": 2, "pointer": {"target": "Play"}, "message": {"text": "Line 1\nLine 2", "target": "Play",
             "relativity": "below"}, "action": {"event": "click", "modifiers": ["ctrl"]}},
            {"pointer": {"x": 100, "y": 200}, "message": {"text": "Corner", "origin": "top right"}},
            {}
        ]})");
    const std::string first = savedBytes(tutorial);
    const Tutorial loaded(m_scratch.wide("saved.CvTutorial"));
    EXPECT_EQ(loaded.getName(), L"Überblick ✂");
    EXPECT_EQ(loaded.getNumPhases(), 3);
    EXPECT_EQ(loaded.getPhase(0)->message.text, L"Line 1\nLine 2");
    Tutorial again(loaded);
    EXPECT_EQ(savedBytes(again), first);
}

TEST_F(TutorialFile, UnreadableFilesGiveAnEmptyTutorialThatKnowsItsFile)
{
    writeBytes(m_scratch.path() / "bad.CvTutorial", R"({"name": "x", "category": )");
    writeBytes(m_scratch.path() / "list.CvTutorial", R"([{"name": "x"}])");
    writeBytes(m_scratch.path() / "empty.CvTutorial", "");
    for (const char* name : { "bad.CvTutorial", "list.CvTutorial", "empty.CvTutorial", "missing.CvTutorial" }) {
        const Tutorial tutorial(m_scratch.wide(name));
        EXPECT_TRUE(tutorial.getName().empty()) << name;
        EXPECT_EQ(tutorial.getNumPhases(), 0) << name;
        EXPECT_EQ(tutorial.getFile(), m_scratch.wide(name));
        EXPECT_EQ(tutorial.getID(), fromUTF8(name));
    }
}

TEST_F(TutorialFile, WrongTypesReadAsAbsent)
{
    const Tutorial tutorial = readDocument(R"({"name": 5, "category": ["c"], "components": {"type": "x"},
        "phases": [1, "two", {"pause": "3", "pointer": {"x": "1", "target": 7}, "text": 9,
                   "action": {"event": true, "modifiers": "shift"}}]})");
    EXPECT_TRUE(tutorial.getName().empty());
    EXPECT_TRUE(tutorial.getCategory().empty());
    ASSERT_EQ(tutorial.getNumPhases(), 1);
    const Tutorial::Phase& phase = *tutorial.getPhase(0);
    EXPECT_EQ(phase.pause, 0.0f);
    EXPECT_FALSE(phase.pointer.valid());
    EXPECT_FALSE(phase.message.valid());
    EXPECT_FALSE(phase.action.valid());
    EXPECT_EQ(phase.action.modifiers, 0u);
}

TEST_F(TutorialFile, LoadReplacesWhatWasThere)
{
    writeBytes(m_scratch.path() / "a.CvTutorial", R"({"name": "A", "category": "c", "phases": [{}, {}]})");
    Tutorial tutorial = readDocument(R"({"name": "old", "components": [{"type": "t"}], "phases": [{}]})");
    tutorial.load(m_scratch.wide("a.CvTutorial"));
    EXPECT_EQ(tutorial.getName(), L"A");
    EXPECT_EQ(tutorial.getNumPhases(), 2);
    EXPECT_TRUE(tutorial.components().empty());
    tutorial.load(m_scratch.wide("missing.CvTutorial"));
    EXPECT_TRUE(tutorial.getName().empty());
    EXPECT_EQ(tutorial.getNumPhases(), 0);
}

TEST_F(TutorialFile, FileOverTheLimitIsNotRead)
{
    // Valid and complete documents of an exact size.
    const auto document = [](size_t size) {
        const std::string head = R"({"name": "Big", "category": "c", "padding": ")";
        const std::string tail = "\"}";
        return head + std::string(size - head.size() - tail.size(), 'x') + tail;
    };
    writeBytes(m_scratch.path() / "big.CvTutorial", document(Tutorial::kMaxFileBytes + 1));
    EXPECT_TRUE(Tutorial(m_scratch.wide("big.CvTutorial")).getName().empty());
    writeBytes(m_scratch.path() / "limit.CvTutorial", document(Tutorial::kMaxFileBytes));
    EXPECT_EQ(Tutorial(m_scratch.wide("limit.CvTutorial")).getName(), L"Big");
}

// A save that cannot be completed (here: the file size limit is hit mid-write, as a full disk would) leaves
// the previous file whole and no temporary file behind.
TEST_F(TutorialFile, FailedSaveLeavesThePreviousFile)
{
    Tutorial tutorial = readDocument(R"({"name": "Short", "category": "c"})");
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
    size_t entries = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_scratch.path()))
        entries += entry.is_regular_file() ? 1 : 0;
    EXPECT_EQ(entries, 1u);

    // Somewhere no file can be made at all: a folder in the path is a file.
    EXPECT_FALSE(tutorial.save(m_scratch.wide("saved.CvTutorial/inner.CvTutorial")));
    EXPECT_EQ(readBytes(m_scratch.path() / "saved.CvTutorial"), before);
}

// ---- The model's own operations

TEST(TutorialModel, CopyConstructionCopiesPhasesAssignmentSharesThem)
{
    Tutorial source = readDocument(R"({"name": "n", "category": "c", "phases": [{"text": "one"}, {"pause": 2}],
        "components": [{"type": "t", "x": 1}]})");
    Tutorial copy(source);
    ASSERT_EQ(copy.getNumPhases(), 2);
    for (uint16_t i = 0; i < 2; ++i)
        EXPECT_NE(copy.getPhase(i).get(), source.getPhase(i).get());
    copy.getPhase(0)->message.text = L"changed";
    copy.components()[0].type = "u";
    EXPECT_EQ(source.getPhase(0)->message.text, L"one");
    EXPECT_EQ(source.components()[0].type, "t");
    EXPECT_EQ(copy.getPhase(1)->pause, 2.0f);

    Tutorial assigned;
    assigned = source;
    EXPECT_EQ(assigned.getPhase(0).get(), source.getPhase(0).get());
}

TEST(TutorialModel, PhasesAreRemovedByIdentity)
{
    Tutorial tutorial;
    const auto a = Cv::make<Tutorial::Phase>();
    const auto b = Cv::make<Tutorial::Phase>();
    const auto c = Cv::make<Tutorial::Phase>();
    tutorial.addPhase(a);
    tutorial.addPhase(b);
    tutorial.addPhase(c);
    tutorial.addPhase(nullptr);
    ASSERT_EQ(tutorial.getNumPhases(), 3);

    tutorial.removePhase(Cv::make<Tutorial::Phase>(*b)); // equal, but another object
    EXPECT_EQ(tutorial.getNumPhases(), 3);
    tutorial.removePhase(b);
    ASSERT_EQ(tutorial.getNumPhases(), 2);
    EXPECT_EQ(tutorial.getPhase(0), a);
    EXPECT_EQ(tutorial.getPhase(1), c);
    EXPECT_FALSE(tutorial.getPhase(2));
    tutorial.removePhase(b);
    EXPECT_EQ(tutorial.getNumPhases(), 2);
}

TEST(TutorialModel, ComponentPositionIsTheLastExactMatchUnscaled)
{
    const Tutorial tutorial = readDocument(R"({"components": [
        {"type": "viewer", "x": 1, "y": 2}, {"type": "Viewer", "x": 9, "y": 9}, {"type": "viewer", "x": 3, "y": 4},
        {"type": "viewer2", "x": 7, "y": 7}]})");
    EXPECT_EQ(tutorial.getComponentPosition("viewer", 2.0f), XY<double>(3.0, 4.0));
    EXPECT_EQ(tutorial.getComponentPosition("view", 1.0f), XY<double>(0.0, 0.0));
    EXPECT_EQ(tutorial.getComponentPosition("", 1.0f), XY<double>(0.0, 0.0));
}

TEST(TutorialModel, PhaseCountStopsAtSixteenBits)
{
    std::string json = R"({"phases": [{})";
    for (size_t i = 1; i < Tutorial::kMaxPhases + 10; ++i)
        json += ",{}";
    json += "]}";
    const Tutorial tutorial = readDocument(json);
    EXPECT_EQ(tutorial.phases().size(), Tutorial::kMaxPhases);
    EXPECT_EQ(tutorial.getNumPhases(), 0xFFFF);
    EXPECT_TRUE(tutorial.getPhase(0xFFFE));
}

} // namespace
