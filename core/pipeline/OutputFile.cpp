#include "pipeline/OutputFile.h"

#include "pipeline/MessageLog.h"

#include <system_error>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;

constexpr int MaxLinks = 40;             // as many as the usual systems follow
constexpr int MaxTemporaryFiles = 10000; // left by killed processes in one folder

constexpr fs::perms AnyWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

/// What a chain of links leads to, whether it exists or not; empty if the chain is too long.
fs::path ResolveLinks(fs::path path)
{
    std::error_code error;
    for (int i = 0; i < MaxLinks; ++i) {
        if (!fs::is_symlink(fs::symlink_status(path, error)))
            return path;
        const fs::path next = fs::read_symlink(path, error);
        if (error)
            return {};
        path = path.parent_path() / next;
    }
    return {};
}

/// True for a target that is missing, or is a regular file that may be written. The write bits count for
/// every user: whoever took them away wants the file to stay.
bool MayReplace(const fs::path& target)
{
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (status.type() == fs::file_type::not_found)
        return true;
    if (status.type() != fs::file_type::regular || (status.permissions() & AnyWrite) == fs::perms::none)
        return false;
    std::FILE* stream = OpenForUpdate(target);
    return stream != nullptr && std::fclose(stream) == 0;
}

void KeepPermissions(const fs::path& target, const fs::path& temporary)
{
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (status.type() == fs::file_type::regular)
        fs::permissions(temporary, status.permissions(), error);
}

} // namespace

OutputFile::~OutputFile()
{
    Discard();
}

bool OutputFile::Open(const std::string& path)
{
    m_path = path;
    return OpenTarget(FilePath(path), LineEnds::Native);
}

bool OutputFile::OpenBinary(const fs::path& target)
{
    m_path = target.string();
    return OpenTarget(target, LineEnds::AsGiven);
}

bool OutputFile::OpenTarget(const fs::path& target, LineEnds lineEnds)
{
    Discard();
    m_failed = false;
    m_target = ResolveLinks(target);
    return !m_target.empty() && MayReplace(m_target) && CreateTemporary(lineEnds);
}

bool OutputFile::CreateTemporary(LineEnds lineEnds)
{
    const fs::path folder = m_target.parent_path();
    std::error_code error;
    for (int i = 0; i < MaxTemporaryFiles; ++i) {
        m_temporary = folder / (".tq4x_" + std::to_string(i) + ".part");
        m_stream = CreateNewFile(m_temporary, lineEnds);
        if (m_stream != nullptr)
            return true;
        if (!fs::exists(fs::symlink_status(m_temporary, error)))
            return false;
    }
    return false;
}

void OutputFile::Write(std::string_view text)
{
    if (m_stream == nullptr || std::fwrite(text.data(), 1, text.size(), m_stream) != text.size())
        m_failed = true;
}

bool OutputFile::Commit()
{
    if (m_stream == nullptr)
        return false;
    const bool flushed = std::fflush(m_stream) == 0;
    const bool closed = std::fclose(m_stream) == 0;
    m_stream = nullptr;
    std::error_code error;
    if (flushed && closed && !m_failed) {
        KeepPermissions(m_target, m_temporary);
        fs::rename(m_temporary, m_target, error);
        if (!error)
            return true;
    }
    fs::remove(m_temporary, error);
    return false;
}

void OutputFile::Discard()
{
    if (m_stream == nullptr)
        return;
    std::fclose(m_stream);
    m_stream = nullptr;
    std::error_code error;
    fs::remove(m_temporary, error);
}

bool OpenOutput(OutputFile& file, const std::string& path)
{
    if (file.Open(path))
        return true;
    ReportMessage(MessageCode::CannotOpenFile, path);
    return false;
}

void CommitOutput(OutputFile& file)
{
    if (!file.Commit())
        PrintMessage("Can't write file(" + file.Path() + ").", Severity::Error);
}

} // namespace tq4x
