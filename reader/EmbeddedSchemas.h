#pragma once

#include <span>

#include "EmbeddedFile.h"

namespace tq4x::reader
{

/// The XML form of the grammars.
[[nodiscard]] std::span<const EmbeddedFile> EmbeddedSchemas();

} // namespace tq4x::reader
