#include "cli/ListMarks.h"

#include <utility>

#include <xsi_application.h>
#include <xsi_model.h>
#include <xsi_parameter.h>
#include <xsi_ppgitem.h>

#include "gltf/PageParameters.h"
#include "gltf/PageValue.h"
#include "scene/CustomProperties.h"
#include "scene/PluginLoader.h"
#include "scene/PropertyPage.h"
#include "scene/Session.h"
#include "scene/Text.h"

namespace tq4x::cli
{
namespace
{

namespace Host = XSI::Host;

std::string TextOf(const XSI::CValue& value)
{
    return Host::ToUtf8(value.GetAsText());
}

/// What a page's control offers: "0 None, 1 World".
std::string ChoicesOf(const XSI::PPGItem& item)
{
    const XSI::CValueArray choices = item.GetUIItems();
    std::string text;
    for (LONG i = 0; i + 1 < choices.GetCount(); i += 2) {
        text += (i == 0 ? "" : ", ") + TextOf(choices[i + 1]) + " " + TextOf(choices[i]);
    }
    return text;
}

std::string ValuesOf(const XSI::Parameter& parameter, const Host::PropertyPage& page)
{
    const std::string choices = ChoicesOf(page.GetLayout().GetItem(parameter.GetScriptName()));
    if (!choices.empty()) {
        return choices;
    }
    return parameter.GetMin().IsEmpty() ? std::string(gltf::PageValueKind(parameter.GetValueType()))
                                        : TextOf(parameter.GetMin()) + " to " + TextOf(parameter.GetMax());
}

std::string TitleOf(const std::string& type)
{
    const bool isForBoth = gltf::PageParameters::IsForBoth(type);
    const bool isForMaterials = gltf::PageParameters::IsForMaterials(type);
    return type + (isForBoth        ? ", of objects and materials; \"tq4x set --user-data\" sets an item"
                   : isForMaterials ? ", of materials"
                                    : ", of objects");
}

std::string LineOf(const XSI::Parameter& parameter, const Host::PropertyPage& page)
{
    const char* const quote = parameter.GetValueType() == XSI::CValue::siString ? "\"" : "";
    const std::string initial = quote + TextOf(parameter.GetDefault()) + quote;
    return "  " + TextOf(parameter.GetScriptName()) + " = " + initial + "  (" + ValuesOf(parameter, page) +
           ")";
}

/// Prints a page as it opens on nothing, if it marks anything.
void ListPage(const std::string& type, Console& console)
{
    XSI::CRefArray properties;
    properties.Add(Host::AddDefinedProperty(XSI::Application().GetActiveSceneRoot(), type, type));
    Host::PropertyPage page(properties);
    page.Open();
    bool isTitled = false;
    const XSI::CRefArray parameters = XSI::CustomProperty(properties[0]).GetParameters();
    for (LONG i = 0; i < parameters.GetCount(); ++i) {
        const std::string name = TextOf(XSI::Parameter(parameters[i]).GetScriptName());
        if (gltf::PageParameters::IsOurs(name) && gltf::PageParameters::IsMark(name)) {
            if (!std::exchange(isTitled, true)) {
                console.Result(TitleOf(type));
            }
            console.Result(MakePrintable(LineOf(parameters[i], page)));
        }
    }
}

} // namespace

void ListMarks(Console& console)
{
    Host::Session::Current().NewScene();
    for (const std::string& type : Host::RegisteredPropertyTypes()) {
        ListPage(type, console);
    }
}

} // namespace tq4x::cli
