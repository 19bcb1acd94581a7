#include "PrintValues.h"

#include <xsi_application.h>
#include <xsi_camera.h>
#include <xsi_cluster.h>
#include <xsi_clusterproperty.h>
#include <xsi_command.h>
#include <xsi_constraint.h>
#include <xsi_customproperty.h>
#include <xsi_envelope.h>
#include <xsi_imageclip2.h>
#include <xsi_light.h>
#include <xsi_material.h>
#include <xsi_materiallibrary.h>
#include <xsi_menu.h>
#include <xsi_plugin.h>
#include <xsi_polygonmesh.h>
#include <xsi_ppgeventcontext.h>
#include <xsi_ppglayout.h>
#include <xsi_primitive.h>
#include <xsi_property.h>
#include <xsi_shaderparameter.h>
#include <xsi_texture.h>
#include <xsi_texturelayer.h>

// Plug-ins follow chains of relations and ask for validity at the end, if at all: each call on a handle
// without an object must answer with nothing.

namespace tq4x::test
{
namespace
{

using namespace XSI;

TEST(InvalidHandle, Objects)
{
    X3DObject object;
    EXPECT_EQ(object.GetName(), L"");
    EXPECT_EQ(object.GetFullName(), L"");
    EXPECT_EQ(object.GetUniqueName(), L"");
    EXPECT_EQ(object.GetType(), L"");
    EXPECT_FALSE(object.GetParent().IsValid());
    EXPECT_EQ(object.GetNestedObjects().GetCount(), 0);
    EXPECT_EQ(object.GetObjectID(), 0u);
    EXPECT_EQ(object.GetChildren().GetCount(), 0);
    EXPECT_EQ(object.FindChildren(L"", L"", CStringArray()).GetCount(), 0);
    EXPECT_EQ(object.GetProperties().GetCount(), 0);
    EXPECT_FALSE(object.AddProperty(L"visibility").IsValid());
    EXPECT_FALSE(object.AddProperty(L"Prop").IsValid());
    EXPECT_FALSE(object.AddCustomProperty(L"Prop").IsValid());
    Property added;
    EXPECT_EQ(object.AddProperty(L"Prop", false, L"", added), CStatus::Fail);
    EXPECT_FALSE(object.HasStaticKinematicState());
    EXPECT_FALSE(object.GetStaticKinematicState().IsValid());
    EXPECT_FALSE(object.GetActivePrimitive().GetGeometry().IsValid());
    EXPECT_FALSE(object.GetMaterial().IsValid());
    EXPECT_EQ(object.GetMaterials().GetCount(), 0);
    EXPECT_EQ(object.GetEnvelopes().GetCount(), 0);
    EXPECT_EQ(Model().GetModelKind(), siModelKind_Regular);
    EXPECT_FALSE(Model().GetInstanceMaster().IsValid());
    EXPECT_EQ(Light().GetShaders().GetCount(), 0);
}

TEST(InvalidHandle, Kinematics)
{
    const Kinematics kinematics = X3DObject().GetKinematics();
    EXPECT_FALSE(kinematics.GetLocal().IsValid());
    EXPECT_FALSE(kinematics.GetGlobal().IsValid());
    EXPECT_EQ(kinematics.GetConstraints().GetCount(), 0);
    EXPECT_EQ(kinematics.GetLocal().GetTransform(3.0).GetMatrix4(), MATH::CMatrix4());
    EXPECT_EQ(KinematicState().PutTransform(MATH::CTransformation()), CStatus::Fail);
    EXPECT_EQ(StaticKinematicState().GetTransform().GetMatrix4(), MATH::CMatrix4());
    EXPECT_FALSE(Constraint().GetConstrained().IsValid());
    EXPECT_EQ(Constraint().GetConstraining().GetCount(), 0);
    EXPECT_FALSE(Constraint().GetUpVectorReference().IsValid());
}

TEST(InvalidHandle, Parameters)
{
    ProjectItem item;
    EXPECT_FALSE(item.GetParameter(L"x").IsValid());
    EXPECT_EQ(item.GetParameters().GetCount(), 0);
    EXPECT_TRUE(item.GetParameterValue(L"x", 1.0).IsEmpty());
    EXPECT_EQ(item.PutParameterValue(L"x", 1), CStatus::MemberNotFound);
    EXPECT_FALSE(item.IsAnimated());

    Parameter parameter;
    EXPECT_TRUE(parameter.GetValue().IsEmpty());
    EXPECT_EQ(parameter.PutValue(1), CStatus::Fail);
    EXPECT_EQ(parameter.GetValueType(), CValue::siEmpty);
    EXPECT_TRUE(parameter.GetDefault().IsEmpty());
    EXPECT_TRUE(parameter.GetMin().IsEmpty());
    EXPECT_TRUE(parameter.GetMax().IsEmpty());
    EXPECT_TRUE(parameter.GetSuggestedMin().IsEmpty());
    EXPECT_TRUE(parameter.GetSuggestedMax().IsEmpty());
    EXPECT_FALSE(parameter.GetCapabilityFlag(siReadOnly));
    EXPECT_EQ(parameter.PutCapabilityFlag(siReadOnly, true), CStatus::Fail);
    EXPECT_EQ(parameter.GetCapabilities(), 0);
    EXPECT_FALSE(parameter.GetSource().IsValid());
    EXPECT_FALSE(parameter.IsAnimated());
    EXPECT_EQ(parameter.GetScriptName(), L"");

    CustomProperty property;
    EXPECT_EQ(property.AddParameter(L"x", CValue::siInt4, 4, L"", L"", 1, parameter), CStatus::Fail);
    EXPECT_EQ(property.RemoveParameter(parameter), CStatus::Fail);
    EXPECT_FALSE(property.GetPPGLayout().IsValid());
}

TEST(InvalidHandle, MaterialsAndImages)
{
    EXPECT_FALSE(Material().GetLibrary().IsValid());
    EXPECT_EQ(Material().GetUsedBy().GetCount(), 0);
    EXPECT_EQ(MaterialLibrary().GetItems().GetCount(), 0);
    EXPECT_EQ(Shader().GetProgID(), L"");
    EXPECT_EQ(Shader().GetTextureLayers().GetCount(), 0);
    EXPECT_FALSE(Texture().GetImageClip().IsValid());
    EXPECT_FALSE(TextureLayer().GetParameter(L"color").GetSource().IsValid());
    EXPECT_FALSE(Clip().GetTimeControl().IsValid());
    EXPECT_EQ(ImageClip2().GetFileName(), L"");
    EXPECT_FALSE(ImageClip2().GetImage(1.0).IsValid());
    EXPECT_EQ(TimeControl().GetClipIn(), 0.0);
    EXPECT_EQ(TimeControl().GetClipOut(), 0.0);
    EXPECT_EQ(TimeControl().GetScale(), 0.0);
    EXPECT_EQ(TimeControl().GetStartOffset(), 0.0);
    EXPECT_EQ(Image().GetResX(), 0);
    EXPECT_EQ(Image().GetResY(), 0);
    EXPECT_EQ(Image().GetNumChannels(), 0);
    EXPECT_EQ(Image().GetChannelSize(), 0);
    EXPECT_EQ(Image().GetPixelArray(), nullptr);
}

TEST(InvalidHandle, Geometry)
{
    EXPECT_EQ(Geometry().GetClusters().GetCount(), 0);
    EXPECT_FALSE(Cluster().GetMaterial().IsValid());
    CFloatArray floats(3);
    EXPECT_EQ(ClusterProperty().GetValues(floats), CStatus::Fail);
    EXPECT_EQ(floats.GetCount(), 0);
    EXPECT_EQ(ClusterProperty().GetValueSize(), 0);
    EXPECT_EQ(Envelope().GetDeformers().GetCount(), 0);
    EXPECT_EQ(Envelope().GetDeformerWeights(CRef()).GetCount(), 0);
    EXPECT_EQ(Envelope().GetWeights().GetCount(), 0);

    const CGeometryAccessor accessor = PolygonMesh().GetGeometryAccessor();
    CDoubleArray doubles(3);
    CLongArray longs(3);
    EXPECT_FALSE(accessor.IsValid());
    EXPECT_EQ(accessor.GetVertexPositions(doubles), CStatus::Fail);
    EXPECT_EQ(doubles.GetCount(), 0);
    EXPECT_EQ(accessor.GetNodeNormals(floats), CStatus::Fail);
    EXPECT_EQ(accessor.GetPolygonMaterialIndices(longs), CStatus::Fail);
    EXPECT_EQ(accessor.GetTriangleVertexIndices(longs), CStatus::Fail);
    EXPECT_EQ(accessor.GetTriangleNodeIndices(longs), CStatus::Fail);
    EXPECT_EQ(accessor.GetPolygonTriangleIndices(longs), CStatus::Fail);
    EXPECT_EQ(longs.GetCount(), 0);
    EXPECT_EQ(accessor.GetUserNormals().GetCount(), 0);
    EXPECT_EQ(accessor.GetVertexColors().GetCount(), 0);
    EXPECT_EQ(accessor.GetUVs().GetCount(), 0);
    EXPECT_EQ(accessor.GetEnvelopeWeights().GetCount(), 0);
    EXPECT_EQ(accessor.GetMaterials().GetCount(), 0);
    EXPECT_EQ(accessor.GetVertexCount() + accessor.GetNodeCount(), 0);
    EXPECT_EQ(accessor.GetPolygonCount() + accessor.GetTriangleCount(), 0);
}

TEST(InvalidHandle, HostAndUser)
{
    CValue result;
    LONG answer = 0;
    EXPECT_FALSE(Project().GetActiveScene().IsValid());
    EXPECT_FALSE(Scene().GetRoot().IsValid());
    EXPECT_EQ(Scene().GetMaterialLibraries().GetCount(), 0);
    EXPECT_EQ(Selection().GetCount(), 0);
    EXPECT_FALSE(Selection().GetItem(0).IsValid());
    EXPECT_EQ(Selection().GetAsText(), L"");
    EXPECT_EQ(Selection().Add(CRef()), CStatus::Fail);
    EXPECT_EQ(Selection().Remove(CRef()), CStatus::Fail);
    EXPECT_EQ(Selection().Clear(), CStatus::Fail);
    EXPECT_EQ(UIToolkit().MsgBox(L"", siMsgYesNo, L"", answer), CStatus::Fail);
    EXPECT_FALSE(UIToolkit().GetProgressBar().IsValid());
    EXPECT_EQ(ProgressBar().PutValue(3), CStatus::Fail);
    EXPECT_EQ(ProgressBar().Increment(), 0);
    EXPECT_FALSE(Context().GetSource().IsValid());
    EXPECT_TRUE(Context().GetAttribute(L"Arguments").IsEmpty());
    EXPECT_EQ(Context().PutAttribute(L"x", 1), CStatus::Fail);
    EXPECT_EQ(PPGEventContext().GetEventID(), 0);
    EXPECT_EQ(PPGEventContext().GetInspectedObjects().GetCount(), 0);
}

TEST(InvalidHandle, PluginsAndPages)
{
    CValue result;
    EXPECT_EQ(Command().Execute(CValueArray(), result), CStatus::Fail);
    EXPECT_EQ(Command().PutDescription(L""), CStatus::Fail);
    EXPECT_EQ(Command().GetDescription(), L"");
    EXPECT_EQ(Command().EnableReturnValue(true), CStatus::Fail);
    EXPECT_EQ(Command().GetArguments().Add(L"x"), -1);
    EXPECT_EQ(Command().GetArguments().GetCount(), 0);
    EXPECT_FALSE(Command().GetArguments().GetItem(0).IsValid());
    EXPECT_TRUE(Argument().GetDefault().IsEmpty());
    EXPECT_TRUE(Argument().GetValue().IsEmpty());
    MenuItem item;
    EXPECT_EQ(Menu().AddCallbackItem(L"x", L"y", item), CStatus::Fail);
    EXPECT_EQ(Menu().AddSeparatorItem(item), CStatus::Fail);
    EXPECT_EQ(Menu().GetItems().GetCount(), 0);
    EXPECT_EQ(item.GetCallback(), L"");
    EXPECT_EQ(PluginRegistrar().RegisterCommand(L"x"), CStatus::Fail);
    EXPECT_EQ(PluginRegistrar().PutAuthor(L"x"), CStatus::Fail);
    EXPECT_EQ(PluginRegistrar().GetAuthor(), L"");
    EXPECT_EQ(PluginRegistrar().GetLabel(), L"");
    EXPECT_EQ(PluginRegistrar().GetMajor() + PluginRegistrar().GetMinor(), 0);
    EXPECT_EQ(Plugin().GetItems().GetCount(), 0);
    PPGLayout layout;
    layout.Clear();
    EXPECT_FALSE(layout.AddGroup(L"x").IsValid());
    EXPECT_FALSE(layout.AddButton(L"x").IsValid());
    EXPECT_EQ(layout.EndRow(), CStatus::Fail);
    EXPECT_EQ(layout.GetCount(), 0);
    EXPECT_FALSE(layout.GetItem(0).IsValid());
    EXPECT_FALSE(layout.GetItem(L"x").IsValid());
    EXPECT_TRUE(layout.GetAttribute(L"x").IsEmpty());
    EXPECT_EQ(layout.PutAttribute(L"x", 1), CStatus::Fail);
    PPGItem control;
    EXPECT_EQ(control.GetType(), L"");
    EXPECT_EQ(control.PutType(L"x"), CStatus::Fail);
    EXPECT_EQ(control.GetLabel(), L"");
    EXPECT_EQ(control.PutLabel(L"x"), CStatus::Fail);
    EXPECT_EQ(control.GetUIItems().GetCount(), 0);
    EXPECT_EQ(control.PutUIItems(CValueArray()), CStatus::Fail);
    EXPECT_TRUE(control.GetAttribute(L"x").IsEmpty());
    EXPECT_EQ(control.PutAttribute(L"x", 1), CStatus::Fail);
}

} // namespace
} // namespace tq4x::test
