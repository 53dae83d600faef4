#pragma once
// The functions that the library's commands run. frame/LibraryStartup.cpp registers every command in one
// place, in one order, but frame sits below the folders that own the panels, so it only declares the openers
// here; each folder defines its own (parampanels/ParamPanelCommands.cpp, for example).

// Opens the panel titled "UIBuilder Test Panel", which builds a typed-in description.
void openUIBuilderTestPanel();
// Opens a parameter panel built from parameters made in code, with a "Reset" button.
void openUIBuilderTest2Panel();
