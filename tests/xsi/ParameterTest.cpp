#include "PrintValues.h"

#include "support/SceneBuilder.h"

#include <limits>

#include <xsi_shaderparameter.h>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using XSI::CRef;
using XSI::CStatus;
using XSI::CValue;
using XSI::Parameter;
using XSI::Host::ParameterDefinition;

TEST(Parameter, ConstantValue)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node").Set("Count", 3);
    Parameter count = node.Object().GetParameter(L"Count");
    EXPECT_EQ(count.GetValue(), CValue(3));
    EXPECT_EQ(count.GetValue(17.5), CValue(3));
    EXPECT_EQ(node.Object().GetParameterValue(L"Count", 2.0), CValue(3));
    EXPECT_EQ(count.GetScriptName(), L"Count");
    EXPECT_EQ(count.GetParent(), CRef(node));
    EXPECT_FALSE(count.GetSource().IsValid());
    EXPECT_FALSE(count.IsAnimated());
    EXPECT_FALSE(node.Object().GetParameter(L"count").IsValid());
    EXPECT_TRUE(node.Object().GetParameterValue(L"count").IsEmpty());
}

TEST(Parameter, ListedInOrderOfAddition)
{
    SceneBuilder scene;
    SceneNode node = scene.Null("node").Set("b", 1).Set("a", 1).Set("b", 2);
    EXPECT_THAT(Names(node.Object().GetParameters()), ElementsAre("siscaling", "b", "a"));
    EXPECT_EQ(node.Object().GetParameterValue(L"b"), CValue(2));
}

TEST(Parameter, ValuesTakeTheTypeAndKeepTheLimits)
{
    const struct
    {
        const char* Name;
        CValue::DataType Type;
        CValue Given;
        CStatus Status;
        CValue Kept;
    } cases[] = {
        {"inside", CValue::siInt4, 7, CStatus::OK, 7},
        {"below the minimum", CValue::siInt4, 0, CStatus::OK, 1},
        {"above the maximum", CValue::siInt4, 256, CStatus::OK, 255},
        {"double to integer", CValue::siInt4, 8.9, CStatus::OK, 8},
        {"text to integer", CValue::siInt4, "9", CStatus::OK, 9},
        {"flag to integer", CValue::siInt4, true, CStatus::OK, 1},
        {"double", CValue::siDouble, 1e9, CStatus::OK, 255.0},
        {"infinity", CValue::siDouble, std::numeric_limits<double>::infinity(), CStatus::OK, 255.0},
        {"single", CValue::siFloat, 2.5, CStatus::OK, 2.5f},
        {"unsigned", CValue::siUInt4, 2.5, CStatus::OK, 2u},
        {"limits don't bind flags", CValue::siBool, 7, CStatus::OK, true},
        {"text to flag", CValue::siBool, "false", CStatus::OK, false},
        {"limits don't bind texts", CValue::siString, 7, CStatus::OK, "7"},
        {"no number", CValue::siDouble, std::numeric_limits<double>::quiet_NaN(), CStatus::Fail, 5.0},
        {"text that is no number", CValue::siInt4, "seven", CStatus::Fail, 5},
        {"nothing", CValue::siInt4, CValue(), CStatus::Fail, 5},
        {"nothing as text", CValue::siString, CValue(), CStatus::Fail, "5"},
        {"reference", CValue::siInt4, CRef(), CStatus::Fail, 5},
        {"list", CValue::siInt4, XSI::CValueArray(1), CStatus::Fail, 5},
    };

    for (const auto& test : cases) {
        SceneBuilder scene;
        ParameterDefinition definition;
        definition.Type = test.Type;
        definition.Default = CValue(5).ConvertTo(test.Type);
        definition.Min = 1;
        definition.Max = 255;
        Parameter parameter = XSI::Host::AddParameter(scene.Null("node"), "Value", definition);
        EXPECT_EQ(parameter.PutValue(test.Given), test.Status) << test.Name;
        EXPECT_EQ(parameter.GetValue(), test.Kept) << test.Name;
    }
}

TEST(Parameter, Definition)
{
    SceneBuilder scene;
    ParameterDefinition definition;
    definition.Type = CValue::siInt4;
    definition.Default = 5;
    definition.Min = 1;
    definition.Max = 10;
    definition.SuggestedMin = 2;
    definition.SuggestedMax = 8;
    const SceneNode node = scene.Null("node");
    Parameter parameter = XSI::Host::AddParameter(node, "Value", definition, XSI::siPersistable);
    parameter.PutValue(7);
    EXPECT_EQ(parameter.GetValueType(), CValue::siInt4);
    EXPECT_EQ(parameter.GetDefault(), CValue(5));
    EXPECT_EQ(parameter.GetMin(), CValue(1));
    EXPECT_EQ(parameter.GetMax(), CValue(10));
    EXPECT_EQ(parameter.GetSuggestedMin(), CValue(2));
    EXPECT_EQ(parameter.GetSuggestedMax(), CValue(8));
    EXPECT_EQ(parameter.GetCapabilities(), XSI::siPersistable);
    EXPECT_FALSE(XSI::Host::AddParameter(node, "Value", definition).IsValid()) << "the name is taken";
    EXPECT_FALSE(XSI::Host::AddParameter(CRef(), "Value", definition).IsValid());
    EXPECT_FALSE(XSI::Host::AddParameter(CRef(), "Value", 1).IsValid());
}

TEST(Parameter, CapabilityFlags)
{
    SceneBuilder scene;
    Parameter parameter = scene.Null("node").Set("Value", 1).Object().GetParameter(L"Value");
    EXPECT_FALSE(parameter.GetCapabilityFlag(XSI::siReadOnly));
    EXPECT_TRUE(parameter.GetCapabilityFlag(XSI::siPersistable));
    EXPECT_TRUE(parameter.PutCapabilityFlag(XSI::siReadOnly, true).Succeeded());
    EXPECT_TRUE(parameter.GetCapabilityFlag(XSI::siReadOnly));
    EXPECT_TRUE(parameter.PutValue(2).Succeeded()) << "the flag binds the user, not the code";
    EXPECT_EQ(parameter.GetValue(), CValue(2));
    EXPECT_TRUE(parameter.PutCapabilityFlag(XSI::siReadOnly, false).Succeeded());
    EXPECT_FALSE(parameter.GetCapabilityFlag(XSI::siReadOnly));
}

TEST(Parameter, CurvesAreEvaluatedAtTheFrame)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node").Set("Value", 1.0).Animate("Value", {{0, 10}, {10, 30}});
    const Parameter value = node.Object().GetParameter(L"Value");
    EXPECT_EQ(static_cast<double>(value.GetValue(5.0)), 20.0);
    EXPECT_EQ(static_cast<double>(value.GetValue(-5.0)), 10.0);
    EXPECT_EQ(static_cast<double>(value.GetValue(99.0)), 30.0);
    EXPECT_TRUE(value.IsAnimated());
    EXPECT_TRUE(value.IsAnimated(static_cast<XSI::siSourceType>(4)));
    EXPECT_TRUE(value.IsAnimated(XSI::siFCurveSource));
    EXPECT_FALSE(value.IsAnimated(XSI::siExpressionSource));
    EXPECT_FALSE(value.IsAnimated(XSI::siShaderSource));
    EXPECT_TRUE(value.GetSource().IsA(XSI::siFCurveID));
    EXPECT_TRUE(node.Object().IsAnimated());
    EXPECT_FALSE(node.Object().IsAnimated(XSI::siExpressionSource));
}

TEST(Parameter, TheLargestDoubleIsTheCurrentTime)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node").Set("Value", 1.0).Animate("Value", {{0, 0}, {100, 100}});
    const Parameter value = node.Object().GetParameter(L"Value");
    scene.Host().CurrentFrame = 42.0;
    EXPECT_EQ(static_cast<double>(value.GetValue()), 42.0);
    EXPECT_EQ(static_cast<double>(value.GetValue(std::numeric_limits<double>::max())), 42.0);
    EXPECT_EQ(static_cast<double>(value.GetValue(std::numeric_limits<double>::quiet_NaN())), 42.0);
    EXPECT_EQ(static_cast<double>(value.GetValue(std::numeric_limits<double>::infinity())), 100.0);
}

TEST(Parameter, SourcesTakeTheTypeOfTheParameter)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node").Set("Flag", false).Set("Count", 0);
    const Parameter flag = node.Object().GetParameter(L"Flag");
    const Parameter count = node.Object().GetParameter(L"Count");
    XSI::Host::SetExpression(flag, [](double frame) { return frame >= 3.0 ? 1.0 : 0.0; });
    XSI::Host::SetCurveFunction(count, [](double frame) { return frame * 0.5; });
    EXPECT_EQ(flag.GetValue(2.0), CValue(false));
    EXPECT_EQ(flag.GetValue(3.0), CValue(true));
    EXPECT_EQ(count.GetValue(5.0), CValue(2));
    EXPECT_TRUE(flag.IsAnimated(XSI::siExpressionSource));
    EXPECT_TRUE(flag.IsAnimated());
    EXPECT_TRUE(flag.GetSource().IsA(XSI::siExpressionID));
}

TEST(Parameter, ASourceCanBeReplacedAndRemoved)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node").Set("Value", 1.0).Animate("Value", {{0, 5}});
    const Parameter value = node.Object().GetParameter(L"Value");
    const CRef first = value.GetSource();
    XSI::Host::SetCurve(value, {{{0, 6}}});
    EXPECT_FALSE(first.IsValid());
    EXPECT_EQ(static_cast<double>(value.GetValue()), 6.0);
    XSI::Host::RemoveSource(value);
    XSI::Host::RemoveSource(value);
    EXPECT_FALSE(value.GetSource().IsValid());
    EXPECT_EQ(static_cast<double>(value.GetValue()), 1.0);
}

TEST(Parameter, ColorsHaveComponents)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node");
    const Parameter color = XSI::Host::AddColorParameter(node, "color", 0.25, 0.5, 0.75, 0.5);
    EXPECT_THAT(Names(color.GetParameters()), ElementsAre("red", "green", "blue", "alpha"));
    EXPECT_EQ(static_cast<double>(color.GetParameter(L"blue").GetValue()), 0.75);
    EXPECT_EQ(static_cast<double>(color.GetParameterValue(L"alpha")), 0.5);
    EXPECT_EQ(static_cast<double>(color.GetValue()), 0.25);
    EXPECT_FALSE(color.IsAnimated());

    XSI::Host::SetCurve(color.GetParameter(L"green"), {{{0, 0}, {10, 1}}});
    EXPECT_TRUE(color.IsAnimated());
    EXPECT_EQ(static_cast<double>(color.GetParameter(L"green").GetValue(5.0)), 0.5);

    const Parameter same = XSI::Host::AddColorParameter(node, "color", 1.0, 1.0, 1.0);
    EXPECT_EQ(same, color);
    EXPECT_EQ(color.GetParameters().GetCount(), 4);
}

TEST(Parameter, AConnectedShaderIsASourceAndNoAnimation)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "phong");
    const XSI::Texture texture = material.MakeTexture("a.tga", "uv");
    const Parameter diffuse = material.Color("diffuse", 0.5, 0.5, 0.5).Shader().GetParameter(L"diffuse");
    material.Connect("diffuse", texture);
    EXPECT_EQ(diffuse.GetSource(), CRef(texture));
    EXPECT_FALSE(diffuse.IsAnimated());
    EXPECT_TRUE(diffuse.IsAnimated(XSI::siShaderSource));
    EXPECT_EQ(static_cast<double>(diffuse.GetParameter(L"red").GetValue()), 0.5);

    const Parameter output = texture.GetParameter(L"out");
    material.Connect("diffuse", output);
    EXPECT_TRUE(diffuse.GetSource().IsA(XSI::siShaderParameterID));
    EXPECT_EQ(XSI::ShaderParameter(diffuse.GetSource()).GetParent(), CRef(texture));

    XSI::Host::Objects().Delete(texture.GetObjectID());
    EXPECT_FALSE(diffuse.GetSource().IsValid());
}

TEST(Curve, Shapes)
{
    using XSI::Host::Curve;
    const Keys keys = {{0, 0}, {10, 10}, {20, 0}};

    const struct
    {
        const char* Name;
        Curve Shape;
        double Frame;
        double Value;
    } cases[] = {
        {"no keys", {}, 5, 0},
        {"one key", {{{3, 7}}, Curve::Shape::Smooth}, 5, 7},
        {"step holds", {keys, Curve::Shape::Step}, 9.99, 0},
        {"step changes at the key", {keys, Curve::Shape::Step}, 10, 10},
        {"line", {keys, Curve::Shape::Linear}, 15, 5},
        {"line at a key", {keys, Curve::Shape::Linear}, 10, 10},
        {"before", {keys, Curve::Shape::Linear}, -1, 0},
        {"behind", {keys, Curve::Shape::Linear}, 21, 0},
        {"cubic with level ends", {keys, Curve::Shape::Smooth}, 5, 5},
        {"cubic at a key", {keys, Curve::Shape::Smooth}, 10, 10},
        {"cubic, uneven", {{{0, 0}, {1, 1}, {3, 1}}, Curve::Shape::Smooth}, 0.5, 0.5 - 1.0 / 24.0},
        {"two keys of one frame", {{{0, 1}, {5, 2}, {5, 3}, {9, 4}}, Curve::Shape::Linear}, 5, 3},
    };

    for (const auto& test : cases) {
        EXPECT_NEAR(test.Shape.Evaluate(test.Frame), test.Value, 1e-12) << test.Name;
    }
}

} // namespace
} // namespace tq4x::test
