#pragma once

#include "pipeline/OutputFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tq4x::test
{

inline void Fill(const std::filesystem::path& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

/// Writes a text file as the exporter does; false if it can't be opened or put in its place.
inline bool WriteAll(const std::filesystem::path& path, const std::string& text)
{
    OutputFile file;
    if (!file.Open(path.string()))
        return false;
    file.Write(text);
    return file.Commit();
}

/// Names of all that is in a folder, in order.
inline std::vector<std::string> NamesIn(const std::filesystem::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

} // namespace tq4x::test
