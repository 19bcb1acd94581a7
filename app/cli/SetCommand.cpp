#include <algorithm>
#include <span>
#include <string_view>

#include "cli/Command.h"
#include "cli/FindRecord.h"
#include "cli/HostConnection.h"
#include "cli/PageEditor.h"
#include "cli/ReplaceFile.h"
#include "cli/ToolFolder.h"
#include "gltf/OpenDocument.h"
#include "gltf/ReadFile.h"
#include "gltf/SceneError.h"

namespace tq4x::cli
{
namespace
{

constexpr OptionSpec Specs[] = {
    {"--on", 0, "OBJECT",
     "object or material to mark: its name, a path \"parent/name\", \"material:NAME\", \"node:#3\""},
    {"--output", 'o', "OUT", "file to write; default: the scene itself"},
    {"--user-data", 0, "NAME:TYPE=VALUE",
     "set an item of user data; TYPE is string, integer or float; \"\\n\" parts lines, \"\\\\\" is \"\\\"",
     true},
    {"--asset-root", 0, "DIR", "allow files of the scene anywhere below this folder"},
    {"--plugin", 0, "FILE", "load this plug-in; default: $TQ4X_PLUGIN, else the one beside the program"},
};

/// A file that a document names; empty if it holds all that it needs.
std::string FindNeighbour(const gltf::Document& document)
{
    const auto isFile = [](const auto& part) { return !part.Uri.empty() && !part.Uri.starts_with("data:"); };
    const auto buffer = std::ranges::find_if(document.Buffers, isFile);
    if (buffer != document.Buffers.end()) {
        return buffer->Uri;
    }
    const auto image = std::ranges::find_if(document.Images, isFile);
    return image != document.Images.end() ? image->Uri : std::string();
}

/// A sentence if the output can't be what its name says.
std::string FindNameProblem(const std::string& output, std::span<const std::uint8_t> content)
{
    if (output.empty()) {
        return "The option --output must name a file.";
    }
    const std::string extension = std::filesystem::path(output).extension().string();
    const std::string_view bytes(reinterpret_cast<const char*>(content.data()), content.size());
    const bool isBinary = bytes.starts_with("glTF");
    const std::string fitting = isBinary ? ".glb" : ".gltf";
    const bool isOther = extension == ".gltf" || extension == ".glb";
    return isOther && extension != fitting
               ? "The scene is a " + fitting + " file and stays one; --output must not end in " + extension +
                     "."
               : std::string();
}

/// One run of the command. Each step answers whether the next may follow.
class Setter
{
public:
    Setter(const Arguments& arguments, Console& console)
        : m_arguments(arguments),
          m_console(console),
          m_connection(console, {}),
          m_scene(arguments.Positionals[0])
    {}

    ExitCode Run()
    {
        ExitCode code = LoadPlugin(m_arguments, m_console);
        code = code == Done ? Find() : code;
        code = code == Done ? Change() : code;
        return code == Done ? Save() : code;
    }

private:
    ExitCode Fail(ExitCode code, const std::string& text)
    {
        m_console.Error(text);
        return code;
    }

    ExitCode Find()
    {
        const auto name = m_arguments.Value("--on");
        if (!name) {
            return Fail(WrongUsage, "The option --on must name what is to be marked.");
        }
        const gltf::OpenedDocument opened =
            gltf::OpenDocument(m_scene, {m_arguments.Value("--asset-root").value_or("")});
        if (!opened.Content) {
            m_console.Tell(Severity::Error, m_scene.string(), opened.Error);
            return BadInput;
        }
        m_neighbour = FindNeighbour(*opened.Content);
        m_record = FindRecord(*opened.Content, *name);
        return m_record.Error.empty() ? Done : Fail(WrongUsage, m_record.Error);
    }

    ExitCode Change()
    {
        PageEditor editor(m_record.Extras, m_console);
        for (std::size_t i = 1; i < m_arguments.Positionals.size(); ++i) {
            const std::string problem = SetParameter(editor, m_arguments.Positionals[i]);
            if (!problem.empty()) {
                return Fail(WrongUsage, problem);
            }
        }
        for (const std::string& item : m_arguments.Values("--user-data")) {
            const std::string problem = editor.SetUserData(item);
            if (!problem.empty()) {
                return Fail(WrongUsage, problem);
            }
            if (editor.HasRefused()) {
                m_console.Hint("The page said so about --user-data \"" + item + "\"; nothing was written.");
                return WrongUsage;
            }
        }
        m_changes = editor.Changes();
        m_hints = editor.FindIdle();
        if (m_changes.empty()) {
            return Fail(WrongUsage, "There is nothing to set: PARAMETER=VALUE or --user-data is missing.");
        }
        return Done;
    }

    std::string SetParameter(PageEditor& editor, const std::string& word)
    {
        const std::size_t equals = word.find('=');
        if (equals == std::string::npos) {
            return "A parameter is set by PARAMETER=VALUE, not \"" + word + "\".";
        }
        const std::string parameter = word.substr(0, equals);
        const std::string type = editor.FindType(parameter);
        const bool isForMaterials = gltf::PageParameters::IsForMaterials(type);
        const bool isUserData =
            type.starts_with("TQ4X_ForPennonUserData"); // the list, or the dialog of an item
        if (isForMaterials && !m_record.HasMaterial) {
            return "The parameter " + parameter + " belongs to materials; the object has none.";
        }
        if (isUserData) {
            return "User data is set by --user-data NAME:TYPE=VALUE, not by " + parameter + ".";
        }
        if (m_record.IsMaterial && !type.empty() && !isForMaterials) {
            return "The parameter " + parameter + " belongs to objects, not to materials.";
        }
        return editor.Set(parameter, word.substr(equals + 1));
    }

    /// A scene in another folder does not find the files that it names.
    void TellLostFiles(const std::filesystem::path& target)
    {
        std::error_code error;
        const std::filesystem::path from = std::filesystem::absolute(m_scene, error).parent_path();
        const std::filesystem::path to = std::filesystem::absolute(target, error).parent_path();
        if (!m_neighbour.empty() && !std::filesystem::equivalent(from, to, error)) {
            m_console.Tell(Severity::Warning, target.string(),
                           "The scene names files beside it, like \"" + m_neighbour +
                               "\"; they were not copied.");
        }
    }

    ExitCode Save()
    {
        const auto output = m_arguments.Value("--output");
        const std::filesystem::path target = output.value_or(m_scene.string());
        const gltf::FileContent content = gltf::ReadFile(m_scene);
        const std::string problem = output ? FindNameProblem(*output, content.Data) : std::string();
        if (!problem.empty()) {
            return Fail(WrongUsage, problem);
        }
        std::string edited;
        try {
            edited = gltf::EditFileExtras(content.Data, m_record.Place, m_changes);
        } catch (const gltf::SceneError& error) {
            m_console.Tell(Severity::Error, m_scene.string(), error.Place + ": " + error.Text);
            return BadInput;
        }
        if (!ReplaceFile(target, edited)) {
            return Fail(BadOutput, "The file " + target.string() + " can't be written.");
        }
        TellLostFiles(target);
        for (const gltf::JsonMember& change : m_changes) {
            m_console.Result(change.Key + " = " + gltf::FormatJson(change.Value));
        }
        for (const std::string& hint : m_hints) {
            m_console.Hint(hint);
        }
        return Done;
    }

    const Arguments& m_arguments;
    Console& m_console;
    HostConnection m_connection;
    std::filesystem::path m_scene;
    FoundRecord m_record;
    std::string m_neighbour; ///< a file that the scene names, if it names any
    std::vector<gltf::JsonMember> m_changes;
    std::vector<std::string> m_hints;
};

ExitCode RunSet(const Arguments& arguments, Console& console)
{
    const ToolFolder tool;
    return Setter(arguments, console).Run();
}

} // namespace

const Command SetCommand = {
    "set",
    "SCENE [PARAMETER=VALUE]...",
    1,
    AnyNumber,
    "Marks an object or material of a scene for the exporter; \"tq4x pages\" lists the parameters.",
    Specs,
    RunSet};

} // namespace tq4x::cli
