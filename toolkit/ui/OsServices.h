#pragma once
// OsServices: what the toolkit asks of the desktop around it: opening a file or an address with the program
// the user chose for it, showing files in the file browser, the clipboard, and handing files to other programs.
//
// No shell is ever involved. Helper programs are started with an argument vector (posix_spawnp), so a path
// holding spaces, quotes or "$(...)" is passed on as the one argument it is and never interpreted.
//
// Handing files out by dragging: the window layer cannot act as a drag source, so startFileDrag() puts the
// files on the clipboard as a list of file addresses (one "file://" address per line, the form file browsers
// accept when pasting); the user then pastes them where they wanted to drop them.

#include "toolkit/support/LightweightString.h"

#include <functional>
#include <string>
#include <vector>

class OsServices {
public:
    // Starts a helper program. `wait` asks for its exit status (answered in `exitStatus`); otherwise it runs
    // on by itself. Answers whether the program could be started.
    using Launcher = std::function<bool(const std::vector<std::string>& argv, bool wait, int& exitStatus)>;

    // Opens a file, folder or address ("https://...", "mailto:...", or "www...." taken as "http://www....")
    // with its default handler. Answers whether the handler could be started; an empty target is refused.
    static bool openWithDefaultHandler(const LightweightString<wchar_t>& target);
    // Shows the files selected in the file browser when the desktop offers that, else opens the folder of
    // the first one. Answers whether anything could be started.
    static bool revealInFileBrowser(const std::vector<LightweightString<wchar_t>>& paths);

    // The clipboard of the current screen; empty (and ignored) when there is no screen.
    static LightweightString<wchar_t> getClipboardText();
    static void setClipboardText(const LightweightString<wchar_t>& text);

    // Offers files to other programs as if dragged out (see above). Answers false when there is nothing to
    // offer or no screen to reach the clipboard through.
    static bool startFileDrag(const std::vector<LightweightString<wchar_t>>& paths);

    // ---- Building blocks, also used by the tests
    // The "file://" address of an absolute path, every byte outside the unreserved set and "/" escaped as
    // %XX. A relative path is made absolute against the working directory first.
    static std::string fileUri(const LightweightString<wchar_t>& path);
    // Whether the text is an address with a scheme ("https:", "mailto:") rather than a path.
    static bool looksLikeUri(const LightweightString<wchar_t>& text);
    // The clipboard text that lists files: their addresses, one per line, each line ended by CR LF.
    static LightweightString<wchar_t> makeUriList(const std::vector<LightweightString<wchar_t>>& paths);
    // The folder holding a path ("/" for a file at the root, "." for a bare name).
    static LightweightString<wchar_t> containingFolder(const LightweightString<wchar_t>& path);

    // Replaces the program starter, so tests see the argument vectors instead of starting programs. An empty
    // function restores the real one. Answers the previous one.
    static Launcher setLauncher(Launcher launcher);
};
