#include "collect/UvRecord.h"
#include "support/SceneBuilder.h"

#include "scene/CreateGeometry.h"

namespace tq4x::test
{
namespace
{

XSI::ClusterProperty AddSet(const SceneMesh& mesh)
{
    return XSI::Host::AddClusterProperty(mesh, XSI::Host::ClusterPropertyKind::Uv, "uv", 2, {});
}

TEST(UvRecord, KeepsTheParametersOfTheProjection)
{
    SceneBuilder scene;
    const XSI::ClusterProperty set = AddSet(scene.Mesh("mesh"));
    const XSI::Primitive projection = XSI::Host::AddProjection(set, true, false);
    const std::pair<const char*, XSI::Parameter UvRecord::*> rows[] = {
        {"projsclu", &UvRecord::ScaleU},     {"projsclv", &UvRecord::ScaleV},
        {"projsclw", &UvRecord::ScaleW},     {"projrotu", &UvRecord::RotateU},
        {"projrotv", &UvRecord::RotateV},    {"projrotw", &UvRecord::RotateW},
        {"projtrsu", &UvRecord::TranslateU}, {"projtrsv", &UvRecord::TranslateV},
        {"projtrsw", &UvRecord::TranslateW},
    };
    double value = 1.0;
    for (const auto& [name, field] : rows)
        XSI::Host::AddParameter(projection, name, value++);
    XSI::Host::SetCurve(projection.GetParameter("projtrsw"), {{{0, 0}, {10, 100}}});

    const UvRecord record = ReadUvRecord(set);
    EXPECT_STREQ(record.Name.GetAsciiString(), "uv");
    EXPECT_TRUE(record.WrapU);
    EXPECT_FALSE(record.WrapV);
    double expected = 1.0;
    for (const auto& [name, field] : rows) {
        const bool isDriven = field == &UvRecord::TranslateW;
        EXPECT_EQ(static_cast<double>((record.*field).GetValue(3.0)), isDriven ? 30.0 : expected) << name;
        ++expected;
    }
}

TEST(UvRecord, OfTheFirstNestedProjection)
{
    SceneBuilder scene;
    const XSI::ClusterProperty set = AddSet(scene.Mesh("mesh"));
    XSI::Host::AddProjection(set, false, true);
    XSI::Host::AddProjection(set, true, false);
    EXPECT_FALSE(ReadUvRecord(set).WrapU);
    EXPECT_TRUE(ReadUvRecord(set).WrapV);
}

TEST(UvRecord, WithoutAProjectionHasNoParameters)
{
    SceneBuilder scene;
    const UvRecord record = ReadUvRecord(AddSet(scene.Mesh("mesh")));
    EXPECT_STREQ(record.Name.GetAsciiString(), "uv");
    EXPECT_FALSE(record.ScaleU.IsValid());
    EXPECT_FALSE(record.TranslateW.IsValid());
    EXPECT_FALSE(record.WrapU || record.WrapV);
}

} // namespace
} // namespace tq4x::test
