#include <xsi_application.h>
#include <xsi_customproperty.h>
#include <xsi_materiallibrary.h>
#include <xsi_parameter.h>
#include <xsi_project.h>
#include <xsi_scene.h>

#include <algorithm>

#include "cli/Command.h"
#include "cli/FindObject.h"
#include "cli/HostConnection.h"
#include "cli/ListMarks.h"
#include "cli/ToolFolder.h"
#include "gltf/PageParameters.h"
#include "scene/PluginLoader.h"
#include "scene/Text.h"

namespace tq4x::cli
{
namespace
{

namespace Host = XSI::Host;

constexpr OptionSpec Specs[] = {
    {"--asset-root", 0, "DIR", "allow files of the scene anywhere below this folder"},
    {"--plugin", 0, "FILE", "load this plug-in; default: $TQ4X_PLUGIN, else the one beside the program"},
};

/// A value in one line: line ends are written as in a program.
std::string LineOf(const XSI::CValue& value)
{
    std::string line;
    for (const char c : Host::ToUtf8(value.GetAsText())) {
        line += c == '\r' ? "\\r" : c == '\n' ? "\\n" : std::string(1, c);
    }
    return value.GetType() == XSI::CValue::siString ? "\"" + line + "\"" : line;
}

/// Prints the pages of one object below a line with its name.
class PagePrinter
{
public:
    PagePrinter(std::string title, Console& console) : m_title(std::move(title)), m_console(console) {}

    /// Whether there was anything to print.
    bool Print(const XSI::SceneItem& item)
    {
        const XSI::CRefArray properties = item.GetProperties();
        for (LONG i = 0; i < properties.GetCount(); ++i) {
            const XSI::CustomProperty property(properties[i]);
            const std::string type = Host::ToUtf8(property.GetType());
            if (std::ranges::find(m_types, type) != m_types.end()) {
                PrintTitle();
                PrintPage(type, property);
            }
        }
        return m_isTitled;
    }

private:
    void PrintTitle()
    {
        if (!m_isTitled) {
            m_console.Result(MakePrintable(m_title));
        }
        m_isTitled = true;
    }

    void PrintPage(const std::string& type, const XSI::CustomProperty& property)
    {
        m_console.Result("  " + type);
        const XSI::CRefArray parameters = property.GetParameters();
        for (LONG i = 0; i < parameters.GetCount(); ++i) {
            const XSI::Parameter parameter(parameters[i]);
            const std::string name = Host::ToUtf8(parameter.GetScriptName());
            if (gltf::PageParameters::IsMark(name)) {
                m_console.Result("    " + name + " = " + MakePrintable(LineOf(parameter.GetValue())));
            }
        }
    }

    const std::vector<std::string> m_types = Host::RegisteredPropertyTypes();
    std::string m_title;
    Console& m_console;
    bool m_isTitled = false;
};

bool PrintObjects(Console& console)
{
    const XSI::Model root = XSI::Application().GetActiveSceneRoot();
    const XSI::CRefArray objects =
        root.FindChildren(XSI::CString(), XSI::CString(), XSI::CStringArray(), true);
    bool isAny = PagePrinter("the scene", console).Print(root);
    for (LONG i = 0; i < objects.GetCount(); ++i) {
        isAny |= PagePrinter("object " + PathOf(objects[i]), console).Print(objects[i]);
    }
    return isAny;
}

bool PrintMaterials(Console& console)
{
    bool isAny = false;
    const XSI::CRefArray libraries =
        XSI::Application().GetActiveProject().GetActiveScene().GetMaterialLibraries();
    for (LONG i = 0; i < libraries.GetCount(); ++i) {
        const XSI::CRefArray materials = XSI::MaterialLibrary(libraries[i]).GetItems();
        for (LONG k = 0; k < materials.GetCount(); ++k) {
            const XSI::SceneItem material(materials[k]);
            isAny |= PagePrinter("material " + Host::ToUtf8(material.GetName()), console).Print(material);
        }
    }
    return isAny;
}

ExitCode RunPages(const Arguments& arguments, Console& console)
{
    const ToolFolder tool;
    if (const ExitCode code = LoadPlugin(arguments, console); code != Done) {
        return code;
    }
    gltf::SceneOptions options;
    options.AssetRoot = arguments.Value("--asset-root").value_or("");
    const HostConnection connection(console, options);
    if (arguments.Positionals.empty()) {
        ListMarks(console);
        return Done;
    }
    if (const ExitCode code = OpenInHost(arguments.Positionals[0], options, console); code != Done) {
        return code;
    }
    const bool hasMarkedObjects = PrintObjects(console);
    const bool hasMarkedMaterials = PrintMaterials(console);
    if (!hasMarkedObjects && !hasMarkedMaterials) {
        console.Hint("Nothing in the scene is marked; \"tq4x pages\" alone lists the marks that there are.");
    }
    return Done;
}

} // namespace

const Command PagesCommand = {"pages",
                              "[SCENE]",
                              0,
                              1,
                              "Lists how objects and materials are marked for the exporter; without a scene, "
                              "the marks that there are.",
                              Specs,
                              RunPages};

} // namespace tq4x::cli
