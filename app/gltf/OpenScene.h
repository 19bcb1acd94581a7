#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "gltf/Note.h"

namespace tq4x::gltf
{

struct SceneOptions
{
    std::filesystem::path AssetRoot; ///< see `OpenOptions`
    std::optional<std::string> Clip; ///< name of the animation to use; none: the first
    double FramesPerSecond = 30.0;   ///< above 0
    bool FitTextures = false; ///< pictures are brought to the nearest legal size when they are asked for
};

enum class SceneStatus
{
    Open,
    BadScene, ///< it can't be read or is invalid
    NoClip,   ///< it has no animation of the name that was asked for
};

/// What became of opening a scene.
struct OpenedScene
{
    SceneStatus Status = SceneStatus::Open;
    std::string Error;                        ///< a sentence, unless the scene is open
    Notes Remarks;                            ///< what was left out or changed
    std::vector<std::filesystem::path> Files; ///< all that the scene is made of, itself first
};

/// Opens a glTF file in place of the host's scene. The host's objects are made as docs/gltf.md tells. Where
/// it fails the host has an empty scene.
[[nodiscard]] OpenedScene OpenScene(const std::filesystem::path& file, const SceneOptions& options);

} // namespace tq4x::gltf
