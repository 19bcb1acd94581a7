#pragma once

#include <string_view>

namespace tq4x::reader
{

/// A file that was put into the program when it was built.
struct EmbeddedFile
{
    std::string_view Name; ///< "qmdl.rng"
    std::string_view Text;
};

} // namespace tq4x::reader
