#include "gltf/PageParameters.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <xsi_customproperty.h>
#include <xsi_model.h>
#include <xsi_parameter.h>

#include "gltf/NearestWord.h"
#include "gltf/PageValue.h"
#include "scene/CreateParameters.h"
#include "scene/CustomProperties.h"
#include "scene/PluginLoader.h"
#include "scene/Session.h"
#include "scene/Text.h"

namespace tq4x::gltf
{
namespace
{

namespace Host = XSI::Host;

constexpr std::string_view OurPrefix = "TQ4X_ForPennon";

/// Lists of texts are parted by both line end characters on the pages; programs that write scenes mostly have
/// the line feed alone.
std::string WithWholeLineEnds(std::string_view text)
{
    std::string whole;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isAlone = text[at] == '\n' && (at == 0 || text[at - 1] != '\r');
        whole += isAlone ? "\r\n" : std::string(1, text[at]);
    }
    return whole;
}

/// A JSON value as one of the host's for a parameter of this type; empty where it is none.
XSI::CValue ToHostValue(const JsonValue& value, XSI::CValue::DataType type)
{
    if (const bool* const flag = std::get_if<bool>(&value.Content)) {
        return *flag;
    }
    if (const auto* const whole = std::get_if<std::int64_t>(&value.Content)) {
        return static_cast<double>(*whole);
    }
    if (const double* const number = std::get_if<double>(&value.Content)) {
        return *number;
    }
    const std::string* const text = value.String();
    return text != nullptr ? ReadPageValue(WithWholeLineEnds(*text), type) : XSI::CValue();
}

/// Why a parameter of this type does not hold just this number.
std::string WhyChanged(double number, XSI::CValue::DataType type)
{
    const bool isOfItsKind = type != XSI::CValue::siBool && std::trunc(number) == number;
    return isOfItsKind ? "is out of range" : "must be " + std::string(PageValueKind(type));
}

/// Whether a number is the same after a parameter of this type has taken it.
bool IsHeld(double number, double held, XSI::CValue::DataType type)
{
    return type == XSI::CValue::siFloat ? static_cast<float>(number) == static_cast<float>(held)
                                        : number == held;
}

std::string UnknownParameter(const XSI::ProjectItem& property, const std::string& parameter)
{
    std::vector<std::string> names;
    const XSI::CRefArray parameters = property.GetParameters();
    for (LONG i = 0; i < parameters.GetCount(); ++i) {
        names.push_back(Host::ToUtf8(XSI::Parameter(parameters[i]).GetScriptName()));
    }
    const std::vector<std::string_view> words(names.begin(), names.end());
    const std::string_view nearest = FindNearestWord(parameter, words);
    return "There is no parameter " + parameter +
           (nearest.empty() ? "." : "; did you mean " + std::string(nearest) + "?");
}

} // namespace

PageParameters::PageParameters()
{
    const XSI::CRef root = XSI::CRef::FromObjectID(Host::Session::Current().Root);
    for (const std::string& type : Host::RegisteredPropertyTypes()) {
        // A page tells its parameters by defining them, so one is made and taken away again.
        const XSI::CustomProperty probe = Host::AddDefinedProperty(root, type, type);
        const XSI::CRefArray parameters = probe.GetParameters();
        for (LONG i = 0; i < parameters.GetCount(); ++i) {
            const std::string name = Host::ToUtf8(XSI::Parameter(parameters[i]).GetScriptName());
            if (IsOurs(name)) {
                m_types.emplace(name, type);
            }
        }
        Host::Objects().Delete(probe.GetObjectID());
    }
}

std::string PageParameters::FindType(const std::string& parameter) const
{
    const auto found = m_types.find(parameter);
    return found == m_types.end() ? std::string() : found->second;
}

bool PageParameters::IsOurs(const std::string& parameter)
{
    return parameter.starts_with(OurPrefix);
}

bool PageParameters::IsMark(std::string_view parameter)
{
    constexpr std::string_view Workings[] = {
        "Search", "Button", "SelectList", "RenderPriorityList", "UserDataItem", "UserDataParamList"};
    return std::ranges::none_of(Workings, [&](std::string_view working) {
        return parameter.find(working) != std::string_view::npos;
    });
}

bool PageParameters::IsForMaterials(const std::string& type)
{
    return type == "TQ4X_ForPennonMaterialAttrProp" || type == "TQ4X_ForPennonRenderPriorityProp";
}

bool PageParameters::IsForBoth(const std::string& type)
{
    return type == "TQ4X_ForPennonUserDataProp";
}

std::string PageParameters::FindNearest(const std::string& parameter) const
{
    std::vector<std::string_view> names;
    std::vector<std::string_view> shortNames;
    for (const auto& [name, type] : m_types) {
        if (IsMark(name)) {
            names.push_back(name);
            shortNames.push_back(std::string_view(name).substr(OurPrefix.size()));
        }
    }
    const std::string_view whole = IsOurs(parameter) ? std::string_view() : FindNearestWord(parameter, names);
    if (!whole.empty()) {
        return std::string(whole);
    }
    // The prefix is so long that names which share nothing else would be near each other.
    const std::string rest = parameter.substr(IsOurs(parameter) ? OurPrefix.size() : 0);
    const std::string_view nearest = FindNearestWord(rest, shortNames);
    return nearest.empty() ? std::string() : std::string(OurPrefix).append(nearest);
}

std::string PageParameters::Set(const XSI::SceneItem& owner, const std::string& type,
                                const std::string& parameter, const JsonValue& value) const
{
    XSI::CRef property = Host::FindProperty(owner, type).GetRef();
    if (!property.IsValid()) {
        property = Host::AddDefinedProperty(owner, type, type).GetRef();
    }
    XSI::Parameter target = XSI::ProjectItem(property).GetParameter(Host::FromUtf8(parameter));
    if (!target.IsValid()) {
        return UnknownParameter(property, parameter);
    }
    const XSI::CValue::DataType kind = target.GetValueType();
    const XSI::CValue wanted = ToHostValue(value, kind);
    if (wanted.IsEmpty() || !target.PutValue(wanted).Succeeded()) {
        return "The value of " + parameter + " must be " + std::string(PageValueKind(kind)) +
               (value.String() != nullptr ? ", not \"" + *value.String() + "\"." : ".");
    }
    const bool isNumber = wanted.GetType() != XSI::CValue::siString;
    if (isNumber && !IsHeld(wanted, target.GetValue(), kind)) {
        return "The value of " + parameter + " " + WhyChanged(wanted, kind) + "; " +
               Host::ToUtf8(target.GetValue().GetAsText()) + " is used.";
    }
    return {};
}

} // namespace tq4x::gltf
