#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace tq4x
{

/// A text file that replaces its target safely: the text goes to a temporary file beside the target, and
/// `Commit` flushes, closes and renames it over the target. Without a successful `Commit` the target stays as
/// it was and the temporary file is removed. Lines end as the platform's text files do.
class OutputFile
{
public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    /// Opens the temporary file beside `path`. False if it can't be made, or if the target exists and may not
    /// be written.
    [[nodiscard]] bool Open(const std::string& path);

    /// Appends text. A failure is remembered and makes `Commit` fail.
    void Write(std::string_view text);

    /// Puts the file in the place of its target. False, with the target untouched, when any write, the flush,
    /// the close or the renaming failed.
    [[nodiscard]] bool Commit();

    const std::string& Path() const { return m_path; }

private:
    void Discard();

    std::FILE* m_stream = nullptr;
    std::string m_path;
    std::string m_temporaryPath;
    bool m_failed = false;
};

} // namespace tq4x
