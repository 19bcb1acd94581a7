#include "scene/Session.h"

#include <cmath>

#include <xsi_property.h>

#include "scene/CreateMaterials.h"
#include "scene/CreateObjects.h"
#include "scene/CreateParameters.h"
#include "scene/PropertyPage.h"

namespace XSI::Host
{

Session& Session::Current()
{
    static Session session;
    if (!session.m_isStarted) {
        session.m_isStarted = true;
        session.Reset();
    }
    return session;
}

Session::Session() = default;

Session::~Session() = default;

template<class T>
ObjectId Session::CreateFixed(siClassID classId, const char* name)
{
    T& object = Objects.Create<T>(classId, name);
    object.Life = Lifetime::Session;
    return object.Id;
}

void Session::Reset()
{
    Pages.clear();
    Plugins.clear();
    Objects.DeleteAll();
    Fill = Slots();
    MessageBoxAnswers.clear();
    LogEntries.clear();
    MessageBoxes.clear();
    CommandCalls.clear();
    OpenedViews.clear();
    Preferences = {{"preferences.Interaction.autoinspect", CValue(1)}};
    Application = CreateFixed<Object>(siApplicationID, "Application");
    Selection = CreateFixed<SelectionObject>(siSelectionID, "Selection");
    UiToolkit = CreateFixed<Object>(siUIToolkitID, "UIToolkit");
    ProgressBar = CreateFixed<ProgressObject>(siProgressBarID, "ProgressBar");
    NewScene();
}

void Session::NewScene(std::string_view name, std::string_view fileName)
{
    Pages.clear();
    Objects.DeleteScene();
    Objects.Find<SelectionObject>(Selection)->Selected.Clear();
    CurrentFrame = 0.0;

    Project = Objects.Create<ItemObject>(siProjectID, "Project").Id;
    CreatePlayControl();
    auto& scene = Objects.Create<SceneObject>(siSceneID, name, {}, Project);
    Scene = scene.Id;
    AddParameter(RefOf(scene), "FileName", FromUtf8(fileName));
    auto& root = Objects.Create<NodeObject>(siModelID, "Scene_Root", "#model", Scene);
    Root = root.Id;
    scene.Root = Root;
    AddScalingRule(RefOf(root), false);
    CreateMaterialLibrary("DefaultLib");
}

void Session::CreatePlayControl()
{
    const CRef property = AddProperty(CRef::FromObjectID(Project), "PlayControl", "Play Control");
    AddParameter(property, "GlobalIn", 0.0);
    AddParameter(property, "GlobalOut", 100.0);
    AddParameter(property, "In", 0.0);
    AddParameter(property, "Out", 100.0);
}

void Session::Log(siSeverityType severity, const std::string& text)
{
    LogEntries.push_back({severity, text});
    if (Fill.Log) {
        Fill.Log(LogEntries.back());
    }
}

Database& Objects()
{
    return Session::Current().Objects;
}

double FrameOf(double time)
{
    return time == CurrentTime || std::isnan(time) ? Session::Current().CurrentFrame : time;
}

} // namespace XSI::Host
