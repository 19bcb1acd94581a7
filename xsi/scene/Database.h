#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "scene/Records.h"

namespace XSI::Host
{

/// All objects of the process, by number. Numbers are never given twice.
class Database
{
public:
    /// Makes an object. It goes with its parent's lifetime, or with the scene if it has no parent. The caller
    /// enters it in the parent's list that fits.
    template<class T>
    T& Create(siClassID classId, std::string_view name, std::string_view type = {}, ObjectId parent = 0)
    {
        auto made = std::make_unique<T>();
        T& object = *made;
        Register(std::move(made), classId, name, type, parent);
        return object;
    }

    /// The object of a number; null for 0, for one that was deleted, and for one that is no T.
    Object* Find(ObjectId id) const;

    Object* Find(const CRef& ref) const { return Find(ref.GetObjectID()); }

    template<class T>
    T* Find(ObjectId id) const
    {
        return dynamic_cast<T*>(Find(id));
    }

    template<class T>
    T* Find(const CRef& ref) const
    {
        return dynamic_cast<T*>(Find(ref.GetObjectID()));
    }

    /// Deletes an object with all that it owns, at any depth, and takes it out of its parent's lists.
    void Delete(ObjectId id);

    /// Deletes all objects that go with the scene.
    void DeleteScene();

    /// Deletes all objects.
    void DeleteAll();

    /// Runs a function on each object in order of creation. It must not create or delete any.
    template<class Visit>
    void ForEach(const Visit& visit) const
    {
        for (const auto& [id, object] : m_kept) {
            visit(*object);
        }
        for (const auto& object : m_objects) {
            if (object != nullptr) {
                visit(*object);
            }
        }
    }

    /// Numbers that change whenever names or places of objects, or anything that transformations depend on,
    /// may have changed.
    std::uint64_t NameRevision() const { return m_nameRevision; }

    std::uint64_t TransformRevision() const { return m_transformRevision; }

    void TouchNames() { ++m_nameRevision; }

    void TouchTransforms() { ++m_transformRevision; }

private:
    void Register(std::unique_ptr<Object> object, siClassID classId, std::string_view name,
                  std::string_view type, ObjectId parent);

    /// The end of an object of which nothing else is told.
    void Erase(ObjectId id);

    /// Starts an empty list behind the numbers given so far.
    void StartNewList();

    std::map<ObjectId, std::unique_ptr<Object>>
        m_kept; ///< Those that outlived the scene in which they were made.
    std::vector<std::unique_ptr<Object>> m_objects; ///< All others, by number less 1 and the first one's.
    ObjectId m_first = 0;
    std::uint64_t m_nameRevision = 0;
    std::uint64_t m_transformRevision = 0;
};

/// A reference to a record.
inline CRef RefOf(const Object& object)
{
    return CRef::FromObjectID(object.Id);
}

/// References to the objects of a list that still exist.
CRefArray RefsOf(const Database& database, const std::vector<ObjectId>& ids);

} // namespace XSI::Host
