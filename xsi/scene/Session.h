#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <xsi_decl.h>
#include <xsi_model.h>
#include <xsi_scene.h>
#include <xsi_value.h>

#include "scene/Database.h"
#include "scene/FullNames.h"
#include "scene/Text.h"
#include "scene/TransformCache.h"

namespace XSI::Host
{

class PropertyPage;

struct LogEntry
{
    siSeverityType Severity = siInfoMsg;
    std::string Text;
};

struct MessageBox
{
    std::string Text;
    std::string Title;
    LONG Buttons = siMsgOkOnly;
    LONG Answer = siMsgOk; ///< What was answered.
};

/// A command as it was called, in the order in which calls began.
struct CommandCall
{
    std::string Name;
    CValueArray Arguments;
    CStatus Status; ///< Fail until the command has ended.
};

/// A procedure that a plug-in wants run by the host's script runner.
struct ScriptCall
{
    std::string Code;
    std::string Language;
    std::string Procedure;
    CValueArray Arguments;
};

/// What the program around the host does for it. Every slot may stay empty.
struct Slots
{
    std::function<void(const LogEntry& entry)> Log;
    /// Answers a message box when no answer waits in the queue. Empty: "no" or "cancel" where there is such a
    /// button, else "ok".
    std::function<LONG(const MessageBox& box)> AnswerMessageBox;
    /// Called after each change of the progress bar. Answers true to press its cancel button.
    std::function<bool(const ProgressState& state)> Progress;
    /// Opens a scene file in place of the scene that is open. Empty: the command fails.
    std::function<CStatus(const std::string& path)> OpenScene;
    /// Empty: running a script fails.
    std::function<CStatus(const ScriptCall& call, CValue& result)> RunScript;
    /// Called when a page was opened and is ready for the user; what it does happens before InspectObj
    /// returns.
    std::function<void(PropertyPage& page)> PageOpened;
};

/// The host as one process runs it: its objects, what the program fills in, and what was asked of it.
class Session
{
public:
    static Session& Current();

    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Back to the state of a host that was just started: no plug-ins, no records, empty slots, a new scene.
    void Reset();

    /// Closes the scene and opens an empty one: the root "Scene_Root", the library "DefaultLib", the project
    /// property `Play Control` with the frames 0 to 100, current frame 0. Plug-ins, preferences, slots and
    /// records stay; pages close and the selection is emptied.
    void NewScene(std::string_view name = "Scene", std::string_view fileName = {});

    void Log(siSeverityType severity, const std::string& text);

    Database Objects;
    NameIndex Names;
    TransformCache Transforms;
    Slots Fill;

    std::deque<LONG> MessageBoxAnswers; ///< Taken first to last, before the slot is asked.
    double CurrentFrame = 0.0;
    std::map<std::string, CValue> Preferences; ///< By full name, "preferences.Interaction.autoinspect".

    std::vector<LogEntry> LogEntries;
    std::vector<MessageBox> MessageBoxes;
    std::vector<CommandCall> CommandCalls;
    std::vector<std::string> OpenedViews;
    std::vector<std::shared_ptr<PropertyPage>> Pages; ///< Those that InspectObj opened, closed ones included.

    // The objects that are always there; the first three are new ones with each scene.
    ObjectId Project = 0;
    ObjectId Scene = 0;
    ObjectId Root = 0;
    ObjectId Application = 0;
    ObjectId Selection = 0;
    ObjectId UiToolkit = 0;
    ObjectId ProgressBar = 0;
    std::vector<ObjectId> Plugins;

private:
    Session();
    ~Session();

    template<class T>
    ObjectId CreateFixed(siClassID classId, const char* name);
    void CreatePlayControl();

    bool m_isStarted = false;
};

/// Shorthand for Session::Current().Objects.
Database& Objects();

/// The frame that a time argument means: the current one for the largest double and for what is no number.
double FrameOf(double time);

} // namespace XSI::Host
