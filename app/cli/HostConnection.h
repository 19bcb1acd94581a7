#pragma once

#include <filesystem>

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "gltf/OpenScene.h"

namespace tq4x::cli
{

/// Connects the host with the console for as long as it lives: the host's log and progress are shown, its
/// questions asked, and scenes that it wants opened are opened as glTF. The console must outlive it. Ctrl-C
/// ends callbacks with `InterruptedByUser`.
class HostConnection
{
public:
    HostConnection(Console& console, const gltf::SceneOptions& options);
    HostConnection(const HostConnection&) = delete;
    HostConnection& operator=(const HostConnection&) = delete;
    ~HostConnection();

    /// Whether a question was answered no because nobody could be asked.
    [[nodiscard]] bool IsRefused() const { return m_isRefused; }

private:
    bool m_isRefused = false;
};

/// Loads the plug-in that the option --plugin names, or the one that is found without it. `Done`, or
/// `NoPlugin` and the reason is told.
[[nodiscard]] ExitCode LoadPlugin(const Arguments& arguments, Console& console);

/// Opens a scene in the host and tells what was left out. `Done`, or `BadInput` and the reason is told.
[[nodiscard]] ExitCode OpenInHost(const std::filesystem::path& scene, const gltf::SceneOptions& options,
                                  Console& console);

/// Tells what was left out when a scene was opened.
void TellRemarks(const gltf::Notes& remarks, Console& console);

/// Puts a folder for temporary files into the variable TEMP, where the plug-in looks for it, unless it is
/// set.
void ProvideTemporaryFolder();

} // namespace tq4x::cli
