#include "workbench/Gallery.h"

#include <algorithm>
#include <cstdio>

namespace {

std::vector<GalleryPage>& registry()
{
    static std::vector<GalleryPage> pages;
    return pages;
}

} // namespace

bool Gallery::add(GalleryPage page)
{
    if (page.name.empty() || !page.build || find(page.name))
        return false;
    registry().push_back(std::move(page));
    return true;
}

std::vector<GalleryPage> Gallery::pages()
{
    std::vector<GalleryPage> sorted = registry();
    std::sort(sorted.begin(), sorted.end(), [](const GalleryPage& a, const GalleryPage& b) { return a.name < b.name; });
    return sorted;
}

const GalleryPage* Gallery::find(std::string_view name)
{
    for (const GalleryPage& page : registry())
        if (page.name == name)
            return &page;
    return nullptr;
}

std::string Gallery::fileNameFor(std::string_view name)
{
    std::string out;
    for (char c : name) {
        const bool keep = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
        out += keep ? c : '-';
    }
    return out.empty() ? std::string("unnamed") : out;
}

GalleryPageRegistrar::GalleryPageRegistrar(std::string name, std::function<Glob*()> build,
                                           std::function<void(Glob*)> shown)
{
    const std::string copy = name;
    if (!Gallery::add(GalleryPage{std::move(name), std::move(build), std::move(shown)}))
        std::fprintf(stderr, "tessel-workbench: gallery page \"%s\" not registered (duplicate or empty)\n", copy.c_str());
}
