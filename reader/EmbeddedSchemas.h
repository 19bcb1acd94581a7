#pragma once

#include <span>
#include <string_view>

namespace tq4x::reader
{

struct EmbeddedFile
{
    std::string_view Name; ///< "qmdl.rng"
    std::string_view Text;
};

/// The XML form of the grammars, put into the program when it is built.
[[nodiscard]] std::span<const EmbeddedFile> EmbeddedSchemas();

} // namespace tq4x::reader
