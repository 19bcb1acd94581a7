#include "cli/ReplaceFile.h"

#include <fstream>
#include <iostream>

#include "pipeline/OutputFile.h"

namespace tq4x::cli
{
namespace
{

namespace fs = std::filesystem;

/// The stream of this process that a path means. Where it goes to a file, a second opening of that would
/// write over what the first has written.
std::ostream* FindOwnStream(const fs::path& file)
{
    if (file == "/dev/stdout") {
        return &std::cout;
    }
    return file == "/dev/stderr" ? &std::cerr : nullptr;
}

bool IsPipeOrDevice(const fs::path& file)
{
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    return fs::is_character_file(status) || fs::is_fifo(status);
}

bool WriteTo(std::ostream& stream, std::string_view text)
{
    stream << text << std::flush;
    return stream.good();
}

} // namespace

bool ReplaceFile(const fs::path& file, std::string_view text)
{
    if (std::ostream* const own = FindOwnStream(file)) {
        return WriteTo(*own, text);
    }
    if (IsPipeOrDevice(file)) {
        std::ofstream stream(file, std::ios::binary | std::ios::app);
        return WriteTo(stream, text);
    }
    OutputFile output;
    if (!output.OpenBinary(file)) {
        return false;
    }
    output.Write(text);
    return output.Commit();
}

} // namespace tq4x::cli
