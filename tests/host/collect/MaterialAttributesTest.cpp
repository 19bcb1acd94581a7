#include "support/MaterialRun.h"

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* AttributePage = "TQ4X_ForPennonMaterialAttrProp";
constexpr const char* PriorityPage = "TQ4X_ForPennonRenderPriorityProp";
constexpr const char* UserDataPage = "TQ4X_ForPennonUserDataProp";

TEST(MaterialAttributes, NamesBecomeLegalAndUnique)
{
    SceneBuilder scene;
    SceneMaterial plain = scene.Material("red", "lambert");
    SceneMaterial blank = scene.Material("dark red", "lambert");
    const XSI::MaterialLibrary other = XSI::Host::CreateMaterialLibrary("Other");
    const XSI::Material again = XSI::Host::CreateMaterial("red", other);
    MaterialRun run;
    EXPECT_TRUE(run.Convert({plain, blank, again}));
    EXPECT_EQ(run.Of(plain).Name, "red");
    EXPECT_EQ(run.Of(blank).Name, "dark_red");
    const std::string second = run.Of(again).Name;
    EXPECT_NE(second, "red");
    EXPECT_THAT(run.Messages(), ElementsAre("W Material name is changed(dark red -> dark_red)",
                                            "W Material name is changed(red -> " + second + ")"));
    EXPECT_EQ(run.Of(plain).TextureCoordinateConfig, "Config0120");
}

TEST(MaterialAttributes, MaterialsAreNumberedByCreation)
{
    SceneBuilder scene;
    SceneMaterial first = scene.Material("z", "lambert");
    SceneMaterial second = scene.Material("a", "lambert");
    MaterialRun run;
    EXPECT_TRUE(run.Convert({second, first, second}));
    EXPECT_EQ(run.Collector(second).MaterialIndex(), 0u);
    EXPECT_EQ(run.Collector(first).MaterialIndex(), 1u);
    EXPECT_EQ(run.Context->Content.Materials.MaterialAt(1)->Name, "z");
    EXPECT_EQ(run.Context->Content.Materials.MaterialAt(2), nullptr);
}

TEST(MaterialAttributes, WithoutThePagesTheDefaultsStay)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert");
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    const Material& record = run.Of(material);
    EXPECT_EQ(record.Rasterization.CullingMode, CullingMode::BackFace);
    EXPECT_TRUE(record.IsFragmentLightEnabled);
    EXPECT_FALSE(record.IsVertexLightEnabled);
    EXPECT_TRUE(record.IsCompressible);
    EXPECT_EQ(record.BlendPreset, BlendPreset::Opaque);
    EXPECT_TRUE(run.Collector(material).IsAutoBlend);
    EXPECT_EQ(record.RenderPriority, 0);
    EXPECT_THAT(record.UserData, IsEmpty());
}

TEST(MaterialAttributes, EachValueOfThePageReachesItsField)
{
    for (LONG culling = 0; culling <= 3; ++culling)
        for (const bool flag : {false, true}) {
            SceneBuilder scene;
            SceneMaterial material =
                scene.Material("m", "lambert")
                    .Marked(AttributePage, {{"TQ4X_ForPennonMatAttrCullFace", culling},
                                            {"TQ4X_ForPennonMatAttrFragmentLighting", flag},
                                            {"TQ4X_ForPennonMatAttrVertexLighting", !flag},
                                            {"TQ4X_ForPennonMatAttrBlendMode", LONG{-1}},
                                            {"TQ4X_ForPennonMatAttrNoCompress", flag}});
            MaterialRun run;
            EXPECT_TRUE(run.Convert({material}));
            const Material& record = run.Of(material);
            EXPECT_EQ(static_cast<LONG>(record.Rasterization.CullingMode), culling);
            EXPECT_EQ(record.IsFragmentLightEnabled, flag);
            EXPECT_EQ(record.IsVertexLightEnabled, !flag);
            EXPECT_EQ(record.IsCompressible, !flag);
            EXPECT_TRUE(run.Collector(material).IsAutoBlend);
        }
}

TEST(MaterialAttributes, CullingOutOfRangeIsHeldInIt)
{
    const struct
    {
        LONG Value;
        tq4x::CullingMode Mode;
    } rows[] = {{-1, CullingMode::FrontFace}, {4, CullingMode::Never}, {1000000, CullingMode::Never}};

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", "lambert")
                                     .Marked(AttributePage, {{"TQ4X_ForPennonMatAttrCullFace", row.Value}});
        MaterialRun run;
        EXPECT_TRUE(run.Convert({material}));
        EXPECT_EQ(run.Of(material).Rasterization.CullingMode, row.Mode) << row.Value;
    }
}

TEST(MaterialAttributes, APageThatLacksParametersKeepsTheDefaults)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Marked(AttributePage, {});
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    const Material& record = run.Of(material);
    EXPECT_EQ(record.Rasterization.CullingMode, CullingMode::BackFace);
    EXPECT_TRUE(record.IsFragmentLightEnabled);
    EXPECT_TRUE(record.IsCompressible);
    EXPECT_TRUE(run.Collector(material).IsAutoBlend);
}

TEST(MaterialAttributes, BlendModesEndTheSearchForOne)
{
    for (LONG blend = -1; blend <= 6; ++blend) {
        SceneBuilder scene;
        SceneMaterial material =
            scene.Material("m", "lambert").Marked(AttributePage, {{"TQ4X_ForPennonMatAttrBlendMode", blend}});
        MaterialRun run;
        EXPECT_TRUE(run.Convert({material}));
        EXPECT_EQ(run.Collector(material).IsAutoBlend, blend < 0) << blend;
        EXPECT_EQ(static_cast<LONG>(run.Of(material).BlendPreset), std::max(blend, LONG{0})) << blend;
        if (blend == 6) { // a number without a preset is kept and changes nothing
            EXPECT_EQ(run.Of(material).BlendOperation, BlendOperation{});
            EXPECT_EQ(run.Of(material).DepthOperation, DepthOperation{});
            EXPECT_EQ(run.Of(material).TranslucencyKind, TranslucencyKind::Opaque);
        }
    }
}

TEST(MaterialAttributes, PriorityCountsOnlyIfItIsUsed)
{
    for (const bool isUsed : {false, true}) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", "lambert")
                                     .Marked(PriorityPage, {{"TQ4X_ForPennonRenderPrioUsePriority", isUsed},
                                                            {"TQ4X_ForPennonRenderPrioPriority", LONG{7}}});
        MaterialRun run;
        EXPECT_TRUE(run.Convert({material}));
        EXPECT_EQ(run.Of(material).RenderPriority, isUsed ? 7 : 0);
    }
}

TEST(MaterialAttributes, UserDataIsReadIntoTheMaterial)
{
    SceneBuilder scene;
    SceneMaterial material =
        scene.Material("m", "lambert")
            .Marked(UserDataPage, {{"TQ4X_ForPennonUserDataParamNameList", "count\r\nnote\r\n"},
                                   {"TQ4X_ForPennonUserDataParamTypeList", "Integer\r\nString\r\n"},
                                   {"TQ4X_ForPennonUserDataParamValueList", "1\r2\r\nold"}});
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    const std::vector<UserDataItem>& items = run.Of(material).UserData;
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].Key, "count");
    EXPECT_THAT(items[0].Integers, ElementsAre(1, 2));
    EXPECT_EQ(items[1].Key, "note");
    EXPECT_THAT(items[1].Strings, ElementsAre("old"));
}

TEST(MaterialAttributes, FragmentLightingOffMakesNoTable)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "phong")
                                 .Marked(AttributePage, {{"TQ4X_ForPennonMatAttrFragmentLighting", false}});
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_TRUE(run.Of(material).HasSpecularTable);
    EXPECT_TRUE(run.Context->Content.Materials.LookupTables.IsEmpty());
    EXPECT_EQ(run.Of(material).FragmentShader.TextureCombiners.size(), 1u);
}

} // namespace
} // namespace tq4x::test
