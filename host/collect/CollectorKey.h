#pragma once

#include <xsi_ref.h>

#include <compare>
#include <string>
#include <vector>

namespace tq4x
{

/// The instances of models through which an object was reached, the outermost first; empty outside of them.
using InstancePath = std::vector<XSI::CRef>;

/// Key of a collector. Ordered by the host object's number, which rises with creation; the ambient light,
/// which stands for the scene root and has no object of its own, comes last.
struct CollectorKey
{
    bool IsAmbientLight = false;
    ULONG ObjectID = 0;
    std::vector<ULONG> InstanceIDs =
        {};                    ///< numbers of its path: two instances of one model share its objects
    std::string FileName = {}; ///< textures only: a file sequence is many textures of one clip

    auto operator<=>(const CollectorKey&) const = default;
};

/// The key of an object in space.
inline CollectorKey KeyOf(const XSI::CRef& object, const InstancePath& instances)
{
    CollectorKey key{.ObjectID = object.GetObjectID()};
    for (const XSI::CRef& instance : instances)
        key.InstanceIDs.push_back(instance.GetObjectID());
    return key;
}

} // namespace tq4x
