#include "pipeline/FileGeneration.h"

#include "animation/AnimationDocument.h"
#include "animation/GroupDescription.h"
#include "animation/SkeletalAnimation.h"
#include "animation/VisibilityAnimation.h"
#include "environment/CameraDocument.h"
#include "environment/EnvironmentDocument.h"
#include "environment/FinishCameras.h"
#include "environment/FinishLights.h"
#include "environment/LightDocument.h"
#include "geometry/ComputeBoneCapacity.h"
#include "geometry/ShapeDocument.h"
#include "pipeline/ExportChecks.h"
#include "pipeline/PathText.h"
#include "pipeline/Platform.h"
#include "pipeline/XmlWriter.h"
#include "scene/PrepareForWriting.h"
#include "scene/SkeletonDocument.h"

#include <vector>

namespace tq4x
{
namespace
{

constexpr int ProgressOfAllStages = 2000;
constexpr int LookupTablesLevel = 2;
constexpr std::uint32_t RigidSkinning = 1; // of `AdjustSkinning`
constexpr std::uint32_t BindByName = 1;    // of `MeshVisibilityMode`

/// Everything that the writer of a stage may need.
struct Generation
{
    const FileSources& Sources;
    const ExportOptions& Options;

    SceneContent& Content() const { return Sources.Content; }

    AnimationRange Range() const
    {
        return {Sources.Values.ExportStartFrame, Sources.Values.ExportEndFrame, Options.LoopAnim};
    }

    bool WriteFile(const char* extension, const XmlSection& editData, const XmlSection& sections) const
    {
        return WriteFrameFile(OutputBase(Options) + extension, Sources.Record, EditDataPlace::InsideContent,
                              editData, sections);
    }
};

bool PrepareModel(const Generation& generation)
{
    SceneContent& content = generation.Content();
    const ExportValues& values = generation.Sources.Values;
    content.Model.Magnify = generation.Options.Magnify;
    content.Model.MeshVisibilityMode = generation.Options.MeshVisibilityMode == BindByName
                                           ? MeshVisibilityMode::BindByName
                                           : MeshVisibilityMode::BindByIndex;
    content.Materials.BaseName = generation.Options.OutputFileName;
    content.Materials.Textures.MetaData = generation.Sources.Record;
    const PrepareSettings settings = {{values.Tolerances, values.FrameSteps}, values.IsRigidSkinning};
    return PrepareForWriting(content.Model, content.Root.get(), settings);
}

/// The transform of a model in its scene, which the exporter leaves at rest.
void WriteModelTransform(XmlWriter& stream)
{
    stream.Element("Transform", [&] {
        stream.Vector("Scale", {1.0f, 1.0f, 1.0f});
        stream.Vector("Rotate", {});
        stream.Vector("Translate", {});
    });
}

void WriteToolOptions(XmlWriter& stream, const Generation& generation)
{
    const bool isRigid = generation.Options.AdjustSkinning == RigidSkinning;
    const bool isByName = generation.Options.MeshVisibilityMode == BindByName;
    const XmlAttributes attributes = {
        {"ExportStartFrame", generation.Sources.Values.ExportStartFrame},
        {"Magnify", generation.Options.Magnify},
        {"AdjustSkinning", isRigid ? "RigidSkinning" : "None"},
        {"MeshVisibilityMode", isByName ? "BindByName" : "BindByIndex"},
    };
    stream.Element("EditData", [&] {
        stream.Element("ModelDccToolExportOption", attributes,
                       [&] { stream.Leaf("Key", "ModelDccToolInfo"); });
    });
}

MaterialLookup LookupIn(const MaterialSet& materials)
{
    return [&materials](std::uint32_t index) -> std::optional<MeshMaterial> {
        const Material* material = materials.MaterialAt(static_cast<std::int32_t>(index));
        if (material == nullptr)
            return std::nullopt;
        return MeshMaterial{material->Name, material->RenderPriority};
    };
}

void WriteSkeletalModel(XmlWriter& stream, const Generation& generation)
{
    const ExportOptions& options = generation.Options;
    const SceneContent& content = generation.Content();
    const std::int32_t capacity =
        ComputeBoneCapacity(options.NonUniformScale, options.MaxReservedUniformRegisters);
    const XmlAttributes attributes = {
        {"Name", ""},
        {"IsBranchVisible", true},
        {"IsVisible", true},
        {"CullingMode", "Dynamic"},
        {"IsNonuniformScalable", options.NonUniformScale},
        {"NeededBoneCapacity", capacity},
    };
    stream.Element("SkeletalModel", attributes, [&] {
        WriteModelGroupDescriptions(stream);
        WriteModelTransform(stream);
        WriteShapes(content.Model, stream, stream.Level());
        content.Materials.WriteMaterials(stream);
        WriteMeshes(content.Model, stream, stream.Level(), LookupIn(content.Materials));
        WriteSkeleton(content.Model, stream, stream.Level());
        WriteToolOptions(stream, generation);
    });
}

bool WriteModelFile(const Generation& generation)
{
    SceneContent& content = generation.Content();
    content.Materials.LookupTables.MakeNamesUnique(); // materials refer to the tables by name, and come first
    return generation.WriteFile(
        ".qmdl",
        [&](XmlWriter& stream) {
            WriteContentSummary(content.Model, stream, content.Materials.Materials.size());
        },
        [&](XmlWriter& stream) {
            stream.Element("Models", [&] { WriteSkeletalModel(stream, generation); });
            content.Materials.WriteLookupTables(stream, LookupTablesLevel);
        });
}

bool WriteSkeletalAnimationFile(const Generation& generation)
{
    const ExportOptions& options = generation.Options;
    SkeletalAnimationSettings settings;
    settings.Range = generation.Range();
    settings.FrameSteps = generation.Sources.Values.FrameSteps;
    settings.Tolerances = generation.Sources.Values.Tolerances;
    settings.FrameFormat = options.FrameFormat;
    settings.ScaleQuantizeQuality = options.ScaleQuantizeQuality;
    settings.RotateQuantizeQuality = options.RotateQuantizeQuality;
    settings.TranslateQuantizeQuality = options.TranslateQuantizeQuality;
    return generation.WriteFile(".qskla", {}, [&](XmlWriter& stream) {
        WriteSkeletalAnimation(generation.Content().Model, stream, settings);
    });
}

void WriteMaterialAnimation(XmlWriter& stream, MaterialSet& materials)
{
    const XmlAttributes attributes = {
        {"Name", ""},
        {"FrameSize", materials.FrameSize},
        {"LoopMode", LoopModeWord(materials.IsLoop)},
        {"IsAdditiveAnimation", false},
    };
    stream.Element("Animations", [&] {
        stream.Element("MaterialAnimationData", attributes, [&] { materials.WriteAnimations(stream); });
    });
}

bool WriteMaterialAnimationFile(const Generation& generation)
{
    const ExportOptions& options = generation.Options;
    MaterialSet& materials = generation.Content().Materials;
    const MaterialTolerances tolerances = {options.ToleranceTexScale, options.ToleranceTexRotate,
                                           options.ToleranceTexTranslate, options.ToleranceColor};
    materials.FinishAnimation(FrameSizeOf(generation.Range()), options.LoopAnim, tolerances,
                              generation.Sources.Values.FrameSteps);
    return generation.WriteFile(".qmata", {}, [&](XmlWriter& stream) {
        if (materials.HasAnimatedMember())
            WriteMaterialAnimation(stream, materials);
    });
}

bool WriteLightFile(const Generation& generation)
{
    LightSet& lights = generation.Sources.Lights;
    const ExportOptions& options = generation.Options;
    FinishLights(lights, FrameSizeOf(generation.Range()), options.LoopAnim,
                 generation.Sources.Values.Tolerances, options.ToleranceColor,
                 generation.Sources.Values.FrameSteps);
    return generation.WriteFile(".qlgt", {}, [&](XmlWriter& stream) {
        WriteLightAnimations(lights, stream);
        WriteLights(lights, stream, options.OutputFileName);
    });
}

bool WriteCameraFile(const Generation& generation)
{
    CameraSet& cameras = generation.Sources.Cameras;
    FinishCameras(cameras, FrameSizeOf(generation.Range()), generation.Options.LoopAnim,
                  generation.Sources.Values.Tolerances, generation.Sources.Values.FrameSteps);
    return generation.WriteFile(".qcam", {}, [&](XmlWriter& stream) {
        WriteCameraAnimations(cameras, stream);
        WriteCameras(cameras, stream);
    });
}

bool WriteModelAnimationFile(const Generation& generation)
{
    return generation.WriteFile(".qmdla", {}, [&](XmlWriter& stream) {
        WriteVisibilityAnimation(generation.Content().Model, stream, generation.Range());
    });
}

bool WriteEnvironmentFile(const Generation& generation)
{
    return generation.WriteFile(".qenv", {}, [&](XmlWriter& stream) {
        WriteEnvironment(generation.Sources.Cameras, generation.Sources.Lights, stream,
                         generation.Options.OutputFileName);
    });
}

bool WriteTextureFiles(const Generation& generation)
{
    const std::string folder = AppendPath(generation.Options.OutputFolder, "Textures");
    return EnsureFolder(folder) && generation.Content().Materials.Textures.WriteFiles(folder);
}

struct Stage
{
    const char* StatusText;
    bool (*Write)(const Generation&);
};

/// The stages that the options select, in the order in which they run.
std::vector<Stage> SelectStages(const ExportOptions& options, std::size_t textureCount)
{
    const struct
    {
        bool IsSelected;
        tq4x::Stage Stage;
    } stages[] = {
        {options.OutputQmdl, {"Generate qmdl file...", WriteModelFile}},
        {options.OutputQskla, {"Generate qskla file...", WriteSkeletalAnimationFile}},
        {options.OutputQmata, {"Generate qmata file...", WriteMaterialAnimationFile}},
        {options.OutputQlgt, {"Generate qlgt file...", WriteLightFile}},
        {options.OutputQcam, {"Generate qcam file...", WriteCameraFile}},
        {options.OutputQmdla, {"Generate qmdla file...", WriteModelAnimationFile}},
        {options.OutputQenv, {"Generate qenv file...", WriteEnvironmentFile}},
        {options.OutputQtex && textureCount == 1, {"Generate qtex file...", WriteTextureFiles}},
        {options.OutputQtex && textureCount > 1, {"Generate qtex files...", WriteTextureFiles}},
    };

    std::vector<Stage> selected;
    for (const auto& stage : stages)
        if (stage.IsSelected)
            selected.push_back(stage.Stage);
    return selected;
}

template<typename Function, typename... Arguments>
void Call(const Function& function, const Arguments&... arguments)
{
    if (function)
        function(arguments...);
}

} // namespace

void SetContentValues(SceneContent& content, LightSet& lights, CameraSet& cameras,
                      const ExportOptions& options)
{
    content.Materials.HasAnimation = options.OutputQmata;
    lights.Magnify = options.Magnify;
    cameras.Magnify = options.Magnify;
}

bool GenerateFiles(const FileSources& sources, const ExportOptions& options, const FileProgress& progress)
{
    const Generation generation = {sources, options};
    if (!PrepareModel(generation))
        return false;
    const std::vector<Stage> stages =
        SelectStages(options, sources.Content.Materials.Textures.Entries.size());
    if (!stages.empty())
        Call(progress.SetStep, ProgressOfAllStages / static_cast<int>(stages.size()));
    for (const Stage& stage : stages) {
        Call(progress.SetStatusText, stage.StatusText);
        if (!stage.Write(generation))
            return false;
        Call(progress.Advance);
    }
    return true;
}

std::set<std::string> TextureFileNames(const MaterialSet& materials)
{
    std::set<std::string> names;
    for (const auto& [path, entry] : materials.Textures.Entries)
        names.insert(entry.Name);
    return names;
}

} // namespace tq4x
