#pragma once

#include <span>

#include "EmbeddedFile.h"

namespace tq4x::preview
{

/// The page with its gaps; the only file.
[[nodiscard]] std::span<const reader::EmbeddedFile> EmbeddedPage();

} // namespace tq4x::preview
