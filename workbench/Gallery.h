#pragma once
// The workbench gallery: named pages, each a panel that shows one family of components in its states.
//
// A page lives in a file of its own (workbench/pages/<Family>Page.cpp) and registers itself with a static
// GalleryPageRegistrar, so adding a family touches nothing else:
//
//     static GalleryPageRegistrar page("Buttons", [] { return makeButtonsPanel(); });
//
// The build function makes the page's panel, unattached; the workbench places it, shows it and then calls
// `shown` (when given) for what needs the panel on the screen, such as opening a menu.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

class Glob;

struct GalleryPage {
    std::string name;
    std::function<Glob*()> build;
    std::function<void(Glob*)> shown;
};

class Gallery {
public:
    // Refuses (answers false) a page without a name or build function, or with a name already taken.
    static bool add(GalleryPage page);
    // Every page, by name, so that listings and file sets do not depend on the order files were linked in.
    static std::vector<GalleryPage> pages();
    // Null when there is no page of that name.
    static const GalleryPage* find(std::string_view name);
    // The file name a page or command is saved under: letters, digits, '-' and '_' kept, the rest '-'.
    static std::string fileNameFor(std::string_view name);
};

struct GalleryPageRegistrar {
    GalleryPageRegistrar(std::string name, std::function<Glob*()> build, std::function<void(Glob*)> shown = {});
};
