#pragma once
// The functions that the library's commands run. frame/LibraryStartup.cpp registers every command in one
// place, in one order, but frame sits below the folders that own the panels, so it only declares the openers
// here; each folder defines its own (parampanels/ParamPanelCommands.cpp, for example).

#include "toolkit/support/CommandRegistry.h"

class Glob;
class Logger;

// Opens the panel titled "UIBuilder Test Panel", which builds a typed-in description.
void openUIBuilderTestPanel();
// Opens a parameter panel built from parameters made in code, with a "Reset" button.
void openUIBuilderTest2Panel();
// Opens the log window, centred; answers the panel shown, or null when there is no screen.
Logger* openLogWindow(const Cmd::Context& context);
// Opens the magnifier at the screen's bottom-left corner; answers it, or null when there is no screen.
Glob* showMagnifier();
