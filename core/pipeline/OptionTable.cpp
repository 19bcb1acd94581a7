#include "pipeline/OptionTable.h"

#include <algorithm>
#include <iterator>

namespace tq4x
{
namespace
{

using O = ExportOptions;

constexpr OptionWord ExportTargetWords[] = {{0, "All"}, {1, "Selection"}};
constexpr OptionWord OutputModeWords[] = {{0, "File"}, {1, "BrellStudio"}};
constexpr OptionWord FrameRangeWords[] = {{0, "All"}, {1, "Playback"}, {2, "Range"}};
constexpr OptionWord CompressNodeWords[] = {
    {0, "None"},     {1, "Cull"},       {2, "CullUninfluential"}, {3, "UniteCompressible"},
    {4, "UniteAll"}, {0, "UniteBelow"}, // of older settings files
};
constexpr OptionWord QuantizeWords[] = {{0, "Float"}, {1, "Short"}, {3, "Byte"}};
constexpr OptionWord AdjustSkinningWords[] = {{0, "None"}, {1, "RigidSkinning"}};
constexpr OptionWord MeshVisibilityWords[] = {{0, "BindByIndex"}, {1, "BindByName"}};

constexpr OptionLimits Frames = {-2147483648.0, 2147483647.0, 1.0, 9999.0};
constexpr CommandForm Typed = CommandForm::Typed;

constexpr OptionLimits Range(double low, double high)
{
    return {low, high, low, high};
}

// clang-format off
// Field, settings key, command key, second key, alias, parameter, command form, dialog form, words, other word,
// limits, help.
constexpr OptionRow Rows[] = {
    {&O::OutputFileName, "OutputFileName", "", "", "", "OutputFileName", Typed, {}, {}, 0, {},
     "Base name of every output file, without an extension."},
    {&O::OutputFolder, "OutputFolder", "", "", "", "OutputFolder", Typed, {}, {}, 0, {},
     "Folder that receives the files."},
    {&O::ExportTarget, "ExportTarget", "ExportTarget", "", "et", "ExportTarget",
     CommandForm::Words, ParameterForm::Integer, ExportTargetWords, 1, Range(0, 1),
     "Export the whole scene or the selected objects."},
    {&O::MergeQmdl, "MergeQmdl", "MergeQmdl", "", "mc", "MergeQmdl", Typed, {}, {}, 0, {},
     "Merge the model into an existing model file by the tool."},
    {&O::MergeQmdlPath, "MergeQmdlPath", "MergeQmdlPath", "", "mcp", "MergeQmdlPath", Typed, {}, {}, 0, {},
     "Model file to merge with."},
    {&O::AlwaysOverwrite, "", "AlwaysOverwrite", "", "ao", "", CommandForm::Switch, {}, {}, 0, {},
     "Overwrite existing files without asking."},
    {&O::UseBrellStudio, "OutputMode", "OutputMode", "", "", "OutputModeBS",
     CommandForm::Words, ParameterForm::Pair, OutputModeWords, 0, {},
     "Write files only, or show the result in the viewer too."},
    {&O::Magnify, "Magnify", "Magnify", "", "mgf", "Magnify", Typed, {}, {}, 0, Range(0, 100),
     "Scale of all positions."},
    {&O::FrameRange, "FrameRange", "SelectAnimationFrame", "FrameRange", "saf", "SelectAnimationFrame",
     CommandForm::Words, ParameterForm::Words, FrameRangeWords, 0, {},
     "Frames to export: all of the scene, its playback range, or StartFrame to EndFrame."},
    {&O::StartFrame, "StartFrame", "AnimationStartFrame", "StartFrame", "asf", "AnimationStartFrame",
     Typed, {}, {}, 0, Frames, "First frame of a range, counted from 1."},
    {&O::EndFrame, "EndFrame", "AnimationEndFrame", "EndFrame", "aef", "AnimationEndFrame",
     Typed, {}, {}, 0, Frames, "Last frame of a range, counted from 1."},
    {&O::OutputQmdl, "OutputQmdl", "ModelExport", "OutputQmdl", "me", "OutputModel", Typed, {}, {}, 0, {},
     "Write the model file."},
    {&O::OutputQtex, "OutputQtex", "TextureExport", "OutputQtex", "te", "OutputTexture", Typed, {}, {}, 0, {},
     "Write the texture files."},
    {&O::OutputQskla, "OutputQskla", "AnimationExport", "OutputQskla", "ae", "OutputAnimation",
     Typed, {}, {}, 0, {}, "Write the skeletal animation file."},
    {&O::OutputQmata, "OutputQmata", "MaterialAnimationExport", "OutputQmata", "mae", "OutputMaterialAnimation",
     Typed, {}, {}, 0, {}, "Write the material animation file."},
    {&O::OutputQlgt, "OutputQlgt", "LightExport", "OutputQlgt", "le", "OutputLight", Typed, {}, {}, 0, {},
     "Write the light file."},
    {&O::OutputQcam, "OutputQcam", "CameraExport", "OutputQcam", "ce", "OutputCamera", Typed, {}, {}, 0, {},
     "Write the camera file."},
    // Scripts use "mae" for both kinds of animation; the material's row stands first and takes it.
    {&O::OutputQmdla, "OutputQmdla", "ModelAnimationExport", "OutputQmdla", "mae", "OutputModelAnimation",
     Typed, {}, {}, 0, {}, "Write the model animation file: visibility of nodes and meshes."},
    {&O::OutputQenv, "OutputQenv", "OutputQenv", "", "", "OutputQenv", Typed, {}, {}, 0, {},
     "Write the environment file: cameras and lights without animation."},
    {&O::CompressNode, "ComressNode", "NodeCompression", "ComressNode", "ncmp", "NodeCompressMode",
     CommandForm::Integer, ParameterForm::Integer, CompressNodeWords, 0, Range(0, 4),
     "Node compression by the tool."},
    {&O::CompressMaterial, "ComressMaterial", "MaterialCompression", "ComressMaterial", "mcmp",
     "MaterialCompressMode", CommandForm::Integer, ParameterForm::Integer, {}, 0, Range(0, 1),
     "Merge identical materials by the tool."},
    {&O::OptimizePrimitive, "OptimizePrimitive", "OptimizePrimitive", "", "op", "OptimizePrimitive",
     Typed, {}, {}, 0, {}, "Optimise primitives by the tool."},
    {&O::ConvertToModel, "ConvertToModel", "ConvertToModel", "", "ctm", "ConvertToModel", Typed, {}, {}, 0, {},
     "Flatten to a model by the tool."},
    {&O::QuantizePos, "QuantizePos", "PositionQzType", "QuantizePos", "pqzt", "PositionQzType",
     CommandForm::Words, ParameterForm::Words, QuantizeWords, 0, {}, "Quantisation of positions."},
    {&O::QuantizeNrm, "QuantizeNrm", "NormalQzType", "QuantizeNrm", "nqzt", "NormalQzType",
     CommandForm::Words, ParameterForm::Words, QuantizeWords, 0, {}, "Quantisation of normals."},
    {&O::QuantizeTex, "QuantizeTex", "TexCoordQzType", "QuantizeTex", "tcqzt", "TexCoordQzType",
     CommandForm::Words, ParameterForm::Words, QuantizeWords, 0, {}, "Quantisation of texture coordinates."},
    {&O::AdjustSkinning, "AdjustSkinning", "AdjustSkinning", "", "", "AdjustSkinning",
     CommandForm::Integer, ParameterForm::Integer, AdjustSkinningWords, 0, Range(0, 1),
     "Make all skinning rigid."},
    {&O::MeshVisibilityMode, "MeshVisibilityMode", "MeshVisibilityMode", "", "", "MeshVisibilityMode",
     CommandForm::Integer, ParameterForm::Integer, MeshVisibilityWords, 0, Range(0, 1),
     "Bind the visibility of meshes by index or by the node's name."},
    {&O::NonUniformScale, "NonUniformScale", "NonUniformScale", "", "", "NonUniformScale", Typed, {}, {}, 0, {},
     "The skeleton allows non-uniform scale."},
    {&O::MaxReservedUniformRegisters, "MaxReservedUniformRegisters", "MaxReservedUniformRegisters", "", "",
     "MaxReservedUniformRegisters", Typed, {}, {}, 0, Range(0, 57),
     "Uniform registers that the user keeps free."},
    {&O::FramePrecision, "FramePrecision", "BakePrecision", "FramePrecision", "pb", "BakePrecision",
     Typed, {}, {}, 0, Range(0.1, 1.0), "Step in frames in which animation is sampled."},
    {&O::LoopAnim, "LoopAnim", "LoopAnimation", "LoopAnim", "la", "LoopAnimation", Typed, {}, {}, 0, {},
     "Animations loop."},
    {&O::FrameFormat, "FrameFormat", "FrameFormat", "", "ff", "FrameFormat", Typed, {}, {}, 0, {},
     "Frame-format flag of skeletal animation."},
    {&O::TranslateQuantizeQuality, "TranslateQuantizeQuality", "TranslateQuantizeQuality", "", "",
     "TranslateQuantizeQuality", Typed, {}, {}, 0, Range(0, 9), "Quality of quantised translation."},
    {&O::RotateQuantizeQuality, "RotateQuantizeQuality", "RotateQuantizeQuality", "", "",
     "RotateQuantizeQuality", Typed, {}, {}, 0, Range(0, 9), "Quality of quantised rotation."},
    {&O::ScaleQuantizeQuality, "ScaleQuantizeQuality", "ScaleQuantizeQuality", "", "",
     "ScaleQuantizeQuality", Typed, {}, {}, 0, Range(0, 9), "Quality of quantised scale."},
    {&O::ToleranceTranslate, "ToleranceTranslate", "NodeTransTolerance", "ToleranceTranslate", "ntt",
     "NodeTransTolerance", Typed, {}, {}, 0, Range(0, 10), "Tolerance of node translation."},
    {&O::ToleranceRotate, "ToleranceRotate", "NodeRotTolerance", "ToleranceRotate", "nrt",
     "NodeRotTolerance", Typed, {}, {}, 0, Range(0, 10), "Tolerance of node rotation, in degrees."},
    {&O::ToleranceScale, "ToleranceScale", "NodeSclTolerance", "ToleranceScale", "nst",
     "NodeSclTolerance", Typed, {}, {}, 0, Range(0, 10), "Tolerance of node scale."},
    {&O::ToleranceTexTranslate, "ToleranceTexTranslate", "TexTransTolerance", "ToleranceTexTranslate", "",
     "TexTransTolerance", Typed, {}, {}, 0, Range(0, 10), "Tolerance of texture translation."},
    {&O::ToleranceTexRotate, "ToleranceTexRotate", "TexRotTolerance", "ToleranceTexRotate", "",
     "TexRotTolerance", Typed, {}, {}, 0, Range(0, 10), "Tolerance of texture rotation, in degrees."},
    {&O::ToleranceTexScale, "ToleranceTexScale", "TexSclTolerance", "ToleranceTexScale", "",
     "TexSclTolerance", Typed, {}, {}, 0, Range(0, 10), "Tolerance of texture scale."},
    {&O::ToleranceColor, "ToleranceColor", "ColorTolerance", "ToleranceColor", "",
     "ColorTolerance", Typed, {}, {}, 0, Range(0, 10), "Tolerance of colours."},
    {&O::SoftimageInvertVertexColorAlpha, "SoftimageInvertVertexColorAlpha", "InvertVertexColorAlpha", "", "ivca",
     "InvertVertexColorAlpha", Typed, {}, {}, 0, {}, "Invert the alpha of vertex colours."},
    {&O::SoftimageIgnoreAmbientTexture, "SoftimageIgnoreAmbientTexture", "IgnoreAmbientTexture", "", "iat",
     "IgnoreAmbientTexture", Typed, {}, {}, 0, {}, "Ignore textures on the ambient port."},
};

// clang-format on

template<typename Test>
const OptionRow* FindRow(Test test)
{
    const auto found = std::ranges::find_if(Rows, test);
    return found == std::end(Rows) ? nullptr : &*found;
}

} // namespace

std::span<const OptionRow> OptionTable()
{
    return Rows;
}

const OptionRow* FindCommandRow(std::string_view key)
{
    if (key.empty())
        return nullptr;
    return FindRow([key](const OptionRow& row) {
        return key == row.CommandKey || key == row.SecondKey || key == row.Alias;
    });
}

const OptionRow* FindSettingsRow(std::string_view key)
{
    return FindRow([key](const OptionRow& row) { return !key.empty() && key == row.SettingsKey; });
}

const OptionRow* FindParameterRow(std::string_view parameter)
{
    return FindRow(
        [parameter](const OptionRow& row) { return !parameter.empty() && parameter == row.Parameter; });
}

std::optional<std::uint32_t> FindOptionWord(OptionWords words, std::string_view word)
{
    for (const OptionWord& row : words)
        if (row.Word == word)
            return row.Value;
    return std::nullopt;
}

std::optional<std::string_view> WordOfValue(OptionWords words, std::uint32_t value)
{
    for (const OptionWord& row : words)
        if (row.Value == value)
            return row.Word;
    return std::nullopt;
}

} // namespace tq4x
