#include "cli/ReadFrameRate.h"

#include <charconv>
#include <cmath>

namespace tq4x::cli
{

std::optional<double> ReadFrameRate(const std::string& text)
{
    double rate = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), rate);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && std::isfinite(rate) && rate > 0.0 ? std::optional(rate) : std::nullopt;
}

std::string FrameRateProblem(const std::string& text)
{
    return "The frame rate must be a number above 0, not \"" + text + "\".";
}

} // namespace tq4x::cli
