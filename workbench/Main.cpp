// tessel-workbench: the host program. It links the component library the way the editor does (loading it runs
// the library's static initialisers, which register its commands), and shows the gallery of components and the panels
// of the registered commands, in a window or rendered to PNG files.
//
//   tessel-workbench                       a window with the gallery (needs a display)
//   tessel-workbench --page NAME           the same, opened on that page
//   tessel-workbench --list                the registered command names, one per line
//   tessel-workbench --pages               the gallery page names, one per line
//   tessel-workbench --run NAME            opens that command's panel in a window
//   tessel-workbench --gallery DIR         renders every page and command panel to DIR/<name>.png
//   --screenshot FILE                      with --run, or in gallery window mode: writes the window's picture
//                                          once it has settled, then exits
#include "toolkit/gfx/ImageIO.h"
#include "toolkit/platform/SdlBackend.h"
#include "toolkit/support/CommandRegistry.h"
#include "toolkit/support/MainThread.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/ui/VerticalScrollingBase.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"


#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

constexpr uint16_t renderWidth = 1280;
constexpr uint16_t renderHeight = 800;
constexpr int windowWidth = 1480;
constexpr int windowHeight = 900;

struct Options {
    bool list = false;
    bool pages = false;
    std::string run;
    std::string gallery;
    std::string screenshot;
    std::string page;
};

void usage(std::FILE* to)
{
    std::fputs("usage: tessel-workbench [--list | --pages | --gallery DIR | --run NAME [--screenshot FILE] |\n"
               "                         [--page NAME] [--screenshot FILE]]\n",
               to);
}

// Answers false (after saying why) for arguments that make no sense.
bool parse(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        auto value = [&](std::string& into) {
            if (i + 1 >= argc || argv[i + 1][0] == '\0') {
                std::fprintf(stderr, "tessel-workbench: %s needs a value\n", argv[i]);
                return false;
            }
            into = argv[++i];
            return true;
        };
        if (arg == "--list")
            options.list = true;
        else if (arg == "--pages")
            options.pages = true;
        else if (arg == "--run") {
            if (!value(options.run))
                return false;
        } else if (arg == "--gallery") {
            if (!value(options.gallery))
                return false;
        } else if (arg == "--screenshot") {
            if (!value(options.screenshot))
                return false;
        } else if (arg == "--page") {
            if (!value(options.page))
                return false;
        } else if (arg == "--help" || arg == "-h") {
            usage(stdout);
            std::exit(0);
        } else {
            std::fprintf(stderr, "tessel-workbench: unknown option %s\n", argv[i]);
            return false;
        }
    }
    return true;
}

std::vector<LightweightString<char>> commandNames()
{
    return CommandRegistry::instance().getNames();
}

// Turns of the loop until deferred catch-ups (scroll extents, focus) have run and the picture is stable.
void settle(Screen& screen)
{
    for (int i = 0; i < 4; ++i)
        screen.processEvents();
}

GlobBox topLevelArea(const Screen& screen)
{
    GlobBox area;
    for (const Glob* top : screen.getTopLevels())
        area = area.empty() ? top->getBox() : area.unionWith(top->getBox());
    return area.empty() ? area : area.expanded(8).intersection(screen.getArea());
}

// Shows a gallery page on the screen, placed where `placeFor` says for its size (bottom-left corner), or
// centred when no placement is given.
Glob* showPage(const GalleryPage& page, const std::function<XY<int>(XY<int>)>& placeFor = {})
{
    Glob* panel = page.build();
    if (!panel)
        return nullptr;
    Screen* screen = Screen::current();
    const XY<int> size = panel->getSize();
    XY<int> pos = placeFor ? placeFor(size) : XY<int>{(screen->getSize().x - size.x) / 2, (screen->getSize().y - size.y) / 2};
    pos = GlobManager::getSafePosForGlob(pos, size);
    panel->setPos(pos.x, pos.y);
    if (!GlobManager::realize(panel)) {
        Glob::destroy(panel);
        return nullptr;
    }
    if (page.shown)
        page.shown(panel);
    return panel;
}

// Opens something on a fresh off-screen screen and writes the picture of what appeared.
bool renderToPng(const std::function<bool()>& open, const std::string& path)
{
    Screen screen(renderWidth, renderHeight);
    if (!open())
        return false;
    settle(screen);
    const GlobBox area = topLevelArea(screen);
    if (area.empty())
        return false;
    return Pictor::writePng(screen.grab(area), path);
}

int renderGallery(const std::string& dir)
{
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    if (ec) {
        std::fprintf(stderr, "tessel-workbench: cannot make %s: %s\n", dir.c_str(), ec.message().c_str());
        return 1;
    }
    int failures = 0;
    auto report = [&](bool ok, const std::string& what, const std::string& path) {
        if (ok) {
            std::printf("%s\n", path.c_str());
        } else {
            std::fprintf(stderr, "tessel-workbench: %s showed nothing\n", what.c_str());
            ++failures;
        }
    };
    for (const GalleryPage& page : Gallery::pages()) {
        const std::string path = (std::filesystem::path(dir) / (Gallery::fileNameFor(page.name) + ".png")).string();
        report(renderToPng([&] { return showPage(page) != nullptr; }, path), "page " + page.name, path);
    }
    for (const LightweightString<char>& name : commandNames()) {
        const std::string file = "command-" + Gallery::fileNameFor(name.view()) + ".png";
        const std::string path = (std::filesystem::path(dir) / file).string();
        report(renderToPng([&] { return CommandRegistry::instance().run(name) && Screen::current(); }, path),
               "command " + name.str(), path);
    }
    std::fflush(stdout);
    return failures == 0 ? 0 : 1;
}

std::unique_ptr<SdlBackend> openWindow(bool quiet = false)
{
    SdlBackend::Options options;
    options.title = "tessel workbench";
    options.width = windowWidth;
    options.height = windowHeight;
    auto backend = SdlBackend::create(options);
    if (!backend && !quiet)
        std::fprintf(stderr, "tessel-workbench: no window (%s)\n", SdlBackend::lastError().c_str());
    return backend;
}

bool writeWindowPicture(Screen& screen, SdlBackend& backend, const std::string& path)
{
    settle(screen);
    const Pictor::Image picture = backend.readPixels();
    if (picture.isNull() || !Pictor::writePng(picture, path)) {
        std::fprintf(stderr, "tessel-workbench: could not write %s\n", path.c_str());
        return false;
    }
    std::printf("%s\n", path.c_str());
    return true;
}

// The gallery in a window: a chooser on the left, the chosen page beside it.
class GalleryWindow {
public:
    explicit GalleryWindow(Screen& screen) : m_screen(screen) {}

    void build(const std::string& firstPage)
    {
        StandardPanel::InitArgs args(L"Gallery", 0, 0, StandardPanel::NoWidgets, UifStd::getColourScheme());
        const int rowWidth = 220;
        const XY<int> size = StandardPanel::calcPanelSize(rowWidth + VerticalScrollingBase::scrollBarWidth(),
                                                          m_screen.getSize().y - 40, args);
        args.width = static_cast<uint16_t>(size.x);
        args.height = static_cast<uint16_t>(size.y);
        auto* chooser = new VerticalScrollingBase(args);
        chooser->setPos(8, m_screen.getSize().y - 8 - size.y);
        GlobManager::realize(chooser);
        m_chooser = GlobWatch(chooser);

        Glob* area = chooser->getScrollArea();
        auto addRow = [&](const std::wstring& label, std::function<void()> action) {
            auto* row = area->addWidget<ChooserRow>(
                ChooserRow::InitArgs(LightweightString<wchar_t>(label), std::move(action), static_cast<uint16_t>(rowWidth),
                                     static_cast<uint16_t>(UifStd::getButtonHeight()), chooser->getPalette()),
                m_rows.empty() ? Glob::UserTopLeft(0, UifStd::getRowGap()) : Glob::Below(UifStd::getRowGap()));
            m_rows.push_back(row);
            return row;
        };
        for (const GalleryPage& page : Gallery::pages()) {
            const size_t index = m_rows.size();
            addRow(std::wstring(fromUTF8(page.name).view()),
                   [this, page, index] { choose(index, [this, page] { return openPage(page); }); });
        }
        for (const LightweightString<char>& name : commandNames()) {
            const size_t index = m_rows.size();
            addRow(L"Command: " + std::wstring(fromUTF8(name.view()).view()), [this, name, index] {
                choose(index, [name] { return CommandRegistry::instance().run(name); });
            });
        }
        chooser->updateScrollExtent();

        const std::vector<GalleryPage> pages = Gallery::pages();
        size_t first = 0;
        for (size_t i = 0; i < pages.size(); ++i)
            if (pages[i].name == firstPage)
                first = i;
        if (!pages.empty())
            choose(first, [this, page = pages[first]] { return openPage(page); });
    }

private:
    // Beside the chooser, top edges level.
    bool openPage(const GalleryPage& page)
    {
        const Glob* chooser = m_chooser.get();
        const int left = chooser ? chooser->getBox().right() + 12 : 8;
        const int top = chooser ? chooser->getBox().top() : m_screen.getSize().y - 8;
        return showPage(page, [&](XY<int> size) { return XY<int>{left, top - size.y}; }) != nullptr;
    }

    // Replaces what the previous choice opened by what this one opens.
    void choose(size_t rowIndex, const std::function<bool()>& open)
    {
        for (const GlobWatch& w : m_opened)
            Glob::destroy(w.get());
        m_opened.clear();
        const std::vector<Glob*> before = m_screen.getTopLevels();
        open();
        for (Glob* top : m_screen.getTopLevels())
            if (std::find(before.begin(), before.end(), top) == before.end())
                m_opened.emplace_back(top);
        for (size_t i = 0; i < m_rows.size(); ++i)
            if (is_good_glob_ptr(m_rows[i]))
                m_rows[i]->setSelected(i == rowIndex);
    }

    Screen& m_screen;
    GlobWatch m_chooser;
    std::vector<ChooserRow*> m_rows;
    std::vector<GlobWatch> m_opened;
};

int runWindowed(const Options& options)
{
    auto backend = openWindow();
    if (!backend)
        return 1;
    SdlBackend* window = backend.get();
    Screen screen(static_cast<uint16_t>(window->getWindowSize().x), static_cast<uint16_t>(window->getWindowSize().y),
                  std::move(backend));
    GalleryWindow gallery(screen);
    if (!options.run.empty()) {
        if (!CommandRegistry::instance().run(LightweightString<char>(options.run))) {
            std::fprintf(stderr, "tessel-workbench: no command named \"%s\"\n", options.run.c_str());
            return 1;
        }
        if (screen.getTopLevels().empty()) {
            std::fprintf(stderr, "tessel-workbench: command \"%s\" opened nothing\n", options.run.c_str());
            return 1;
        }
    } else {
        gallery.build(options.page);
    }
    if (!options.screenshot.empty())
        return writeWindowPicture(screen, *window, options.screenshot) ? 0 : 1;
    SdlBackend::run(screen);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    if (!parse(argc, argv, options)) {
        usage(stderr);
        return 2;
    }
    setMainThread();

    if (options.list) {
        for (const LightweightString<char>& name : commandNames())
            std::printf("%s\n", name.c_str());
        return 0;
    }
    if (options.pages) {
        for (const GalleryPage& page : Gallery::pages())
            std::printf("%s\n", page.name.c_str());
        return 0;
    }
    if (!options.gallery.empty())
        return renderGallery(options.gallery);

    if (!options.run.empty() && !options.screenshot.empty() && !std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY")) {
        // No display: the command's panel is drawn off screen instead of in a window.
        const LightweightString<char> name(options.run);
        if (!CommandRegistry::instance().contains(name)) {
            std::fprintf(stderr, "tessel-workbench: no command named \"%s\"\n", options.run.c_str());
            return 1;
        }
        if (!renderToPng([&] { return CommandRegistry::instance().run(name); }, options.screenshot)) {
            std::fprintf(stderr, "tessel-workbench: command \"%s\" showed nothing\n", options.run.c_str());
            return 1;
        }
        std::printf("%s\n", options.screenshot.c_str());
        return 0;
    }
    return runWindowed(options);
}
