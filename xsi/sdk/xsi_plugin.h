#pragma once

#include <xsi_pluginregistrar.h>

namespace XSI
{

/// A loaded plug-in.
class Plugin : public PluginRegistrar
{
public:
    using PluginRegistrar::PluginRegistrar;

    /// Commands, properties and menus, in order of registration.
    CRefArray GetItems() const;
};

} // namespace XSI
