#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Console.h"
#include "gltf/JsonValue.h"
#include "gltf/PageParameters.h"
#include "scene/PropertyPage.h"

namespace tq4x::cli
{

/// Changes what an object's `extras` say to the plug-in, by the plug-in's own pages: they are opened in an
/// empty scene of the host on what the extras say already, and used as a person would use them.
class PageEditor
{
public:
    /// Replaces the host's scene. The plug-in must be loaded and its log go to the console.
    PageEditor(const gltf::JsonValue& extras, const Console& console);

    /// The type of the page that has a parameter; empty for none.
    [[nodiscard]] std::string FindType(const std::string& parameter) const;

    /// Sets a parameter to the value that a text stands for. Answers a sentence if that is not possible.
    [[nodiscard]] std::string Set(const std::string& parameter, const std::string& text);

    /// Adds or replaces an item of user data: "NAME:TYPE=VALUE", TYPE one of string, integer, float, "\n"
    /// between several lines. Answers a sentence if that is not possible; what the plug-in itself says about
    /// the item goes to the console, and false is told by `HasRefused`.
    [[nodiscard]] std::string SetUserData(const std::string& text);

    /// Whether the plug-in refused an item.
    [[nodiscard]] bool HasRefused() const { return m_hasRefused; }

    /// The parameters that were set, with the values that they have now.
    [[nodiscard]] std::vector<gltf::JsonMember> Changes() const;

    /// Sentences about values that were set and count for nothing yet, because the switch of their page is
    /// off.
    [[nodiscard]] std::vector<std::string> FindIdle() const;

private:
    XSI::Host::PropertyPage& PageOf(const std::string& type);
    void EditItem(const std::string& name, LONG kind, const std::string& value);

    const Console& m_console;
    gltf::PageParameters m_parameters;
    std::map<std::string, std::unique_ptr<XSI::Host::PropertyPage>> m_pages; ///< by type
    std::vector<std::string> m_changed;
    bool m_hasRefused = false;
};

} // namespace tq4x::cli
