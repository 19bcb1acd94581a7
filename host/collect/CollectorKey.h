#pragma once

#include <xsi_ref.h>

#include <compare>
#include <string>

namespace tq4x
{

/// Key of a collector. Ordered by the host object's number, which rises with creation; the ambient light,
/// which stands for the scene root and has no object of its own, comes last.
struct CollectorKey
{
    bool IsAmbientLight = false;
    ULONG ObjectID = 0;
    ULONG InstanceID = 0;      ///< the owning instance's number: two instances of one model share its objects
    std::string FileName = {}; ///< textures only: a file sequence is many textures of one clip

    auto operator<=>(const CollectorKey&) const = default;
};

} // namespace tq4x
