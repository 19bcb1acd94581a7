#include "export/ExportDriver.h"

#include "collect/ExportAmbientLight.h"
#include "export/ConvertCollectors.h"
#include "export/Each.h"
#include "export/ExportContext.h"
#include "export/ExportParameters.h"
#include "export/HostCommands.h"
#include "export/LinkCheck.h"
#include "export/SceneWalk.h"
#include "pipeline/ExportChecks.h"
#include "pipeline/ExportOptions.h"
#include "pipeline/FileGeneration.h"
#include "pipeline/FrameWindow.h"
#include "pipeline/MessageLog.h"
#include "pipeline/Platform.h"
#include "pipeline/SettingsFile.h"
#include "pipeline/ToolHandOff.h"
#include "scene/NodeTree.h"

#include <xsi_application.h>
#include <xsi_parameter.h>
#include <xsi_project.h>
#include <xsi_property.h>
#include <xsi_scene.h>
#include <xsi_uitoolkit.h>

#include <algorithm>
#include <filesystem>

namespace tq4x
{
namespace
{

constexpr const char* AutoInspectPreference = "preferences.Interaction.autoinspect";

// The bar: collecting and converting take 4000 each, file generation the rest.
constexpr int BarMaximum = 10000;
constexpr int BarPhase = 4000;
constexpr int BarFirstStep = 100;

/// 0 for more objects than the phase has steps: the bar then stands still.
int StepFor(std::size_t count)
{
    return BarPhase / static_cast<int>(std::clamp<std::size_t>(count, 1, BarPhase + 1));
}

XSI::Property FindPlayControl()
{
    const XSI::CRefArray properties = XSI::Application().GetActiveProject().GetProperties();
    return XSI::Property(properties.Find("Play Control"));
}

FrameWindow ExportFrames()
{
    return {GlobalExportValues().ExportStartFrame, GlobalExportValues().ExportEndFrame};
}

void SetUpBar(XSI::ProgressBar& bar)
{
    bar.PutCancelEnabled(false);
    bar.PutValue(0);
    bar.PutVisible(true);
    bar.PutCaption("Processing...");
    bar.PutMaximum(BarMaximum);
    bar.PutStep(BarFirstStep);
}

/// True if the export may go on. Otherwise `status` is that of the question: a success for a "no", a failure
/// if nobody could be asked.
bool ConfirmOverwrite(const ExportOptions& options, XSI::CStatus& status)
{
    if (!MustAskToOverwrite(options))
        return true;
    LONG answer = XSI::siMsgNo;
    status = XSI::Application().GetUIToolkit().MsgBox(OverwriteQuestion(options).c_str(), XSI::siMsgYesNo,
                                                      std::string(OverwriteTitle).c_str(), answer);
    return status.Succeeded() && answer != XSI::siMsgNo;
}

/// The node above all roots, for an export that has not exactly one.
void MakeSyntheticRoot(ExportContext& context)
{
    auto root = std::make_unique<Bone>();
    root->Name = context.NodeNames.GetUniqueName("Tq4xRoot");
    SetSample(*root, 0, Matrix44{});
    context.Content.Root = std::move(root);
}

bool Collect(ExportContext& context, const std::vector<XSI::CRef>& roots)
{
    std::size_t count = 0;
    for (const XSI::CRef& root : roots)
        count += CountNodes(root);
    if (count == 0)
        return true;
    context.Progress.PutStep(StepFor(count));
    context.Progress.PutStatusText("Collecting Data from XSI...");
    return std::all_of(roots.begin(), roots.end(),
                       [&](const XSI::CRef& root) { return WalkScene(context, root); });
}

void AddAmbientLight(ExportContext& context)
{
    auto light =
        std::make_unique<ExportAmbientLight>(context, XSI::Application().GetActiveSceneRoot().GetRef());
    context.Add({.IsAmbientLight = true}, std::move(light));
}

FileProgress ProgressOf(XSI::ProgressBar& bar)
{
    return {[&bar](int step) { bar.PutStep(step); },
            [&bar](const std::string& text) { bar.PutStatusText(text.c_str()); },
            [&bar] { bar.Increment(); }};
}

bool WriteFiles(ExportContext& context, const ExportOptions& options)
{
    const FrameRecord record = MakeFrameRecord(context.Date, context.Source);
    const FileSources sources{context.Content, context.Lights, context.Cameras, GlobalExportValues(), record};
    return GenerateFiles(sources, options, ProgressOf(context.Progress));
}

/// The options' own instance of the dialog's property ends with the export; one that the user keeps stays.
void DeleteDialogProperty()
{
    const XSI::CRefArray properties = XSI::Application().GetActiveSceneRoot().GetProperties();
    for (const XSI::CRef& reference : Each(properties)) {
        const XSI::Property property(reference);
        if (property.GetName() == ExportPropertyOfOneExport) {
            DeleteHostObject(property.GetFullName());
            return;
        }
    }
}

} // namespace

void ResolveExportFrames()
{
    const XSI::Property play = FindPlayControl();
    const PlayControl control{play.GetParameterValue("GlobalIn"), play.GetParameterValue("GlobalOut"),
                              play.GetParameterValue("In"), play.GetParameterValue("Out")};
    const FrameWindow frames = ResolveFrameWindow(CurrentOptions(), control);
    GlobalExportValues().ExportStartFrame = frames.Start;
    GlobalExportValues().ExportEndFrame = frames.End;
}

XSI::CStatus RunExport()
{
    const ExportOptions& options = CurrentOptions();
    ExportContext context;
    const XSI::CValue autoInspect = GetHostValue(AutoInspectPreference);
    SetHostValue(AutoInspectPreference, 0);
    SetUpBar(context.Progress);
    if (!CheckOptions(options))
        return XSI::CStatus::Fail;
    XSI::CStatus confirmed;
    if (!ConfirmOverwrite(options, confirmed))
        return confirmed;
    SetSamplingValues(GlobalExportValues(), options);
    if (!CheckSampleCount(ExportFrames(), GlobalExportValues().FramePrecision))
        return XSI::CStatus::Fail;

    const std::vector<XSI::CRef> roots = CollectRoots(options.ExportTarget == 1);
    if (roots.size() != 1)
        MakeSyntheticRoot(context);
    const bool isCollected = Collect(context, roots);
    AddAmbientLight(context);
    SetContentValues(context.Content, context.Lights, context.Cameras, options);
    SetConversionValues(GlobalExportValues(), options);
    context.Progress.PutValue(BarPhase);
    context.Progress.PutStep(StepFor(context.Collectors.size()));
    context.Progress.PutStatusText("Converting Data");
    const bool isDone = isCollected && CheckLinks(context, options) && ConvertCollectors(context) &&
                        WriteFiles(context, options) && RunOptimization(options);
    if (!isDone)
        return XSI::CStatus::Fail;

    context.Progress.PutValue(BarMaximum);
    if (options.UseBrellStudio)
        static_cast<void>(ShowInViewer(
            options, TextureFileNames(context.Content.Materials))); // the files are there, shown or not
    DeleteDialogProperty();
    static_cast<void>(SaveLastExport()); // tells by itself; the export is done
    DestroyOptions();
    SetHostValue(AutoInspectPreference, autoInspect);
    return XSI::CStatus::OK;
}

} // namespace tq4x
