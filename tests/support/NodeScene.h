#pragma once

#include "math/Matrix44.h"
#include "scene/Bone.h"
#include "scene/NodeTree.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tq4x::test
{

/// A tree of nodes below the root "root".
class NodeScene
{
public:
    NodeScene() { m_root->Name = "root"; }

    Bone& Root() { return *m_root; }

    /// A new child; its one sample is the given transform.
    static Bone& Add(Bone& parent, const std::string& name, const TransformParts& transform = {})
    {
        auto child = std::make_unique<Bone>();
        child->Name = name;
        SetSample(*child, 0, ComposeMatrix(transform));
        return AddChild(std::move(child), parent);
    }

    Bone& Add(const std::string& name, const TransformParts& transform = {})
    {
        return Add(Root(), name, transform);
    }

    /// The bone list; the bones get their indices.
    std::vector<Bone*> Bones()
    {
        std::vector<Bone*> bones;
        CollectBones(Root(), bones);
        return bones;
    }

private:
    std::unique_ptr<Bone> m_root = std::make_unique<Bone>();
};

inline Matrix44 Translation(float x, float y, float z)
{
    return ComposeMatrix({{1, 1, 1}, {}, {x, y, z}});
}

/// Gives the node a bind pose.
inline void SetBindPose(Bone& bone, const Matrix44& global)
{
    bone.BindMatrix = global;
    bone.HasSkinningMatrix = true;
}

} // namespace tq4x::test
