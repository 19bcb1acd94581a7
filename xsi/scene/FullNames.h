#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "scene/Database.h"

namespace XSI::Host
{

/// The full name: "model.object", "object.property.parameter". A 3D object bears the name of its nearest
/// model other than the scene root, not those of its parents. Depth does not matter: models above are what
/// counts.
std::string FullNameOf(const Database& database, const Object& object);

/// Finds objects by full name. The table is made when first asked and again after names or places changed.
class NameIndex
{
public:
    /// All 3D objects, materials and top-level objects of this full name, in order of creation; else the one
    /// property, parameter or component below such an object. Empty if there is none.
    std::vector<ObjectId> Find(const Database& database, const std::string& fullName);

private:
    void Rebuild(const Database& database);

    std::unordered_map<std::string, std::vector<ObjectId>> m_objects;
    std::uint64_t m_revision = 0;
    bool m_isBuilt = false;
};

} // namespace XSI::Host
