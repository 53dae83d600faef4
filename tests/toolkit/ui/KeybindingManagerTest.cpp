// Key bindings: the user's file laid over the defaults, and the whole file ignored when any line is bad.
#include "toolkit/ui/KeybindingManager.h"

#include "toolkit/support/FileTestSupport.h"
#include "toolkit/ui/Event.h"

#include <gtest/gtest.h>

namespace {

using Keys = std::vector<KeyBinding>;

class KeyBindings : public ::testing::Test {
protected:
    KeybindingManager& load(std::string_view bytes)
    {
        FileTestSupport::writeBytes(m_scratch.file("keybindings"), bytes);
        m_manager.setFile(m_scratch.file("keybindings"));
        return m_manager;
    }

    FileTestSupport::ScratchFolder m_scratch { "tessel-keys" };
    KeybindingManager m_manager { "" };
};

TEST_F(KeyBindings, MissingFileGivesTheDefaults)
{
    m_manager.setFile(m_scratch.file("absent"));
    EXPECT_FALSE(m_manager.isFromFile());
    EXPECT_EQ(m_manager.getKeysAssignedToCommand("TogglePlay"), (Keys { { ' ', 0 } }));
    EXPECT_EQ(m_manager.getKeysAssignedToCommand("Undo"), (Keys { { 'Z', Event::Ctrl } }));
    EXPECT_TRUE(m_manager.getKeysAssignedToCommand("NoSuchCommand").empty());
}

TEST_F(KeyBindings, FileReplacesTheKeysOfTheCommandsItNames)
{
    KeybindingManager& keys = load("# mine\nUndo\tCtrl+Shift+z, Cmd+Z\r\n\nSlowMotion\tAlt+F3\n");
    EXPECT_TRUE(keys.isFromFile());
    EXPECT_EQ(keys.getKeysAssignedToCommand("Undo"),
              (Keys { { 'Z', Event::Ctrl | Event::Shift }, { 'Z', Event::Cmd } }));
    EXPECT_EQ(keys.getKeysAssignedToCommand("SlowMotion"), (Keys { { Event::KeyF1 + 2, Event::Alt } }));
    EXPECT_EQ(keys.getKeysAssignedToCommand("TogglePlay"), (Keys { { ' ', 0 } }));
}

TEST_F(KeyBindings, EmptyKeyListUnbindsTheCommand)
{
    EXPECT_TRUE(load("TogglePlay\t\n").getKeysAssignedToCommand("TogglePlay").empty());
}

TEST_F(KeyBindings, AnyBadLineMakesTheWholeFileFallBackToTheDefaults)
{
    for (const char* bad : { "Undo Ctrl+Z\n", "\tSpace\n", "Undo\tCtrl+\n", "Undo\tHyper+Z\n", "Undo\tF13\n",
                             "Undo\tF0\n", "Undo\tCtrl+Ctrl+Z\n", "Undo\tZ,Y\n", "Undo\tZ\nUndo\tY\n",
                             "Undo\t\xc3\xa9\n", "TogglePlay\tK\nUndo\tZ, \n" }) {
        KeybindingManager& keys = load(bad);
        EXPECT_FALSE(keys.isFromFile()) << bad;
        EXPECT_EQ(keys.getKeysAssignedToCommand("Undo"), (Keys { { 'Z', Event::Ctrl } })) << bad;
        EXPECT_EQ(keys.getKeysAssignedToCommand("TogglePlay"), (Keys { { ' ', 0 } })) << bad;
    }
}

TEST_F(KeyBindings, KeyTextReadsBackAsTheSameKey)
{
    for (const char* text : { "Space", "Ctrl+Z", "Cmd+Ctrl+Alt+Shift+PageDown", "F1", "F12", "Shift+Tab", "Return",
                              "Escape", "Delete", "Backspace", "Insert", "Home", "End", "Up", "7", "Alt+/" }) {
        const auto key = KeybindingManager::keyFromString(text);
        ASSERT_TRUE(key) << text;
        EXPECT_EQ(toUTF8(KeybindingManager::keyToString(*key).view()).str(), text);
    }
}

TEST_F(KeyBindings, ReloadPicksUpAnEditedFile)
{
    KeybindingManager& keys = load("TogglePlay\tK\n");
    FileTestSupport::writeBytes(m_scratch.file("keybindings"), "TogglePlay\tL\n");
    keys.reload();
    EXPECT_EQ(keys.getKeysAssignedToCommand("TogglePlay"), (Keys { { 'L', 0 } }));
}

} // namespace
