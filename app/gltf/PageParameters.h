#pragma once

#include <map>
#include <string>
#include <string_view>

#include <xsi_sceneitem.h>

#include "gltf/JsonValue.h"

namespace tq4x::gltf
{

/// Type of the property in which a scene keeps the settings of its export.
inline constexpr std::string_view ExportSettingsType = "TQ4X_ForPennonExportProp";

/// The parameters of the loaded plug-in's attribute pages, which mark objects and materials for the exporter.
class PageParameters
{
public:
    /// Asks the loaded plug-ins for their pages.
    PageParameters();

    /// The type of the property that has a parameter; empty for an unknown one.
    [[nodiscard]] std::string FindType(const std::string& parameter) const;

    /// Whether parameters of this name are ours, known or not.
    [[nodiscard]] static bool IsOurs(const std::string& parameter);

    /// Whether a parameter marks what it is on, and does not just work its page: searches, buttons, and lists
    /// of what is selected.
    [[nodiscard]] static bool IsMark(std::string_view parameter);

    /// Whether the property sits on materials and not on objects.
    [[nodiscard]] static bool IsForMaterials(const std::string& type);

    /// Whether the property sits on objects and materials alike.
    [[nodiscard]] static bool IsForBoth(const std::string& type);

    /// The mark whose name is nearest; the prefix that all share may be missing.
    [[nodiscard]] std::string FindNearest(const std::string& parameter) const;

    /// Sets a parameter on the owner's property of the type, which is added if it is missing. Answers a
    /// sentence if the property has no such parameter or the value does not suit it; where it was out of
    /// range the nearest one was taken.
    [[nodiscard]] std::string Set(const XSI::SceneItem& owner, const std::string& type,
                                  const std::string& parameter, const JsonValue& value) const;

private:
    std::map<std::string, std::string> m_types; ///< by parameter
};

} // namespace tq4x::gltf
