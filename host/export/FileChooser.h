#pragma once

#include <string>

namespace tq4x
{

/// Asks for a settings file by the host's own file window, which scripts alone can open. Empty if the user
/// chose none. `folder` is where the window begins.
std::string ChooseSettingsFile(const std::string& title, const std::string& folder);

} // namespace tq4x
