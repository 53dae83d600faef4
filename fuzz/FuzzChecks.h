// What the fuzz targets share: a broken promise stops the run loudly, so libFuzzer keeps the input that broke
// it, and a target that reads through a real file gets a scratch folder of its own.
#pragma once

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

inline void check(bool condition, const char* what)
{
    if (!condition) {
        std::fprintf(stderr, "%s: %s\n", program_invocation_short_name, what);
        std::abort();
    }
}

// The path of a file called `name` in a folder of this run's own, removed when the run ends.
inline const std::string& scratchFile(const char* name)
{
    struct ScratchFolder {
        explicit ScratchFolder(const char* name)
            : folder(std::filesystem::temp_directory_path()
                     / ("tessel-fuzz-" + std::string(name) + "-" + std::to_string(::getpid())))
        {
            std::filesystem::create_directories(folder);
        }
        ~ScratchFolder()
        {
            std::error_code error;
            std::filesystem::remove_all(folder, error);
        }
        std::filesystem::path folder;
    };
    static const ScratchFolder scratch(name);
    static const std::string path = (scratch.folder / name).string();
    return path;
}
