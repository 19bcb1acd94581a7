#include <xsi_kinematics.h>

#include <xsi_constraint.h>
#include <xsi_statickinematicstate.h>
#include <xsi_x3dobject.h>

#include "scene/NodeRecords.h"
#include "scene/Session.h"
#include "scene/SetTransforms.h"

namespace XSI
{

namespace
{

Host::KinematicsObject* RecordOf(const CRef& ref)
{
    return Host::Objects().Find<Host::KinematicsObject>(ref);
}

/// The object that a kinematic state moves, and which of its states it is.
struct StateOwner
{
    Host::NodeObject* Node = nullptr;
    bool IsGlobal = false;
};

StateOwner OwnerOf(const CRef& state)
{
    const Host::Object* object = Host::Objects().Find(state);
    const auto* kinematics =
        object != nullptr ? Host::Objects().Find<Host::KinematicsObject>(object->Parent) : nullptr;
    if (kinematics == nullptr) {
        return {};
    }
    return {Host::Objects().Find<Host::NodeObject>(kinematics->Parent), kinematics->Global == object->Id};
}

MATH::CTransformation GlobalTransform(Host::NodeObject& node, double frame)
{
    return MATH::CTransformation(Host::Session::Current().Transforms.Global(Host::Objects(), node, frame));
}

} // namespace

KinematicState Kinematics::GetLocal() const
{
    const Host::KinematicsObject* kinematics = RecordOf(GetRef());
    return kinematics != nullptr ? CRef::FromObjectID(kinematics->Local) : CRef();
}

KinematicState Kinematics::GetGlobal() const
{
    const Host::KinematicsObject* kinematics = RecordOf(GetRef());
    return kinematics != nullptr ? CRef::FromObjectID(kinematics->Global) : CRef();
}

CRefArray Kinematics::GetConstraints() const
{
    const Host::KinematicsObject* kinematics = RecordOf(GetRef());
    return kinematics != nullptr ? Host::RefsOf(Host::Objects(), kinematics->Constraints) : CRefArray();
}

MATH::CTransformation KinematicState::GetTransform(double time) const
{
    const StateOwner owner = OwnerOf(GetRef());
    if (owner.Node == nullptr) {
        return MATH::CTransformation();
    }
    const double frame = Host::FrameOf(time);
    return owner.IsGlobal ? GlobalTransform(*owner.Node, frame) : Host::LocalTransform(*owner.Node, frame);
}

CStatus KinematicState::PutTransform(const MATH::CTransformation& transform, double time)
{
    const StateOwner owner = OwnerOf(GetRef());
    if (owner.Node == nullptr) {
        return CStatus::Fail;
    }
    MATH::CTransformation local = transform;
    auto* parent = Host::Objects().Find<Host::NodeObject>(owner.Node->Parent);
    if (owner.IsGlobal && parent != nullptr) {
        MATH::CTransformation above = GlobalTransform(*parent, Host::FrameOf(time));
        if (!above.InvertInPlace()) {
            return CStatus::Fail;
        }
        local.MulInPlace(above);
    }
    Host::SetLocalTransform(Host::RefOf(*owner.Node), local);
    return CStatus::OK;
}

MATH::CTransformation StaticKinematicState::GetTransform(double) const
{
    const auto* node = Host::Objects().Find<Host::NodeObject>(GetParent());
    return node != nullptr ? node->StaticState.value_or(MATH::CTransformation()) : MATH::CTransformation();
}

X3DObject Constraint::GetConstrained() const
{
    return Kinematics(GetParent()).GetParent();
}

CRefArray Constraint::GetConstraining() const
{
    const auto* constraint = Host::Objects().Find<Host::ConstraintObject>(GetRef());
    return constraint != nullptr ? CRefArray(constraint->Constraining) : CRefArray();
}

CRef Constraint::GetUpVectorReference() const
{
    const auto* constraint = Host::Objects().Find<Host::ConstraintObject>(GetRef());
    return constraint != nullptr ? CRef::FromObjectID(constraint->UpVector.GetObjectID()) : CRef();
}

} // namespace XSI
