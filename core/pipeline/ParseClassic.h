#pragma once

namespace tq4x
{

/// The number at the head of a text, as `strtod` finds it in the classic locale, whatever the host's locale
/// is. `end` is set behind it, or to the start of the text where there is none.
double ParseClassic(const char* text, const char** end);

} // namespace tq4x
