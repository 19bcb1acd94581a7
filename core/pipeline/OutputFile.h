#pragma once

#include "pipeline/FileAccess.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace tq4x
{

/// A text file that replaces its target safely: the text goes to a temporary file beside the target, and
/// `Commit` flushes, closes and renames it over the target. Without a successful `Commit` the target stays as
/// it was and the temporary file is removed. Lines end as the platform's text files do.
///
/// A target that is a link stays one: what it leads to is replaced. Permissions of an existing target are
/// kept. The temporary file has a name that nothing else in the folder bears, so that what a killed process
/// left behind is neither used nor touched.
class OutputFile
{
public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    /// Opens the temporary file beside `path`. False if it can't be made, or if the target exists and may not
    /// be written or is not a regular file.
    [[nodiscard]] bool Open(const std::string& path);

    /// The same for a target in the file system's own form; what is written stays as it is, line ends
    /// included.
    [[nodiscard]] bool OpenBinary(const std::filesystem::path& target);

    /// Appends text. A failure is remembered and makes `Commit` fail.
    void Write(std::string_view text);

    /// Puts the file in the place of its target. False, with the target untouched, when any write, the flush,
    /// the close or the renaming failed.
    [[nodiscard]] bool Commit();

    /// The path as it was told to `Open`.
    const std::string& Path() const { return m_path; }

private:
    bool OpenTarget(const std::filesystem::path& target, LineEnds lineEnds);
    bool CreateTemporary(LineEnds lineEnds);
    void Discard();

    std::FILE* m_stream = nullptr;
    std::string m_path;
    std::filesystem::path m_target;
    std::filesystem::path m_temporary;
    bool m_failed = false;
};

/// Opens the file; reports code 2 with the path if that is not possible.
[[nodiscard]] bool OpenOutput(OutputFile& file, const std::string& path);

/// Commits the file; an error that names the path if that fails. The caller goes on all the same: a document
/// counts as written once it could be opened.
void CommitOutput(OutputFile& file);

} // namespace tq4x
