#pragma once

#include "collect/ExportBase.h"

#include <xsi_transformation.h>

#include <memory>
#include <vector>

namespace tq4x
{

struct Bone;
class ExportMesh;

/// Base of the collectors of objects in space: turns a host object into a `Bone`.
class ExportX3DObject : public ExportBase
{
public:
    ExportX3DObject(ExportContext& context, const XSI::CRef& object);
    ~ExportX3DObject() override;

    bool IsKindOf(CollectorKind kind) const override { return kind == CollectorKind::X3DObject; }

    /// Takes the collector of the host parent, in the same instance first, as `Parent`, and joins its
    /// children.
    void Link() override;

    /// Takes the unique name, once. All objects have theirs before the first is exported, since the bones of
    /// a skin are sorted by name.
    void RegisterName();

    /// Name, scaling rule, attribute properties, place in the tree, bind pose, samples, channels. The parent
    /// must have run before. False for an object that the host no longer knows.
    bool Export() override;

    tq4x::Bone& TargetBone() { return *m_bone; }

    std::vector<ExportX3DObject*> Children;    ///< collectors of the child objects, in the order of linking
    std::vector<ExportMesh*> InfluencedMeshes; ///< skinned meshes that this object moves

protected:
    /// Warns, once for each object, that it holds numbers that are not finite: they are exported as they are.
    void CheckFinite(bool isFinite);

private:
    ExportX3DObject* FindParent() const;
    void ReadScalingRule();
    void ReadProperties();
    void ReadBillboard(int type);
    void JoinTree();
    void ReadBindPose();
    XSI::MATH::CTransformation BaseTransform() const;
    XSI::MATH::CTransformation InstanceTransform() const;
    void TakeBindPose(const XSI::MATH::CTransformation& pose, const XSI::MATH::CTransformation& sheared);
    void Sample();
    void RestoreEvaluation() const;

    std::unique_ptr<tq4x::Bone> m_ownedBone; ///< until the bone joins the tree, which owns it from then on
    tq4x::Bone* m_bone;                      ///< made with the collector, so that skins can refer to it
    XSI::CRef m_visibility;                  ///< the object's visibility property, if it has one
    bool m_isNamed = false;
    bool m_isToldNotFinite = false;
};

/// The collector of a plain object: a null, a model, an element of a chain.
class ExportNode : public ExportX3DObject
{
public:
    using ExportX3DObject::ExportX3DObject;

    CollectorKind GetKind() const override { return CollectorKind::Node; }

    bool IsKindOf(CollectorKind kind) const override
    {
        return kind == CollectorKind::Node || ExportX3DObject::IsKindOf(kind);
    }
};

} // namespace tq4x
