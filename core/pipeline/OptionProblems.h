#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tq4x
{

/// A problem that the plug-in itself passes over in a `Key:Value` text of its command, as one sentence: an
/// unknown key (with the nearest known one), a missing or malformed value, a number outside the range that
/// the dialog allows. Nothing if the text means what it says.
std::optional<std::string> FindArgumentProblem(std::string_view text);

/// The known key of the export command that differs least from the given one.
std::string_view FindNearestKey(std::string_view key);

} // namespace tq4x
