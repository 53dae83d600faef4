// Scratch folders, raw file bytes and environment overrides shared by the tests that touch the file system.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>

namespace FileTestSupport {

namespace fs = std::filesystem;

// A fresh folder named after the running test and process, removed with everything in it afterwards.
class ScratchFolder {
public:
    explicit ScratchFolder(const std::string& prefix = "tessel")
        : m_path(fs::temp_directory_path()
              / (prefix + "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name() + "-"
                  + std::to_string(::getpid())))
    {
        fs::remove_all(m_path);
        fs::create_directories(m_path);
    }
    ~ScratchFolder()
    {
        std::error_code error;
        fs::remove_all(m_path, error);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const fs::path& path() const { return m_path; }
    std::string file(const std::string& name) const { return (m_path / name).string(); }
    size_t entries() const
    {
        return static_cast<size_t>(std::distance(fs::directory_iterator(m_path), fs::directory_iterator()));
    }

private:
    fs::path m_path;
};

inline void writeBytes(const fs::path& path, std::string_view bytes)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string readBytes(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Sets (or with nullptr unsets) an environment variable for one scope and restores what was there.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value)
        : m_name(name)
    {
        if (const char* old = std::getenv(name))
            m_old = old;
        value ? ::setenv(name, value, 1) : ::unsetenv(name);
    }
    ~ScopedEnv() { m_old ? ::setenv(m_name.c_str(), m_old->c_str(), 1) : ::unsetenv(m_name.c_str()); }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    std::string m_name;
    std::optional<std::string> m_old;
};

} // namespace FileTestSupport
