#include "scene/Records.h"

namespace XSI::Host
{

namespace
{

void Append(std::vector<ObjectId>& list, const std::vector<ObjectId>& more)
{
    list.insert(list.end(), more.begin(), more.end());
}

void AppendIfAny(std::vector<ObjectId>& list, ObjectId id)
{
    if (id != 0) {
        list.push_back(id);
    }
}

void Clear(ObjectId& relation, ObjectId id)
{
    if (relation == id) {
        relation = 0;
    }
}

} // namespace

bool OrderedIds::Add(ObjectId id)
{
    if (!m_known.insert(id).second) {
        return false;
    }
    m_order.push_back(id);
    return true;
}

bool OrderedIds::Remove(ObjectId id)
{
    if (m_known.erase(id) == 0) {
        return false;
    }
    std::erase(m_order, id);
    return true;
}

void OrderedIds::Clear()
{
    m_order.clear();
    m_known.clear();
}

void Object::ListOwned(std::vector<ObjectId>& owned) const
{
    Append(owned, Nested);
}

void Object::Forget(ObjectId id)
{
    std::erase(Nested, id);
}

void ParameterObject::ListOwned(std::vector<ObjectId>& owned) const
{
    Object::ListOwned(owned);
    Append(owned, Components);
}

void ParameterObject::Forget(ObjectId id)
{
    Object::Forget(id);
    std::erase(Components, id);
}

void ItemObject::ListOwned(std::vector<ObjectId>& owned) const
{
    Object::ListOwned(owned);
    Append(owned, Parameters);
    Append(owned, Properties);
    AppendIfAny(owned, Layout);
}

void ItemObject::Forget(ObjectId id)
{
    Object::Forget(id);
    std::erase(Parameters, id);
    std::erase(Properties, id);
    Clear(Layout, id);
}

void NodeObject::ListOwned(std::vector<ObjectId>& owned) const
{
    ItemObject::ListOwned(owned);
    Append(owned, Children);
    Append(owned, Shaders);
    AppendIfAny(owned, Kinematics);
    AppendIfAny(owned, StaticKinematics);
    AppendIfAny(owned, Primitive);
}

void NodeObject::Forget(ObjectId id)
{
    ItemObject::Forget(id);
    std::erase(Children, id);
    std::erase(Shaders, id);
    Clear(Kinematics, id);
    Clear(StaticKinematics, id);
    Clear(Primitive, id);
    Clear(ScalingRule, id);
}

void KinematicsObject::ListOwned(std::vector<ObjectId>& owned) const
{
    ItemObject::ListOwned(owned);
    owned.push_back(Local);
    owned.push_back(Global);
    Append(owned, Constraints);
}

void KinematicsObject::Forget(ObjectId id)
{
    ItemObject::Forget(id);
    std::erase(Constraints, id);
}

void LibraryObject::ListOwned(std::vector<ObjectId>& owned) const
{
    ItemObject::ListOwned(owned);
    Append(owned, Materials);
}

void LibraryObject::Forget(ObjectId id)
{
    ItemObject::Forget(id);
    std::erase(Materials, id);
}

void SceneObject::ListOwned(std::vector<ObjectId>& owned) const
{
    ItemObject::ListOwned(owned);
    AppendIfAny(owned, Root);
    Append(owned, Libraries);
}

void SceneObject::Forget(ObjectId id)
{
    ItemObject::Forget(id);
    Clear(Root, id);
    std::erase(Libraries, id);
}

void ShaderObject::ListOwned(std::vector<ObjectId>& owned) const
{
    ItemObject::ListOwned(owned);
    Append(owned, Layers);
}

void ShaderObject::Forget(ObjectId id)
{
    ItemObject::Forget(id);
    std::erase(Layers, id);
}

void ClipObject::ListOwned(std::vector<ObjectId>& owned) const
{
    ItemObject::ListOwned(owned);
    AppendIfAny(owned, TimeControl);
}

void PrimitiveObject::ListOwned(std::vector<ObjectId>& owned) const
{
    ItemObject::ListOwned(owned);
    AppendIfAny(owned, Geometry);
}

void GeometryObject::ListOwned(std::vector<ObjectId>& owned) const
{
    ItemObject::ListOwned(owned);
    Append(owned, Clusters);
}

void GeometryObject::Forget(ObjectId id)
{
    ItemObject::Forget(id);
    std::erase(Clusters, id);
}

void PluginObject::ListOwned(std::vector<ObjectId>& owned) const
{
    Object::ListOwned(owned);
    Append(owned, Items);
}

void CommandObject::ListOwned(std::vector<ObjectId>& owned) const
{
    Object::ListOwned(owned);
    Append(owned, Arguments);
}

void MenuObject::ListOwned(std::vector<ObjectId>& owned) const
{
    Object::ListOwned(owned);
    Append(owned, Items);
}

void LayoutObject::ListOwned(std::vector<ObjectId>& owned) const
{
    Object::ListOwned(owned);
    Append(owned, Items);
}

} // namespace XSI::Host
