#include "scene/FullNames.h"

#include <algorithm>

#include "scene/ClassTree.h"

namespace XSI::Host
{

namespace
{

/// The object whose full name stands before this one's; null if nothing does.
const Object* NamePrefixOwner(const Database& database, const Object& object)
{
    if (const auto* node = dynamic_cast<const NodeObject*>(&object)) {
        const auto* model = database.Find<NodeObject>(node->Model);
        return model != nullptr && model->Model != 0 ? model : nullptr;
    }
    if (!IsDerived(object.ClassId, siProjectItemID)) {
        return nullptr;
    }
    const Object* parent = database.Find(object.Parent);
    const bool isTop = parent == nullptr || parent->ClassId == siSceneID || parent->ClassId == siProjectID;
    return isTop ? nullptr : parent;
}

bool IsIndexed(const Database& database, const Object& object)
{
    if (!IsDerived(object.ClassId, siProjectItemID)) {
        return false;
    }
    const bool isKnownClass = IsDerived(object.ClassId, siX3DObjectID) || object.ClassId == siMaterialID;
    return isKnownClass || NamePrefixOwner(database, object) == nullptr;
}

const Object* FindByName(const Database& database, const std::vector<ObjectId>& ids, std::string_view name)
{
    for (const ObjectId id : ids) {
        const Object* object = database.Find(id);
        if (object != nullptr && object->Name == name) {
            return object;
        }
    }
    return nullptr;
}

/// The object of this name directly below an object: parameter, property or what else it owns.
const Object* FindBelow(const Database& database, const Object& object, std::string_view name)
{
    std::vector<ObjectId> owned;
    if (const auto* node = dynamic_cast<const NodeObject*>(&object)) {
        node->ItemObject::ListOwned(owned); // its children have names of their own
        owned.push_back(node->Kinematics);
        owned.push_back(node->Primitive);
    } else {
        object.ListOwned(owned);
    }
    return FindByName(database, owned, name);
}

/// Follows "property.parameter" down from an object. Names may hold points themselves, so each length of the
/// first piece is tried, the shortest first.
const Object* FollowPath(const Database& database, const Object& from, std::string_view path)
{
    const Object* at = &from;
    std::size_t start = 0;
    for (std::size_t end = path.find('.'); start <= path.size(); end = path.find('.', end + 1)) {
        const bool isLast = end == std::string_view::npos;
        const std::string_view piece = path.substr(start, isLast ? end : end - start);
        const Object* found = FindBelow(database, *at, piece);
        if (isLast) {
            return found;
        }
        if (found != nullptr) {
            at = found;
            start = end + 1;
        }
    }
    return nullptr;
}

} // namespace

std::string FullNameOf(const Database& database, const Object& object)
{
    std::vector<const Object*> pieces;
    for (const Object* at = &object; at != nullptr; at = NamePrefixOwner(database, *at)) {
        pieces.push_back(at);
    }
    std::string name;
    for (auto piece = pieces.rbegin(); piece != pieces.rend(); ++piece) {
        name += name.empty() ? "" : ".";
        name += (*piece)->Name;
    }
    return name;
}

std::vector<ObjectId> NameIndex::Find(const Database& database, const std::string& fullName)
{
    if (!m_isBuilt || m_revision != database.NameRevision()) {
        Rebuild(database);
    }
    const auto whole = m_objects.find(fullName);
    if (whole != m_objects.end()) {
        return whole->second;
    }
    for (std::size_t end = fullName.rfind('.'); end != std::string::npos && end != 0;
         end = fullName.rfind('.', end - 1)) {
        const auto owner = m_objects.find(fullName.substr(0, end));
        if (owner == m_objects.end()) {
            continue;
        }
        const std::string_view path = std::string_view(fullName).substr(end + 1);
        if (const Object* found = FollowPath(database, *database.Find(owner->second.front()), path)) {
            return {found->Id};
        }
    }
    return {};
}

void NameIndex::Rebuild(const Database& database)
{
    m_objects.clear();
    database.ForEach([&](const Object& object) {
        if (IsIndexed(database, object)) {
            m_objects[FullNameOf(database, object)].push_back(object.Id);
        }
    });
    m_revision = database.NameRevision();
    m_isBuilt = true;
}

} // namespace XSI::Host
