#pragma once
// Opening a tool or test panel: the one way the library's diagnostic commands put a panel on the screen.
//
//     void openMyTool() { openToolPanel(new MyToolPanel(args), ToolPlacement::Centred); }
//
// and frame/LibraryStartup.cpp registers openMyTool (declared in frame/ToolCommands.h) as a command.
//
// The panel is placed as a top-level widget, then moved the least distance that keeps it wholly on the screen
// (a panel larger than the screen keeps its top-left, and so its title bar, visible), and shown. Redraws are
// held back meanwhile, so the screen paints the panel once, in its final place.

class Glob;

enum class ToolPlacement {
    Centred, // centred on the screen
    BottomLeft, // at the screen's bottom-left corner
    AtPointer, // centred on the pointer, where the user's attention already is
};

// Takes ownership of `panel` (made with new, unattached) and shows it. Answers the panel, now owned by the
// screen; or null when there is no screen, in which case the panel is destroyed. A null panel, or one that
// already has a parent, is refused: null is answered and the panel is left as it was.
Glob* openToolPanel(Glob* panel, ToolPlacement placement);
