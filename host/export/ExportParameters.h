#pragma once

#include "pipeline/DialogOptions.h"
#include "pipeline/ExportOptions.h"

#include <xsi_customproperty.h>

namespace tq4x
{

/// Type name of the property with the export settings.
inline constexpr const char* ExportPropertyType = "TQ4X_ForPennonExportProp";

/// Name of the one that is made for a single export and goes with it.
inline constexpr const char* ExportPropertyOfOneExport = "TQ4X_ForPennonExportProp_1";

/// Brings a property's parameters to the present set: older forms are replaced, with their value where it
/// still has a meaning, abandoned ones are removed, missing ones are added.
void DefineExportParameters(XSI::CustomProperty& property);

/// Writes a record of options into the parameters.
void PutExportOptions(XSI::CustomProperty& property, const ExportOptions& options);

/// A parameter's value by its type.
DialogValue ReadDialogValue(const XSI::CustomProperty& property, std::string_view parameter);

/// Makes parameters that mean nothing under the present settings read-only, and all others free.
void ApplyEnableRules(const XSI::CustomProperty& property);

} // namespace tq4x
