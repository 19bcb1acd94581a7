#pragma once

namespace tq4x
{

/// Fills the slot of the message log with a function that forwards to the host's script log. Each command
/// does so as its first act; nothing empties the slot again.
void InstallHostLog();

} // namespace tq4x
