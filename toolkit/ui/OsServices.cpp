#include "toolkit/ui/OsServices.h"

#include "toolkit/ui/Screen.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace {

// Starts the program found on PATH with the argument vector as it is. Its output goes nowhere: helper
// programs chatter, and the editor's terminal (if any) is not theirs.
bool spawnProgram(const std::vector<std::string>& argv, bool wait, int& exitStatus)
{
    if (argv.empty() || argv.front().empty())
        return false;
    std::vector<char*> args;
    args.reserve(argv.size() + 1);
    for (const std::string& a : argv)
        args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    const int rc = posix_spawnp(&pid, args[0], &actions, nullptr, args.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (rc != 0)
        return false;

    if (!wait) {
        // Reaped on the side so that no zombie is left and the user-interface thread never waits for it.
        std::thread([pid] {
            int status = 0;
            while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
            }
        }).detach();
        return true;
    }
    int status = 0;
    pid_t got = 0;
    while ((got = waitpid(pid, &status, 0)) < 0 && errno == EINTR) {
    }
    if (got != pid)
        return false;
    // posix_spawnp reports a missing program as exit status 127 of the child on some systems.
    exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + (WIFSIGNALED(status) ? WTERMSIG(status) : 0);
    return exitStatus != 127;
}

OsServices::Launcher& launcher()
{
    static OsServices::Launcher current = spawnProgram;
    return current;
}

bool launch(const std::vector<std::string>& argv, bool wait, int& exitStatus)
{
    return launcher()(argv, wait, exitStatus);
}

std::string absoluteUtf8(const LightweightString<wchar_t>& path)
{
    std::string utf8 = toUTF8(path.view()).str();
    if (!utf8.empty() && utf8.front() == '/')
        return utf8;
    std::string cwd;
    if (char* here = getcwd(nullptr, 0)) {
        cwd = here;
        std::free(here);
    }
    if (cwd.empty() || cwd.back() != '/')
        cwd += '/';
    return cwd + utf8;
}

bool isUnreserved(unsigned char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.'
        || c == '_' || c == '~';
}

} // namespace

std::string OsServices::fileUri(const LightweightString<wchar_t>& path)
{
    static const char hex[] = "0123456789ABCDEF";
    std::string uri = "file://";
    for (unsigned char c : absoluteUtf8(path)) {
        if (isUnreserved(c) || c == '/') {
            uri += static_cast<char>(c);
        } else {
            uri += '%';
            uri += hex[c >> 4];
            uri += hex[c & 15];
        }
    }
    return uri;
}

bool OsServices::looksLikeUri(const LightweightString<wchar_t>& text)
{
    // A scheme is a letter followed by letters, digits, "+", "-" or "."; one letter alone would be a drive.
    const size_t colon = text.find(L':');
    if (colon == LightweightString<wchar_t>::npos || colon < 2)
        return false;
    for (size_t i = 0; i < colon; ++i) {
        const wchar_t c = text[i];
        const bool letter = (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
        const bool other = (c >= L'0' && c <= L'9') || c == L'+' || c == L'-' || c == L'.';
        if (!letter && (i == 0 || !other))
            return false;
    }
    return true;
}

LightweightString<wchar_t> OsServices::makeUriList(const std::vector<LightweightString<wchar_t>>& paths)
{
    std::string list;
    for (const auto& path : paths) {
        if (path.empty())
            continue;
        list += fileUri(path);
        list += "\r\n";
    }
    return fromUTF8(list);
}

LightweightString<wchar_t> OsServices::containingFolder(const LightweightString<wchar_t>& path)
{
    std::wstring text = path.str();
    while (text.size() > 1 && text.back() == L'/')
        text.pop_back();
    const size_t slash = text.rfind(L'/');
    if (slash == std::wstring::npos)
        return L".";
    if (slash == 0)
        return L"/";
    return LightweightString<wchar_t>(text.substr(0, slash));
}

bool OsServices::openWithDefaultHandler(const LightweightString<wchar_t>& target)
{
    if (target.empty())
        return false;
    // A path is passed absolute so that a name starting with "-" cannot pass for an option of the helper.
    // A bare "www." address is a web address, not a file of that name in the working folder.
    std::string argument;
    if (looksLikeUri(target))
        argument = toUTF8(target.view()).str();
    else if (target.startsWith(L"www."))
        argument = "http://" + toUTF8(target.view()).str();
    else
        argument = absoluteUtf8(target);
    int status = 0;
    return launch({"xdg-open", argument}, false, status);
}

bool OsServices::revealInFileBrowser(const std::vector<LightweightString<wchar_t>>& paths)
{
    std::vector<LightweightString<wchar_t>> files;
    for (const auto& p : paths)
        if (!p.empty())
            files.push_back(p);
    if (files.empty())
        return false;

    // The desktop's file-manager service selects the files themselves; it is only there on a session bus.
    const char* bus = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (bus && *bus) {
        // dbus-send separates array elements by commas; fileUri escapes every comma, so none is ambiguous.
        std::string items = "array:string:";
        for (size_t i = 0; i < files.size(); ++i) {
            if (i)
                items += ',';
            items += fileUri(files[i]);
        }
        int status = -1;
        const bool started = launch({"dbus-send", "--session", "--print-reply", "--reply-timeout=2000",
                                     "--dest=org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                                     "org.freedesktop.FileManager1.ShowItems", items, "string:"},
                                    true, status);
        if (started && status == 0)
            return true;
    }
    return openWithDefaultHandler(containingFolder(files.front()));
}

LightweightString<wchar_t> OsServices::getClipboardText()
{
    Screen* screen = Screen::current();
    return screen ? screen->getClipboardText() : LightweightString<wchar_t>();
}

void OsServices::setClipboardText(const LightweightString<wchar_t>& text)
{
    if (Screen* screen = Screen::current())
        screen->setClipboardText(text);
}

bool OsServices::startFileDrag(const std::vector<LightweightString<wchar_t>>& paths)
{
    const LightweightString<wchar_t> list = makeUriList(paths);
    Screen* screen = Screen::current();
    if (list.empty() || !screen)
        return false;
    screen->setClipboardText(list);
    return true;
}

OsServices::Launcher OsServices::setLauncher(Launcher replacement)
{
    Launcher previous = launcher();
    launcher() = replacement ? std::move(replacement) : Launcher(spawnProgram);
    return previous;
}
