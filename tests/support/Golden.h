#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace tq4x::test
{

/// The text of a file, with line ends as programs see them.
inline std::string ReadWholeFile(const std::filesystem::path& path)
{
    std::ifstream stream(path);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

/// Compares text with the golden file `tests/data/<name>`, byte for byte. On a mismatch the actual text is
/// stored under the golden's name in the build tree; a person reviews it and copies it over the golden.
inline void ExpectGolden(const std::string& actual, const std::string& name)
{
    const std::filesystem::path golden = std::filesystem::path(TQ4X_TEST_DATA) / name;
    if (std::filesystem::exists(golden) && ReadWholeFile(golden) == actual)
        return;
    const std::filesystem::path stored = std::filesystem::path(TQ4X_ACTUAL_FOLDER) / name;
    std::filesystem::create_directories(stored.parent_path());
    std::ofstream(stored, std::ios::binary) << actual;
    ADD_FAILURE() << "differs from the golden " << golden << "\n  actual: " << stored;
}

} // namespace tq4x::test
