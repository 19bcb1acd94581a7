#pragma once

#include <xsi_siobject.h>

namespace XSI
{

/// A plug-in, as it presents itself while it is loaded and unloaded.
class PluginRegistrar : public SIObject
{
public:
    PluginRegistrar() = default;

    PluginRegistrar(const CRef& ref) : SIObject(ref.As(siPluginID)) {}

    CStatus PutAuthor(const CString& author);
    CStatus PutLabel(const CString& label);
    CStatus PutEmail(const CString& address);
    CStatus PutURL(const CString& address);
    CStatus PutHelp(const CString& path);
    CStatus PutCategories(const CString& categories);
    CStatus PutVersion(LONG major, LONG minor);
    CStatus PutMajor(LONG major);
    CStatus PutMinor(LONG minor);

    CString GetAuthor() const;
    CString GetLabel() const;
    LONG GetMajor() const;
    LONG GetMinor() const;

    /// A command of this name, run by the callback `<name>_Execute`; `<name>_Init` declares its arguments.
    CStatus RegisterCommand(const CString& name, const CString& scriptingName = CString());

    /// A type of custom property with the callbacks `<type>_Define`, `<type>_DefineLayout` and
    /// `<type>_PPGEvent`.
    CStatus RegisterProperty(const CString& type);

    /// A menu that `<name>_Init` fills.
    CStatus RegisterMenu(LONG anchor, const CString& name, bool asSubmenu = true, bool isDynamic = false);
};

} // namespace XSI
