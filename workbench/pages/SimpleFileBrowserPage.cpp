// Gallery page: the simple file browser, one column of names, on the folder the workbench runs in.
#include "lists/SimpleFileBrowser.h"
#include "toolkit/support/LightweightString.h"
#include "workbench/Gallery.h"

#include <filesystem>

namespace {

Glob* buildSimpleFileBrowserPage()
{
    FileBrowserBase::InitArgs args(
        UIString(L"Choose a folder"), fromUTF8(std::filesystem::current_path().string()), 420, 360);
    return new SimpleFileBrowser(args);
}

GalleryPageRegistrar simpleFileBrowserPage("Simple file browser", buildSimpleFileBrowserPage);

} // namespace
