#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <xsi_customproperty.h>
#include <xsi_ppglayout.h>
#include <xsi_value.h>

namespace XSI::Host
{

/// An open page on one or several custom properties of one type, driven as a user would drive it. Values go
/// to all properties; the plug-in's callbacks hear about it through the first one.
class PropertyPage
{
public:
    explicit PropertyPage(CRefArray properties);

    /// Builds the layout by `<type>_DefineLayout` and tells `<type>_PPGEvent` that the page was opened. A
    /// callback that no plug-in has is passed over; without a layout callback each parameter gets an item.
    CStatus Open();

    /// Tells the plug-in that the page is closed. Nothing if it is closed already.
    CStatus Close();

    bool IsOpen() const { return m_isOpen; }

    /// The type name, the properties, and the layout of the first property.
    std::string GetType() const;

    const CRefArray& GetProperties() const { return m_properties; }

    PPGLayout GetLayout() const;

    /// The first property's value.
    CValue Get(std::string_view parameter) const;

    /// True if the user can change the parameter on this page.
    bool IsEnabled(std::string_view parameter) const;

    /// Changes a parameter as the user does and tells the plug-in. Fail for a closed page, AccessDenied for a
    /// read-only parameter, MemberNotFound for one that isn't there; InvalidArgument for a value that doesn't
    /// fit its type. Limits hold values back silently.
    CStatus Set(std::string_view parameter, const CValue& value);

    /// Clicks a button: one of the layout, or a flag that is shown as a button, which is then set to true.
    /// MemberNotFound if there is none, AccessDenied if it is disabled.
    CStatus Press(std::string_view button);

    /// How often the plug-in asked for a redraw since the page was opened.
    int GetRefreshCount() const { return m_refreshCount; }

private:
    CStatus SendEvent(LONG event, const CRef& source, std::string_view button = {});
    void FillDefaultLayout() const;

    CRefArray m_properties;
    bool m_isOpen = false;
    int m_refreshCount = 0;
};

} // namespace XSI::Host
