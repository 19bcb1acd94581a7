#include "cli/PageEditor.h"

#include <algorithm>
#include <array>

#include <xsi_application.h>
#include <xsi_parameter.h>

#include "gltf/PageValue.h"
#include "scene/CustomProperties.h"
#include "scene/Session.h"
#include "scene/Text.h"

namespace tq4x::cli
{
namespace
{

namespace Host = XSI::Host;

constexpr const char* UserDataType = "TQ4X_ForPennonUserDataProp";
constexpr const char* UserDataItemType = "TQ4X_ForPennonUserDataItemProp";
constexpr const char* UserDataRow = "TQ4X_ForPennonUserDataParamList";
constexpr std::array<const char*, 3> UserDataLists = {"TQ4X_ForPennonUserDataParamNameList",
                                                      "TQ4X_ForPennonUserDataParamTypeList",
                                                      "TQ4X_ForPennonUserDataParamValueList"};
constexpr std::array<std::string_view, 3> UserDataKinds = {"string", "integer", "float"};

/// A value that counts only while a switch is on.
struct SwitchedValue
{
    const char* Value;
    const char* Switch;
};

constexpr std::array<SwitchedValue, 2> SwitchedValues = {{
    {"TQ4X_ForPennonCombineGroupValue", "TQ4X_ForPennonCombineGroupUse"},
    {"TQ4X_ForPennonRenderPrioPriority", "TQ4X_ForPennonRenderPrioUsePriority"},
}};

XSI::CRef Root()
{
    return XSI::CRef::FromObjectID(Host::Session::Current().Root);
}

std::string RangeOf(const XSI::Parameter& parameter)
{
    return Host::ToUtf8(parameter.GetMin().GetAsText()) + " to " +
           Host::ToUtf8(parameter.GetMax().GetAsText());
}

bool IsOutside(const XSI::Parameter& parameter, const XSI::CValue& value)
{
    const double number = value;
    return !parameter.GetMin().IsEmpty() && (number < static_cast<double>(parameter.GetMin()) ||
                                             number > static_cast<double>(parameter.GetMax()));
}

gltf::JsonValue ToJson(const XSI::CValue& value)
{
    switch (value.GetType()) {
    case XSI::CValue::siBool:
        return gltf::JsonValue{static_cast<bool>(value)};
    case XSI::CValue::siInt4:
        return gltf::JsonValue{std::int64_t{static_cast<LONG>(value)}};
    case XSI::CValue::siString:
        return gltf::JsonValue{Host::ToUtf8(value)};
    default:
        return gltf::JsonValue{static_cast<double>(value)};
    }
}

/// Where a name stands in a stored list of names; if it does not, how many there are.
struct NamePlace
{
    LONG Row = 0;
    bool IsKnown = false;
};

NamePlace FindName(const std::string& names, const std::string& name)
{
    NamePlace place;
    std::size_t start = 0;
    while (start < names.size() && !place.IsKnown) {
        const std::size_t end = std::min(names.find("\r\n", start), names.size());
        place.IsKnown = names.substr(start, end - start) == name;
        place.Row += place.IsKnown ? 0 : 1;
        start = end + 2;
    }
    return place;
}

/// "\n" becomes a line end, "\\" a backslash.
std::string ReadLines(std::string_view text)
{
    std::string lines;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::string_view pair = text.substr(at, 2);
        const bool isEscape = pair == "\\n" || pair == "\\\\";
        lines += pair == "\\n" ? '\n' : text[at];
        at += isEscape ? 1 : 0;
    }
    return lines;
}

} // namespace

PageEditor::PageEditor(const gltf::JsonValue& extras, const Console& console) : m_console(console)
{
    Host::Session::Current().NewScene();
    XSI::Application().GetSelection().Add(Root());
    const gltf::JsonObject* const members = extras.Object();
    for (const gltf::JsonMember& member : members == nullptr ? gltf::JsonObject() : *members) {
        const std::string type = FindType(member.Key);
        if (!type.empty()) {
            // What does not suit was told when the scene was opened, and the nearest value is used there too.
            static_cast<void>(m_parameters.Set(Root(), type, member.Key, member.Value));
        }
    }
}

std::string PageEditor::FindType(const std::string& parameter) const
{
    return m_parameters.FindType(parameter);
}

Host::PropertyPage& PageEditor::PageOf(const std::string& type)
{
    auto& page = m_pages[type];
    if (page == nullptr) {
        XSI::CRef property = XSI::SceneItem(Root()).GetProperties().Find(Host::FromUtf8(type));
        if (!property.IsValid()) {
            property = Host::AddDefinedProperty(Root(), type, type);
        }
        XSI::CRefArray properties;
        properties.Add(property);
        page = std::make_unique<Host::PropertyPage>(properties);
        page->Open();
    }
    return *page;
}

std::string PageEditor::Set(const std::string& parameter, const std::string& text)
{
    const std::string type = FindType(parameter);
    if (type.empty()) {
        const std::string nearest = m_parameters.FindNearest(parameter);
        return "No page has the parameter \"" + parameter + "\"" +
               (nearest.empty() ? "." : "; did you mean \"" + nearest + "\"?");
    }
    Host::PropertyPage& page = PageOf(type);
    const XSI::Parameter target =
        XSI::CustomProperty(page.GetProperties().GetItem(0)).GetParameter(Host::FromUtf8(parameter));
    const XSI::CValue value = gltf::ReadPageValue(text, target.GetValueType());
    if (value.IsEmpty()) {
        return "The value of " + parameter + " must be " +
               std::string(gltf::PageValueKind(target.GetValueType())) + ", not \"" + text + "\".";
    }
    if (IsOutside(target, value)) {
        return "The value of " + parameter + " must be from " + RangeOf(target) + ", not " + text + ".";
    }
    if (!gltf::PageParameters::IsMark(parameter) || page.Set(parameter, value) != XSI::CStatus::OK) {
        return "The page works " + parameter + " itself; it can't be set.";
    }
    m_changed.push_back(parameter);
    return {};
}

std::string PageEditor::SetUserData(const std::string& text)
{
    const std::size_t equals = text.find('=');
    const std::size_t colon = text.rfind(':', equals);
    if (equals == std::string::npos || colon == std::string::npos) {
        return "User data must be NAME:TYPE=VALUE, not \"" + text + "\".";
    }
    const std::string kind = text.substr(colon + 1, equals - colon - 1);
    const auto found = std::ranges::find(UserDataKinds, kind);
    if (found == UserDataKinds.end()) {
        return "The type of user data must be string, integer or float, not \"" + kind + "\".";
    }
    EditItem(text.substr(0, colon), static_cast<LONG>(found - UserDataKinds.begin()),
             ReadLines(text.substr(equals + 1)));
    return {};
}

void PageEditor::EditItem(const std::string& name, LONG kind, const std::string& value)
{
    Host::PropertyPage& page = PageOf(UserDataType);
    const NamePlace place = FindName(Host::ToUtf8(page.Get(UserDataLists[0])), name);
    auto& pageOpened = Host::Session::Current().Fill.PageOpened;
    pageOpened = [&](Host::PropertyPage& item) {
        if (item.GetType() == UserDataItemType) {
            item.Set("TQ4X_ForPennonUserDataItemName", Host::FromUtf8(name));
            item.Set("TQ4X_ForPennonUserDataItemType", kind);
            item.Set("TQ4X_ForPennonUserDataItemValue", Host::FromUtf8(value));
        }
    };
    const std::size_t errors = m_console.CountOf(Severity::Error);
    page.Set(UserDataRow, place.Row);
    page.Press(place.IsKnown ? "TQ4X_ForPennonUserDataButtonEdit" : "TQ4X_ForPennonUserDataButtonAdd");
    pageOpened = nullptr;
    m_hasRefused = m_hasRefused || m_console.CountOf(Severity::Error) > errors;
    m_changed.insert(m_changed.end(), UserDataLists.begin(), UserDataLists.end());
}

std::vector<gltf::JsonMember> PageEditor::Changes() const
{
    std::vector<gltf::JsonMember> changes;
    for (const std::string& parameter : m_changed) {
        const auto isKnown = [&](const gltf::JsonMember& member) { return member.Key == parameter; };
        if (std::ranges::none_of(changes, isKnown)) {
            changes.push_back({parameter, ToJson(m_pages.at(FindType(parameter))->Get(parameter))});
        }
    }
    return changes;
}

std::vector<std::string> PageEditor::FindIdle() const
{
    std::vector<std::string> sentences;
    for (const SwitchedValue& row : SwitchedValues) {
        const bool isSet = std::ranges::find(m_changed, row.Value) != m_changed.end();
        if (isSet && !static_cast<bool>(m_pages.at(FindType(row.Value))->Get(row.Switch))) {
            sentences.push_back(std::string(row.Value) + " counts only while " + row.Switch + " is true.");
        }
    }
    return sentences;
}

} // namespace tq4x::cli
