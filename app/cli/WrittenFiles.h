#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tq4x::cli
{

/// Finds out which files an export wrote, by comparing its folder before and after.
class WrittenFiles
{
public:
    /// Looks at the folder and at its folder of textures. Neither needs to exist.
    explicit WrittenFiles(std::filesystem::path folder);

    struct File
    {
        std::filesystem::path Path; ///< below the folder, as that was given
        std::uintmax_t Size = 0;
    };

    /// Files of the exporter's kinds that came or changed since: models first, textures last, else by name.
    [[nodiscard]] std::vector<File> Collect() const;

private:
    struct State
    {
        std::uintmax_t Size = 0;
        std::int64_t Time = 0; ///< of the last change, in the system's units

        bool operator==(const State&) const = default;
    };

    using Snapshot = std::map<std::filesystem::path, State>;

    [[nodiscard]] Snapshot Look() const;

    std::filesystem::path m_folder;
    Snapshot m_before;
};

} // namespace tq4x::cli
