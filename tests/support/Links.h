#pragma once

#include <filesystem>

namespace tq4x::test
{

/// Whether tests can make symbolic links. On Windows the standard library can't, nor does it follow them.
#ifdef _WIN32
inline constexpr bool HasLinks = false;
#else
inline constexpr bool HasLinks = true;
#endif

/// Makes a link where that is possible.
inline void MakeLink(const std::filesystem::path& target, const std::filesystem::path& link)
{
    if (HasLinks)
        std::filesystem::create_symlink(target, link);
}

} // namespace tq4x::test
