#include "cli/WrittenFiles.h"

#include <algorithm>
#include <array>

#include "cli/TimeOfChange.h"

namespace tq4x::cli
{
namespace
{

namespace fs = std::filesystem;

/// In the order in which the exporter writes them.
constexpr std::array<std::string_view, 8> Extensions = {".qmdl", ".qskla", ".qmata", ".qlgt",
                                                        ".qcam", ".qmdla", ".qenv",  ".qtex"};

std::size_t RankOf(const fs::path& file)
{
    const auto found = std::ranges::find(Extensions, file.extension().string());
    return static_cast<std::size_t>(found - Extensions.begin());
}

} // namespace

WrittenFiles::WrittenFiles(fs::path folder) : m_folder(std::move(folder)), m_before(Look()) {}

WrittenFiles::Snapshot WrittenFiles::Look() const
{
    Snapshot snapshot;
    for (const fs::path& folder : {m_folder, m_folder / "Textures"}) {
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            std::error_code gone;
            const bool isOurs = entry->is_regular_file(gone) && RankOf(entry->path()) < Extensions.size();
            if (isOurs) {
                snapshot[entry->path()] = {entry->file_size(gone), TimeOfChange(entry->path())};
            }
        }
    }
    return snapshot;
}

std::vector<WrittenFiles::File> WrittenFiles::Collect() const
{
    std::vector<File> files;
    for (const auto& [path, state] : Look()) {
        const auto before = m_before.find(path);
        if (before == m_before.end() || before->second != state) {
            files.push_back({path, state.Size});
        }
    }
    std::ranges::stable_sort(files, {}, [](const File& file) { return RankOf(file.Path); });
    return files;
}

} // namespace tq4x::cli
