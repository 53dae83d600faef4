// Set-up shared by the hint and device tests: private preferences and key bindings in a scratch folder, an
// off-screen screen, and a record of what listeners heard.
#pragma once

#include "toolkit/support/FileTestSupport.h"

#include "toolkit/support/Preferences.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/KeybindingManager.h"
#include "toolkit/ui/UifStd.h"

#include <gtest/gtest.h>

class UIStateFixture : public ::testing::Test {
protected:
    UIStateFixture()
    {
        prefs().setFile(m_scratch.file("preferences"));
        KeybindingManager::instance().setFile(m_scratch.file("keybindings"));
    }
    ~UIStateFixture() override
    {
        UifStd::setWindowArrangement(WindowArrangement());
        KeybindingManager::instance().setFile(KeybindingManager::defaultPath());
        prefs().setFile(Preferences::defaultPath());
    }

    void writeKeybindings(std::string_view bytes)
    {
        FileTestSupport::writeBytes(m_scratch.file("keybindings"), bytes);
        KeybindingManager::instance().reload();
    }

    FileTestSupport::ScratchFolder m_scratch { "tessel-uistate" };
    UiHarness m_ui;
};
