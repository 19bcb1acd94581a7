#pragma once

#include <string>

namespace tq4x
{

/// Moves the host's window that shows a page of this name so that all of it can be seen: into the free area
/// of the screen that it is mostly on, no taller than that. Nothing happens where there is no such window,
/// or one that is maximised or minimised. Systems other than Windows place windows
/// themselves.
void PlaceDialog(const std::string& pageName);

} // namespace tq4x
