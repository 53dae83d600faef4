#pragma once
// Scratch folders and file helpers shared by the tutorial tests.

#include "toolkit/support/LightweightString.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

namespace tutorial_test {

// A folder of its own for each test, removed afterwards.
class ScratchFolder {
public:
    ScratchFolder()
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        m_path = std::filesystem::temp_directory_path()
            / ("tessel-tutorials-" + std::to_string(::getpid()) + "-" + info->test_suite_name() + "-" + info->name());
        std::filesystem::remove_all(m_path);
        std::filesystem::create_directories(m_path);
    }
    ~ScratchFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    LightweightString<wchar_t> wide(const std::string& name = {}) const
    {
        return fromUTF8((name.empty() ? m_path : m_path / name).string());
    }

private:
    std::filesystem::path m_path;
};

inline void writeBytes(const std::filesystem::path& file, const std::string& bytes)
{
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << bytes;
}

inline std::string readBytes(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

} // namespace tutorial_test
