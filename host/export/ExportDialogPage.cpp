// The export dialog as the host shows it: layout and events of the property with the export settings.

#include "export/ExportDialog.h"
#include "export/ExportParameters.h"
#include "export/FileChooser.h"
#include "export/HostCommands.h"
#include "export/HostLog.h"
#include "pages/PageParameters.h"
#include "pages/PageProperty.h"
#include "pipeline/Preferences.h"
#include "pipeline/SettingsFile.h"

#include <xsi_application.h>
#include <xsi_parameter.h>
#include <xsi_ppgeventcontext.h>
#include <xsi_x3dobject.h>

#include <initializer_list>

namespace tq4x
{
namespace
{

constexpr const char* LoadButton = "LoadOptions";
constexpr const char* SaveButton = "SaveOptions";
constexpr const char* SceneButton = "SelectSceneButton";
constexpr const char* NodeButton = "SelectNodeButton";
constexpr const char* ExportButton = "ExportButton";
constexpr const char* ApplyButton = "ApplyButton";
constexpr const char* CloseButton = "CloseButton";
constexpr const char* FileModeParameter = "OutputModeFile";
constexpr const char* ViewerModeParameter = "OutputModeBS";

constexpr const char* TargetWords[] = {"All", "Selection"};
constexpr const char* FrameWords[] = {"All", "Playback", "Range"};
constexpr const char* CompressNodeWords[] = {"None", "Cull Useless Node", "Cull Uninfluential Node",
                                             "Unite Compressible Node", "Unite All Node"};
constexpr const char* CompressMaterialWords[] = {"None", "Compress Same Material"};
constexpr const char* QuantizeWords[] = {"Float", "Short", "Byte"};
constexpr const char* SkinningWords[] = {"None If Possible", "Rigid Skinning"};
constexpr const char* VisibilityWords[] = {"Bind By Index", "Bind By Name"};

/// A control that needs nothing but its label.
struct LabelledControl
{
    const char* Parameter;
    const char* Label;
};

void AddControls(XSI::PPGLayout& layout, std::initializer_list<LabelledControl> controls)
{
    for (const LabelledControl& control : controls)
        layout.AddItem(control.Parameter, control.Label);
}

void AddGroup(XSI::PPGLayout& layout, const char* caption, std::initializer_list<LabelledControl> controls)
{
    layout.AddGroup(caption);
    AddControls(layout, controls);
    layout.EndGroup();
}

/// Choices whose texts are the values themselves.
XSI::CValueArray TextChoices(std::span<const char* const> texts)
{
    XSI::CValueArray choices;
    for (const char* const text : texts) {
        choices.Add(text);
        choices.Add(text);
    }
    return choices;
}

void AddSettingsGroup(XSI::PPGLayout& layout)
{
    layout.AddGroup("Save/Load Export Settings");
    layout.AddRow();
    layout.AddButton(LoadButton, "Load");
    layout.AddButton(SaveButton, "Save");
    layout.EndRow();
    layout.EndGroup();
}

void AddOutputGroup(XSI::PPGLayout& layout)
{
    layout.AddGroup("Output Options");
    layout.AddEnumControl("ExportTarget", Choices(TargetWords), XSI::CString(), XSI::siControlRadio);
    layout.AddRow();
    layout.AddItem("OutputFileName", "Output File Name");
    layout.AddButton(SceneButton, "Scene");
    layout.AddButton(NodeButton, "Node");
    layout.EndRow();
    layout.AddItem(FileModeParameter, "Output 3D Intermediate Files");
    layout.AddItem("OutputFolder", "Output Folder", XSI::siControlFolder);
    layout.AddItem(ViewerModeParameter, "Use BrellStudio");
    layout.AddItem("MergeQmdl", "Merge qmdl File");
    XSI::PPGItem path = layout.AddItem("MergeQmdlPath", XSI::CString(), XSI::siControlFilePath);
    path.PutAttribute(XSI::siUIFileFilter, "qmdl (*.qmdl)|*.qmdl|All Files (*.*)|*.*||");
    path.PutAttribute(XSI::siUIOpenFile, true);
    path.PutAttribute(XSI::siUINoLabel, true);
    layout.EndGroup();
}

void AddGeneralGroup(XSI::PPGLayout& layout)
{
    layout.AddGroup("General Options");
    layout.AddItem("Magnify", "Magnify");
    layout.AddEnumControl("SelectAnimationFrame", TextChoices(FrameWords), "Select Frame");
    layout.AddRow();
    layout.AddItem("AnimationStartFrame", "Start");
    layout.AddItem("AnimationEndFrame", "End");
    layout.EndRow();
    layout.EndGroup();
}

void AddFilesGroup(XSI::PPGLayout& layout)
{
    AddGroup(layout, "Output Files Selection",
             {{"OutputModel", "Model Data(.qmdl)"},
              {"OutputTexture", "Texture Data(.qtex)"},
              {"OutputAnimation", "Character Animation Data(.qskla)"},
              {"OutputMaterialAnimation", "Material Animation Data(.qmata)"},
              {"OutputLight", "Light Data(.qlgt)"},
              {"OutputCamera", "Camera Data(.qcam)"},
              {"OutputModelAnimation", "Model Animation Data(.qmdla)"},
              {"OutputQenv", "Environment Data(.qenv)"}});
}

void AddOptimizationGroup(XSI::PPGLayout& layout)
{
    layout.AddGroup("Optimization Options");
    layout.AddEnumControl("NodeCompressMode", Choices(CompressNodeWords), "Compress Node");
    layout.AddEnumControl("MaterialCompressMode", Choices(CompressMaterialWords), "Compress Material");
    AddControls(layout,
                {{"OptimizePrimitive", "Optimize Primitive"}, {"ConvertToModel", "Convert To Model"}});
    layout.EndGroup();
}

void AddQuantizationGroup(XSI::PPGLayout& layout)
{
    layout.AddGroup("Quantization Options");
    layout.AddEnumControl("PositionQzType", TextChoices(QuantizeWords), "Position");
    layout.AddEnumControl("NormalQzType", TextChoices(QuantizeWords), "Normal");
    layout.AddEnumControl("TexCoordQzType", TextChoices(QuantizeWords), "Tex Coord");
    layout.EndGroup();
}

void AddModelGroup(XSI::PPGLayout& layout)
{
    layout.AddGroup("Model Options");
    layout.AddEnumControl("AdjustSkinning", Choices(SkinningWords), "Adjust Skinning");
    layout.AddEnumControl("MeshVisibilityMode", Choices(VisibilityWords), "Mesh Visibility Mode");
    AddControls(layout, {{"NonUniformScale", "Non-Uniform Scale"},
                         {"MaxReservedUniformRegisters", "Max Reserved Uniform Registers"}});
    layout.EndGroup();
}

void AddAnimationGroups(XSI::PPGLayout& layout)
{
    AddGroup(layout, "Animation Options",
             {{"BakeAllAnimation", "Bake All Animation"},
              {"BakePrecision", "Frame Precision"},
              {"LoopAnimation", "Loop"},
              {"FrameFormat", "Frame Format"},
              {"TranslateQuantizeQuality", "Translate Quantize Quality"},
              {"RotateQuantizeQuality", "Rotate Quantize Quality"},
              {"ScaleQuantizeQuality", "Scale Quantize Quality"}});
    AddGroup(layout, "Tolerance Options",
             {{"NodeTransTolerance", "Node Translate"},
              {"NodeRotTolerance", "Node Rotate"},
              {"NodeSclTolerance", "Node Scale"},
              {"TexTransTolerance", "Tex Translate"},
              {"TexRotTolerance", "Tex Rotate"},
              {"TexSclTolerance", "Tex Scale"},
              {"ColorTolerance", "Color"}});
}

void AddButtons(XSI::PPGLayout& layout)
{
    layout.AddRow();
    layout.AddButton(ExportButton, "Export");
    layout.AddButton(ApplyButton, "Apply");
    layout.AddButton(CloseButton, "Close");
    layout.EndRow();
}

/// What the page asks of the host after an event.
struct PageAnswer
{
    bool Refresh = false;
    bool Close = false;
};

PageAnswer LoadOptions(XSI::CustomProperty& property)
{
    const std::string path = ChooseSettingsFile("Load q3es file", CurrentPreferences().OptionDefaultLoadDir);
    if (path.empty())
        return {};
    ExportOptions* options = CreateOptions();
    if (options != nullptr && ReadSettingsFile(path, *options)) {
        PutExportOptions(property, *options);
        ApplyEnableRules(property);
    }
    DestroyOptions();
    return {.Refresh = true};
}

void SaveOptions(const XSI::CustomProperty& property)
{
    const std::string path = ChooseSettingsFile("Save q3es file", CurrentPreferences().OptionDefaultSaveDir);
    if (path.empty())
        return;
    if (ExportOptions* options = CreateOptions(); options != nullptr)
        options->LoadFromArguments({ReadText(property, "OutputFileName"), ReadText(property, "OutputFolder"),
                                    BuildExportArguments(property)});
    static_cast<void>(WriteSettingsFile(path)); // tells by itself
    DestroyOptions();
}

/// True for a success; after a failure the user sees the log.
bool Export(const XSI::CustomProperty& property)
{
    const bool isDone = RunExportCommand(property).Succeeded();
    if (!isDone)
        OpenScriptEditor();
    return isDone;
}

PageAnswer TakeNodeName(XSI::CustomProperty& property)
{
    const std::vector<XSI::CRef> selected = SelectedObjects();
    if (selected.empty())
        return {};
    property.PutParameterValue("OutputFileName", XSI::SIObject(selected.front()).GetName());
    return {.Refresh = true};
}

PageAnswer TakeSceneName(XSI::CustomProperty& property)
{
    property.PutParameterValue("OutputFileName", SceneOutputName());
    return {.Refresh = true};
}

PageAnswer OnButton(XSI::CustomProperty& property, const XSI::CString& button)
{
    if (button == LoadButton)
        return LoadOptions(property);
    if (button == SaveButton)
        SaveOptions(property);
    else if (button == SceneButton)
        return TakeSceneName(property);
    else if (button == NodeButton)
        return TakeNodeName(property);
    else if (button == ExportButton)
        return {.Close = Export(property)};
    else if (button == ApplyButton)
        Export(property);
    return {.Close = button == CloseButton};
}

PageAnswer OnParameterChanged(XSI::CustomProperty& property, const XSI::CString& parameter)
{
    if (parameter == FileModeParameter)
        property.PutParameterValue(ViewerModeParameter, false);
    else if (parameter == ViewerModeParameter)
        property.PutParameterValue(FileModeParameter, false);
    ApplyEnableRules(property);
    return {.Refresh = true};
}

} // namespace
} // namespace tq4x

SICALLBACK TQ4X_ForPennonExportProp_Define(XSI::CRef& reference)
{
    XSI::CustomProperty property(XSI::Context(reference).GetSource());
    tq4x::DefineExportParameters(property);
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonExportProp_DefineLayout(XSI::CRef& reference)
{
    XSI::PPGLayout layout(XSI::Context(reference).GetSource());
    layout.Clear();
    tq4x::AddSettingsGroup(layout);
    tq4x::AddOutputGroup(layout);
    tq4x::AddGeneralGroup(layout);
    tq4x::AddFilesGroup(layout);
    tq4x::AddOptimizationGroup(layout);
    tq4x::AddGroup(layout, "Softimage Options",
                   {{"InvertVertexColorAlpha", "Invert VertexColor Alpha"},
                    {"IgnoreAmbientTexture", "Ignore Ambient Texture"}});
    tq4x::AddQuantizationGroup(layout);
    tq4x::AddModelGroup(layout);
    tq4x::AddAnimationGroups(layout);
    tq4x::AddButtons(layout);
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonExportProp_PPGEvent(XSI::CRef& reference)
{
    tq4x::InstallHostLog();
    XSI::PPGEventContext context(reference);
    XSI::CustomProperty property(context.GetInspectedObjects().GetItem(0));
    tq4x::PageAnswer answer;
    switch (context.GetEventID()) {
    case XSI::PPGEventContext::siOnInit:
        tq4x::ApplyEnableRules(property);
        answer.Refresh = true;
        break;
    case XSI::PPGEventContext::siParameterChange:
        answer = tq4x::OnParameterChanged(property, XSI::Parameter(context.GetSource()).GetName());
        break;
    case XSI::PPGEventContext::siButtonClicked:
        answer = tq4x::OnButton(property, context.GetAttribute("Button"));
        break;
    case XSI::PPGEventContext::siOnClosed:
    case XSI::PPGEventContext::siTabChange:
        break;
    }
    if (answer.Refresh)
        context.PutAttribute("Refresh", true);
    if (answer.Close)
        context.PutAttribute("Close", true);
    return XSI::CStatus::OK;
}
