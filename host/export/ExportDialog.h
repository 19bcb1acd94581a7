#pragma once

#include <xsi_customproperty.h>
#include <xsi_status.h>
#include <xsi_value.h>

#include <string>
#include <vector>

namespace tq4x
{

/// The property with the export settings of the scene: the one that the scene keeps, brought up to date; else
/// a new one that begins with the settings of the last export. While settings are not kept in the scene, the
/// new one is for one export, which deletes it.
XSI::CustomProperty GetExportProperty();

/// The settings of the property as the export command's list of `Key:Value` texts.
std::vector<std::string> BuildExportArguments(const XSI::CustomProperty& property);

/// Runs the export command.
XSI::CStatus RunExportCommand(const XSI::CString& name, const XSI::CString& folder,
                              const std::vector<std::string>& options);

/// The same with the settings of the property, which may be gone afterwards.
XSI::CStatus RunExportCommand(const XSI::CustomProperty& property);

/// The name of the scene, less one leading "_".
XSI::CString SceneOutputName();

} // namespace tq4x
