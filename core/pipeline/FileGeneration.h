#pragma once

#include "environment/CameraSet.h"
#include "environment/LightSet.h"
#include "pipeline/Envelope.h"
#include "pipeline/ExportOptions.h"
#include "pipeline/ExportValues.h"
#include "pipeline/SceneContent.h"

#include <functional>
#include <set>
#include <string>

namespace tq4x
{

/// How file generation shows its progress. An empty function is not called.
struct FileProgress
{
    std::function<void(int step)> SetStep; ///< share of one stage in the 2000 that all stages have
    std::function<void(const std::string& text)> SetStatusText;
    std::function<void()> Advance; ///< by one step, behind each stage
};

/// What the files are made from, beside the options.
struct FileSources
{
    SceneContent& Content;
    LightSet& Lights;
    CameraSet& Cameras;
    const ExportValues& Values;
    const FrameRecord& Record;
};

/// Hands the options to the records that need them before the scene is converted.
void SetContentValues(SceneContent& content, LightSet& lights, CameraSet& cameras,
                      const ExportOptions& options);

/// Brings the model to its final form and writes a file for each selected kind, then the textures; called
/// once per export. False, with a message, if the model can't be finished (no file is written then) or at the
/// first file that can't be opened (files written before stay).
[[nodiscard]] bool GenerateFiles(const FileSources& sources, const ExportOptions& options,
                                 const FileProgress& progress);

/// Names of the texture files, without extension.
std::set<std::string> TextureFileNames(const MaterialSet& materials);

} // namespace tq4x
