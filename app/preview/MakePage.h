#pragma once

#include <filesystem>
#include <span>
#include <string>

#include "cli/Console.h"
#include "cli/WrittenFiles.h"

namespace tq4x::preview
{

/// What an export knows of itself; the rest of the page is read back from its files.
struct PageRequest
{
    std::string Program; ///< with its version
    std::string Name;    ///< of the output files
    std::string Scene;
    std::string Folder; ///< paths are shown relative to it
    int ExitCode = 0;
    float FramesPerSecond = 30;
};

/// Whether this program was built with the page. Without it `MakePage` gives nothing.
[[nodiscard]] bool HasPage();

/// A page of HTML, whole in itself, that shows what an export wrote and said.
[[nodiscard]] std::string MakePage(const PageRequest& request, std::span<const cli::WrittenFiles::File> files,
                                   std::span<const cli::Message> messages);

} // namespace tq4x::preview
