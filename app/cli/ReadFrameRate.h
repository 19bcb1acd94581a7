#pragma once

#include <optional>
#include <string>

namespace tq4x::cli
{

/// What `--fps` takes when it is not given: the host's own default.
inline constexpr double DefaultFrameRate = 30.0;

/// Frames per second as `--fps` takes them: a number above 0 that fills the whole text; else nothing.
[[nodiscard]] std::optional<double> ReadFrameRate(const std::string& text);

/// Why a text is refused, a sentence.
[[nodiscard]] std::string FrameRateProblem(const std::string& text);

} // namespace tq4x::cli
