#pragma once

#include "scene/PropertyPage.h"
#include "support/PluginCallbacks.h"
#include "support/SceneBuilder.h"

#include <xsi_material.h>
#include <xsi_parameter.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tq4x::test
{

inline std::string Utf8(const XSI::CString& text)
{
    return XSI::Host::ToUtf8(text);
}

/// Clicks the menu item with this callback.
inline XSI::CStatus ClickMenu(std::string_view callback)
{
    return XSI::Host::RunMenuItem(XSI::Host::FindMenuItem(callback));
}

/// The plug-in's names without the prefix that most of them share.
inline std::string WholeName(std::string_view name)
{
    return "TQ4X_ForPennon" + std::string(name);
}

/// A page as its user sees it, one line a step:
///
///     PageDriver page("OnTQ4XSetBillboardDialog");
///     page.Set("BillboardType", 3).Press("BillboardSearchButton");
///     EXPECT_EQ(page.Text("BillboardSelectList"), "body\r");
///
/// Names may stand without the plug-in's prefix. Where a step opens a page of the same type again, the driver
/// goes on with that one, as the user would.
class PageDriver
{
public:
    /// Opens the page from the menu, or takes one that is open.
    explicit PageDriver(std::string_view menuCallback)
    {
        EXPECT_TRUE(ClickMenu(menuCallback).Succeeded()) << menuCallback;
        m_page = SceneBuilder::Host().Pages.back();
    }

    explicit PageDriver(XSI::Host::PropertyPage& page) : m_page(std::shared_ptr<void>(), &page) {}

    PageDriver& Set(std::string_view parameter, const XSI::CValue& value)
    {
        EXPECT_TRUE(TrySet(parameter, value) == XSI::CStatus::OK) << parameter;
        return *this;
    }

    PageDriver& Press(std::string_view button)
    {
        EXPECT_TRUE(TryPress(button) == XSI::CStatus::OK) << button;
        return *this;
    }

    XSI::CStatus TrySet(std::string_view parameter, const XSI::CValue& value)
    {
        const XSI::CStatus status = m_page->Set(NameOf(parameter), value);
        Follow();
        return status;
    }

    XSI::CStatus TryPress(std::string_view button)
    {
        const XSI::CStatus status = m_page->Press(NameOf(button));
        Follow();
        return status;
    }

    std::string Text(std::string_view parameter) const
    {
        return Utf8(m_page->Get(NameOf(parameter)).GetAsText());
    }

    LONG Number(std::string_view parameter) const { return m_page->Get(NameOf(parameter)); }

    bool Flag(std::string_view parameter) const { return m_page->Get(NameOf(parameter)); }

    /// True if the user can change the parameter, or press the button.
    bool IsEnabled(std::string_view name) const
    {
        const std::string whole = NameOf(name);
        if (Property().GetParameter(XSI::Host::FromUtf8(whole)).IsValid())
            return m_page->IsEnabled(whole);
        const XSI::PPGItem item = m_page->GetLayout().GetItem(XSI::Host::FromUtf8(whole));
        return item.IsValid() && !static_cast<bool>(item.GetAttribute(XSI::siUIButtonDisable));
    }

    /// The texts that a list offers.
    std::vector<std::string> Rows(std::string_view list) const
    {
        const XSI::PPGItem item = m_page->GetLayout().GetItem(XSI::Host::FromUtf8(NameOf(list)));
        const XSI::CValueArray items = item.GetUIItems();
        std::vector<std::string> rows;
        for (LONG i = 0; i < items.GetCount(); i += 2) {
            rows.push_back(Utf8(items[i].GetAsText()));
            EXPECT_EQ(static_cast<LONG>(items[i + 1]), i / 2) << "value of row " << i / 2;
        }
        return rows;
    }

    XSI::CustomProperty Property() const { return m_page->GetProperties().GetItem(0); }

    /// The names of what the opened properties hang on.
    std::vector<std::string> Owners() const
    {
        std::vector<std::string> owners;
        for (LONG i = 0; i < m_page->GetProperties().GetCount(); ++i)
            owners.push_back(
                Utf8(XSI::SIObject(XSI::SIObject(m_page->GetProperties()[i]).GetParent()).GetName()));
        return owners;
    }

    int Refreshes() const { return m_page->GetRefreshCount(); }

    bool IsOpen() const { return m_page->IsOpen(); }

    XSI::Host::PropertyPage& Page() { return *m_page; }

private:
    std::string NameOf(std::string_view name) const
    {
        const XSI::CString whole = XSI::Host::FromUtf8(WholeName(name));
        const bool isShort =
            Property().GetParameter(whole).IsValid() || m_page->GetLayout().GetItem(whole).IsValid();
        return isShort ? WholeName(name) : std::string(name);
    }

    void Follow()
    {
        const std::shared_ptr<XSI::Host::PropertyPage>& last = SceneBuilder::Host().Pages.back();
        if (last->GetType() == m_page->GetType())
            m_page = last;
    }

    std::shared_ptr<XSI::Host::PropertyPage> m_page;
};

/// A fresh host with the plug-in and an empty scene.
class PluginTest : public ::testing::Test
{
protected:
    static std::vector<std::string> SelectedNames()
    {
        std::vector<std::string> names;
        const XSI::CRefArray selected = XSI::Application().GetSelection().GetArray();
        for (LONG i = 0; i < selected.GetCount(); ++i)
            names.push_back(Utf8(XSI::SIObject(selected[i]).GetName()));
        return names;
    }

    /// How often a command was called.
    static int Calls(std::string_view command)
    {
        int count = 0;
        for (const XSI::Host::CommandCall& call : SceneBuilder::Host().CommandCalls)
            count += call.Name == command ? 1 : 0;
        return count;
    }

    /// What the plug-in logged, as "E text", "W text" or "I text".
    static std::vector<std::string> Messages()
    {
        std::vector<std::string> messages;
        for (const XSI::Host::LogEntry& entry : SceneBuilder::Host().LogEntries) {
            const char* mark = entry.Severity == XSI::siErrorMsg     ? "E "
                               : entry.Severity == XSI::siWarningMsg ? "W "
                                                                     : "I ";
            messages.push_back(mark + entry.Text);
        }
        return messages;
    }

    /// A value of an object's property; empty if there is no such property.
    static XSI::CValue ValueOf(const XSI::CRef& owner, std::string_view type, std::string_view parameter)
    {
        const XSI::CRefArray properties = XSI::SceneItem(owner).GetProperties();
        const XSI::CustomProperty property = properties.Find(XSI::Host::FromUtf8(WholeName(type)));
        return property.GetParameterValue(XSI::Host::FromUtf8(WholeName(parameter)));
    }

    static bool HasProperty(const XSI::CRef& owner, std::string_view type)
    {
        return XSI::SceneItem(owner).GetProperties().Find(XSI::Host::FromUtf8(WholeName(type))).IsValid();
    }

    SceneBuilder Scene;
    XSI::Plugin Plugin = LoadLinkedPlugin();
};

} // namespace tq4x::test
