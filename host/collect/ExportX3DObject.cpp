#include "collect/ExportX3DObject.h"

#include "collect/FiniteValues.h"
#include "collect/ReadUserData.h"
#include "collect/SampleFrames.h"
#include "export/Each.h"
#include "export/ExportContext.h"
#include "pipeline/MessageLog.h"
#include "scene/ExtractChannels.h"
#include "scene/NodeTree.h"

#include <xsi_model.h>
#include <xsi_parameter.h>
#include <xsi_property.h>
#include <xsi_x3dobject.h>

#include <algorithm>
#include <utility>

namespace tq4x
{
namespace
{

using XSI::CurrentTime;
using XSI::MATH::CTransformation;

constexpr int LastWrittenBillboard = 4; // the files have no word for the axial ones
constexpr double BindFrame = 0.0; // bind poses are taken at the host's frame 0, wherever the window begins

Matrix44 ToMatrix44(const CTransformation& transform)
{
    const XSI::MATH::CMatrix4 matrix = transform.GetMatrix4();
    Matrix44 narrowed;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            narrowed(static_cast<std::size_t>(row), static_cast<std::size_t>(column)) =
                static_cast<float>(matrix.GetValue(row, column));
    return narrowed;
}

bool ReadBool(const XSI::Property& property, const char* name)
{
    return static_cast<bool>(property.GetParameterValue(name, CurrentTime));
}

int ReadInt(const XSI::Property& property, const char* name)
{
    return static_cast<LONG>(property.GetParameterValue(name, CurrentTime));
}

int ReadCombineGroup(const XSI::Property& property)
{
    return std::clamp(ReadInt(property, "TQ4X_ForPennonCombineGroupValue"), -1, 255);
}

} // namespace

ExportX3DObject::ExportX3DObject(ExportContext& context, const XSI::CRef& object)
    : ExportBase(context, object),
      m_ownedBone(std::make_unique<Bone>()),
      m_bone(m_ownedBone.get())
{}

ExportX3DObject::~ExportX3DObject() = default;

void ExportX3DObject::Link()
{
    Parent = FindParent();
    if (Parent != nullptr)
        Parent->Children.push_back(this);
}

/// Inside an instance, the instance stands in the place of its master, and in that of a parent that is not
/// exported.
ExportX3DObject* ExportX3DObject::FindParent() const
{
    const XSI::CRef hostParent = XSI::X3DObject(Object).GetParent();
    if (Instances.empty())
        return Context.FindX3DObject(hostParent, {});
    const XSI::Model owner(Instances.back());
    ExportX3DObject* parent = hostParent == owner.GetInstanceMaster().GetRef()
                                  ? nullptr
                                  : Context.FindX3DObject(hostParent, Instances);
    const InstancePath outer(Instances.begin(), Instances.end() - 1);
    return parent != nullptr ? parent : Context.FindX3DObject(owner.GetRef(), outer);
}

bool ExportX3DObject::Export()
{
    if (!CheckObject())
        return false;
    RegisterName();
    ReadScalingRule();
    ReadProperties();
    JoinTree();
    ReadBindPose();
    Sample();
    const ExportValues& values = GlobalExportValues();
    ExtractChannels(*m_bone, {values.Tolerances, values.FrameSteps});
    CheckFinite(AreFinite(*m_bone));
    return true;
}

void ExportX3DObject::CheckFinite(bool isFinite)
{
    if (!isFinite && !m_isToldNotFinite)
        PrintMessage("Values that are not finite exist(" + m_bone->Name + ").", Severity::Warning);
    m_isToldNotFinite |= !isFinite;
}

void ExportX3DObject::RegisterName()
{
    if (std::exchange(m_isNamed, true))
        return;
    const std::string hostName = ObjectName();
    m_bone->Name = Context.NodeNames.GetUniqueName(hostName);
    if (m_bone->Name != hostName)
        ReportMessage(MessageCode::NodeNameChanged, hostName + " -> " + m_bone->Name);
}

void ExportX3DObject::ReadScalingRule()
{
    const XSI::X3DObject object(Object);
    const bool isHierarchical = static_cast<bool>(object.GetParameterValue("siscaling", CurrentTime));
    m_bone->ScalingRule = isHierarchical ? ScalingRule::Softimage : ScalingRule::Standard;
}

void ExportX3DObject::ReadProperties()
{
    for (const XSI::CRef& reference : Each(XSI::X3DObject(Object).GetProperties())) {
        const XSI::Property property(reference);
        const XSI::CString type = property.GetType();
        if (type == "visibility") {
            m_bone->IsVisible = ReadBool(property, "viewvis");
            m_visibility = reference;
        } else if (type == "TQ4X_ForPennonNoCompProp") {
            m_bone->IsNoCompress = ReadBool(property, "TQ4X_ForPennonNoCompressNode");
        } else if (type == "TQ4X_ForPennonBillboardProp") {
            ReadBillboard(ReadInt(property, "TQ4X_ForPennonBillboardType"));
        } else if (type == "TQ4X_ForPennonCombineGroupProp") {
            if (ReadBool(property, "TQ4X_ForPennonCombineGroupUse"))
                m_bone->CombineGroup = ReadCombineGroup(property);
        } else if (type == "TQ4X_ForPennonForceExportKeyProp") {
            m_bone->IsForceTranslateKey = ReadBool(property, "TQ4X_ForPennonForceExportKeyTrans");
            m_bone->IsForceRotateKey = ReadBool(property, "TQ4X_ForPennonForceExportKeyRotate");
            m_bone->IsForceScaleKey = ReadBool(property, "TQ4X_ForPennonForceExportKeyScale");
        } else if (type == "TQ4X_ForPennonUserDataProp") {
            AppendUserData(property, m_bone->UserData);
        }
    }
}

void ExportX3DObject::ReadBillboard(int type)
{
    m_bone->BillboardMode = type;
    if (type != 0)
        ReportMessage(MessageCode::BillboardIgnored, m_bone->Name); // a reminder, whatever the option says
    const bool hasWord = type >= 0 && type <= LastWrittenBillboard;
    if (!hasWord)
        PrintMessage("Billboard Type is not supported(" + m_bone->Name + ").", Severity::Warning);
}

void ExportX3DObject::JoinTree()
{
    if (Parent != nullptr)
        AddChild(std::move(m_ownedBone), Parent->TargetBone());
    else if (Context.Content.Root != nullptr)
        AddChild(std::move(m_ownedBone), *Context.Content.Root);
    else
        Context.Content.Root = std::move(m_ownedBone);
}

void ExportX3DObject::ReadBindPose()
{
    const XSI::X3DObject object(Object);
    if (object.HasStaticKinematicState()) {
        const CTransformation pose = object.GetStaticKinematicState().GetTransform(BindFrame);
        TakeBindPose(pose, pose);
        RestoreEvaluation();
        return;
    }
    const bool takesPose =
        object.IsA(XSI::siChainBoneID) || object.IsA(XSI::siChainEffectorID) || IsKindOf(CollectorKind::Mesh);
    if (!takesPose)
        return;
    const CTransformation local = object.GetKinematics().GetLocal().GetTransform(BindFrame);
    TakeBindPose(ConvertToModel ? local : object.GetKinematics().GetGlobal().GetTransform(BindFrame), local);
    RestoreEvaluation();
}

/// Asking for another frame leaves the host's object evaluated there until it is asked for its present place.
void ExportX3DObject::RestoreEvaluation() const
{
    const XSI::Kinematics kinematics = XSI::X3DObject(Object).GetKinematics();
    static_cast<void>(kinematics.GetLocal().GetTransform(CurrentTime));
    static_cast<void>(kinematics.GetGlobal().GetTransform(CurrentTime));
}

void ExportX3DObject::TakeBindPose(const CTransformation& pose, const CTransformation& sheared)
{
    if (sheared.HasScalingOrientation())
        ReportMessage(MessageCode::ShearNotZero, m_bone->Name);
    CTransformation bind = pose;
    bind.MulInPlace(BaseTransform());
    bind.MulInPlace(InstanceTransform());
    m_bone->BindMatrix = ToMatrix44(bind);
    m_bone->HasSkinningMatrix = true;
}

/// The parent object's place in the scene for an object that is exported relative to a model root, else
/// identity.
CTransformation ExportX3DObject::BaseTransform() const
{
    if (!ConvertToModel)
        return {};
    const XSI::X3DObject parent(XSI::X3DObject(Object).GetParent());
    if (!parent.IsValid())
        return {};
    return parent.HasStaticKinematicState() ? parent.GetStaticKinematicState().GetTransform(BindFrame)
                                            : parent.GetKinematics().GetGlobal().GetTransform(BindFrame);
}

/// Inside an instance the host's transforms are those of the master: from the master's place to the
/// instance's, from the inner instance to the outer ones.
CTransformation ExportX3DObject::InstanceTransform() const
{
    CTransformation whole;
    for (auto reference = Instances.rbegin(); reference != Instances.rend(); ++reference) {
        const XSI::Model instance(*reference);
        CTransformation transform =
            instance.GetInstanceMaster().GetKinematics().GetGlobal().GetTransform(BindFrame);
        if (!transform.InvertInPlace())
            continue; // what it shows stays where the master is
        whole.MulInPlace(transform);
        whole.MulInPlace(instance.GetKinematics().GetGlobal().GetTransform(BindFrame));
    }
    return whole;
}

void ExportX3DObject::Sample()
{
    const XSI::KinematicState local = XSI::X3DObject(Object).GetKinematics().GetLocal();
    const XSI::Property visibility(m_visibility);
    std::int32_t index = 0;
    SampleFrames(GlobalExportValues(), [&](double frame) {
        SetSample(*m_bone, index++, ToMatrix44(local.GetTransform(frame)));
        if (visibility.IsValid())
            AppendVisibility(*m_bone, static_cast<float>(visibility.GetParameterValue("viewvis", frame)));
    });
    static_cast<void>(local.GetTransform(CurrentTime));
}

} // namespace tq4x
