#include "pipeline/OutputFile.h"

#include <filesystem>
#include <system_error>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;

/// True for a target that is missing, or is a regular file that this process may write.
bool MayReplace(const std::string& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found)
        return true;
    if (status.type() != fs::file_type::regular)
        return false;
    std::FILE* stream = std::fopen(path.c_str(), "r+");
    return stream != nullptr && std::fclose(stream) == 0;
}

} // namespace

OutputFile::~OutputFile()
{
    Discard();
}

bool OutputFile::Open(const std::string& path)
{
    Discard();
    m_path = path;
    m_temporaryPath = path + ".part";
    m_failed = false;
    if (!MayReplace(path))
        return false;
    m_stream = std::fopen(m_temporaryPath.c_str(), "w");
    return m_stream != nullptr;
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
        fs::rename(m_temporaryPath, m_path, error);
        if (!error)
            return true;
    }
    fs::remove(m_temporaryPath, error);
    return false;
}

void OutputFile::Discard()
{
    if (m_stream == nullptr)
        return;
    std::fclose(m_stream);
    m_stream = nullptr;
    std::error_code error;
    fs::remove(m_temporaryPath, error);
}

} // namespace tq4x
