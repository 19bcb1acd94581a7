#include "scene/Database.h"

#include "scene/ClassTree.h"

namespace XSI::Host
{

void Database::Register(std::unique_ptr<Object> object, siClassID classId, std::string_view name,
                        std::string_view type, ObjectId parent)
{
    const Object* owner = Find(parent);
    object->ClassId = classId;
    object->Name = name;
    object->Type = type;
    object->Parent = owner != nullptr ? parent : 0;
    object->Life = owner != nullptr ? owner->Life : Lifetime::Scene;
    object->Id = static_cast<ObjectId>(m_first + m_objects.size() + 1);
    m_objects.push_back(std::move(object));
}

Object* Database::Find(ObjectId id) const
{
    if (id > m_first) {
        const std::size_t place = id - m_first - 1;
        return place < m_objects.size() ? m_objects[place].get() : nullptr;
    }
    const auto kept = m_kept.find(id);
    return kept != m_kept.end() ? kept->second.get() : nullptr;
}

void Database::Delete(ObjectId id)
{
    const Object* object = Find(id);
    if (object == nullptr) {
        return;
    }
    if (Object* parent = Find(object->Parent)) {
        parent->Forget(id);
    }
    bool isSceneChanged = false; // contexts come and go with each callback and change nothing
    std::vector<ObjectId> waiting{id};
    while (!waiting.empty()) {
        const ObjectId next = waiting.back();
        waiting.pop_back();
        if (const Object* deleted = Find(next)) {
            isSceneChanged = isSceneChanged || IsDerived(deleted->ClassId, siProjectItemID);
            deleted->ListOwned(waiting);
            Erase(next);
        }
    }
    if (isSceneChanged) {
        TouchNames();
        TouchTransforms();
    }
}

void Database::DeleteScene()
{
    for (auto& object : m_objects) {
        if (object != nullptr && object->Life == Lifetime::Session) {
            m_kept.emplace(object->Id, std::move(object));
        }
    }
    StartNewList();
}

void Database::DeleteAll()
{
    m_kept.clear();
    StartNewList();
}

void Database::Erase(ObjectId id)
{
    if (id > m_first) {
        m_objects[id - m_first - 1].reset();
    } else {
        m_kept.erase(id);
    }
}

void Database::StartNewList()
{
    m_first += static_cast<ObjectId>(m_objects.size());
    m_objects.clear();
    TouchNames();
    TouchTransforms();
}

CRefArray RefsOf(const Database& database, const std::vector<ObjectId>& ids)
{
    std::vector<CRef> refs;
    refs.reserve(ids.size());
    for (const ObjectId id : ids) {
        if (database.Find(id) != nullptr) {
            refs.push_back(CRef::FromObjectID(id));
        }
    }
    return CRefArray(std::move(refs));
}

} // namespace XSI::Host
