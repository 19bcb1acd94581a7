#include "material/MaterialSet.h"
#include "pipeline/XmlWriter.h"
#include "support/Golden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace tq4x
{
namespace
{

using Texts = std::vector<std::string>;

constexpr MaterialTolerances Tolerances{0.01f, 0.01f, 0.01f, 0.01f};

/// Owners stand in for collectors: only their addresses matter.
int g_owners[16];

Material& AddMaterial(MaterialSet& set, const std::string& name)
{
    Material& material = set.MaterialFor(&g_owners[set.Materials.size()]).Material;
    material.Name = name;
    return material;
}

/// What stands behind `word` up to the next quote, one text for each place.
Texts FindAll(const std::string& text, const std::string& word)
{
    Texts found;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        const std::size_t start = at + word.size();
        found.push_back(text.substr(start, text.find_first_of("\"<", start) - start));
    }
    return found;
}

std::string AnimationsOf(MaterialSet& set)
{
    XmlWriter stream;
    set.WriteAnimations(stream);
    return stream.Text();
}

TEST(MaterialSet, MaterialForMakesOneRecordForEachOwner)
{
    MaterialSet set;
    MaterialEntry& first = set.MaterialFor(&g_owners[5]);
    MaterialEntry& second = set.MaterialFor(&g_owners[1]);
    EXPECT_EQ(first.Index, 0);
    EXPECT_EQ(second.Index, 1);
    EXPECT_NE(&first, &second);
    for (int i = 0; i < 16; ++i)
        set.MaterialFor(&g_owners[i]);
    EXPECT_EQ(set.Materials.size(), 16u);
    EXPECT_EQ(&set.MaterialFor(&g_owners[5]), &first) << "addresses stay";
    EXPECT_EQ(&set.MaterialFor(&g_owners[1]), &second);
}

TEST(MaterialSet, MaterialAtGoesByCreation)
{
    MaterialSet set;
    EXPECT_EQ(set.MaterialAt(0), nullptr);
    AddMaterial(set, "Z");
    AddMaterial(set, "A");
    const MaterialSet& readOnly = set;
    EXPECT_EQ(set.MaterialAt(0)->Name, "Z");
    EXPECT_EQ(readOnly.MaterialAt(1)->Name, "A");
    EXPECT_EQ(set.MaterialAt(2), nullptr);
    EXPECT_EQ(set.MaterialAt(-1), nullptr);
}

TEST(MaterialSet, NoMaterialsLeaveAnEmptySection)
{
    XmlWriter stream;
    MaterialSet{}.WriteMaterials(stream);
    EXPECT_EQ(stream.Text(), "\t\t\t\t<Materials>\n\t\t\t\t</Materials>\n");
}

TEST(MaterialSet, SectionIsSortedByTheBytesOfTheNames)
{
    MaterialSet set;
    for (const char* name : {"b", "\xC3\xA4", "B", "a_10", "a_2", "a"})
        AddMaterial(set, name);
    XmlWriter stream;
    set.WriteMaterials(stream);
    EXPECT_EQ(FindAll(stream.Text(), "\t\t\t\t\t<MaterialQtr Name=\""),
              (Texts{"B", "a", "a_10", "a_2", "b", "\xC3\xA4"}));
    EXPECT_EQ(set.MaterialAt(0)->Name, "b") << "numbers stay those of creation";
}

TEST(MaterialSet, EqualNamesKeepTheOrderOfCreation)
{
    MaterialSet set;
    for (int i = 0; i < 6; ++i)
        AddMaterial(set, i % 2 == 0 ? "Same" : "Other").ShaderProgramDescriptionIndex = i;
    XmlWriter stream;
    set.WriteMaterials(stream);
    EXPECT_EQ(FindAll(stream.Text(), "ShaderProgramDescriptionIndex=\""),
              (Texts{"1", "3", "5", "0", "2", "4"}));
}

TEST(MaterialSet, OrderOfCreationDoesNotShow)
{
    std::string expected;
    for (unsigned seed = 0; seed < 20; ++seed) {
        Texts names = {"Bark", "Leaf", "Moss", "Stone", "Water", "sand"};
        std::shuffle(names.begin(), names.end(), std::mt19937(seed));
        MaterialSet set;
        for (const std::string& name : names)
            AddMaterial(set, name).AddTextureMapper(name + "_t", TextureWrap::Repeat, TextureWrap::Repeat);
        XmlWriter stream;
        set.WriteMaterials(stream);
        if (seed == 0)
            expected = stream.Text();
        ASSERT_EQ(stream.Text(), expected) << "seed " << seed;
    }
}

TEST(MaterialSet, LookupSectionIsNamedByTheFile)
{
    MaterialSet set;
    XmlWriter stream;
    EXPECT_EQ(set.WriteLookupTables(stream, 2), "");
    EXPECT_EQ(stream.Text(), "");
    set.LookupTables.Add({"Specular", true, true, false, {1.0f}});
    EXPECT_EQ(set.WriteLookupTables(stream, 2), ".MaterialLutset");
    set.BaseName = "lighthouse";
    EXPECT_EQ(set.WriteLookupTables(stream, 2), "lighthouse.MaterialLutset");
    EXPECT_EQ(FindAll(stream.Text(), "\t\t\t<LookupTableSetContentQtr Name=\""),
              (Texts{".MaterialLutset", "lighthouse.MaterialLutset"}));
}

TEST(MaterialSet, FinishAnimationNeedsTheFileToBeWanted)
{
    for (const bool isWanted : {false, true}) {
        MaterialSet set;
        set.HasAnimation = isWanted;
        AddMaterial(set, "A").ColorCurves[0].Samples = {0.0f, 1.0f};
        AddMaterial(set, "B").ColorCurves[15].Samples = {0.0f, 0.0f, 1.0f};
        set.FinishAnimation(24, true, Tolerances, 2);
        EXPECT_EQ(set.FrameSize, isWanted ? 24 : 0);
        EXPECT_EQ(set.IsLoop, isWanted);
        EXPECT_EQ(set.HasAnimatedMember(), isWanted);
        EXPECT_EQ(set.MaterialAt(0)->IsEmissionAnimated, isWanted);
        EXPECT_EQ(set.MaterialAt(1)->IsSpecular0Animated, isWanted);
        EXPECT_EQ(set.MaterialAt(1)->IsLoop, isWanted);
        const std::vector<CurveKey>& keys = set.MaterialAt(1)->ColorCurves[15].Keys;
        EXPECT_EQ(keys.empty() ? -1.0f : keys.back().Frame, isWanted ? 1.0f : -1.0f);
    }
}

TEST(MaterialSet, HasAnimatedMember)
{
    MaterialSet set;
    EXPECT_FALSE(set.HasAnimatedMember());
    AddMaterial(set, "A").AddTextureMapper("T", TextureWrap::Repeat, TextureWrap::Repeat);
    AddMaterial(set, "B");
    EXPECT_FALSE(set.HasAnimatedMember());
    set.MaterialAt(0)->TextureMappers[0].Patterns[3] = "U";
    EXPECT_TRUE(set.HasAnimatedMember());
}

TEST(MaterialSet, AnimationsWithoutContentStillHaveBothLists)
{
    MaterialSet set;
    AddMaterial(set, "A");
    EXPECT_EQ(AnimationsOf(set), "\t\t\t\t<MemberAnimationDataSet>\n"
                                 "\t\t\t\t</MemberAnimationDataSet>\n"
                                 "\t\t\t\t<TexturePatterns>\n"
                                 "\t\t\t\t</TexturePatterns>\n");
}

TEST(MaterialSet, PatternAnimation)
{
    MaterialSet set;
    Material& second = AddMaterial(set, "Water");
    second.AddTextureMapper("Foam", TextureWrap::Repeat, TextureWrap::Repeat);
    second.AddTextureMapper("Wave2", TextureWrap::Repeat, TextureWrap::Repeat);
    second.TextureMappers[1].Patterns[4] = "Wave1";
    Material& first = AddMaterial(set, "Fire");
    first.AddTextureMapper("Wave1", TextureWrap::Repeat, TextureWrap::Repeat);
    first.TextureMappers[0].Patterns[-3] = "Flame";
    test::ExpectGolden(AnimationsOf(set), "core/material/animation-patterns.xml");
}

TEST(MaterialSet, PatternListIsPerFile)
{
    MaterialSet set;
    AddMaterial(set, "A").AddTextureMapper("T", TextureWrap::Repeat, TextureWrap::Repeat);
    set.MaterialAt(0)->TextureMappers[0].Patterns[1] = "U";
    const std::string first = AnimationsOf(set);
    set.MaterialAt(0)->TextureMappers[0].Patterns = {{0, "U"}, {1, "T"}};
    EXPECT_EQ(FindAll(AnimationsOf(set), "StepFloatKey Frame=\"0\" Value=\""), (Texts{"0"}));
    EXPECT_EQ(set.TexturePatterns.Names(), (Texts{"U", "T"}));
    set.MaterialAt(0)->TextureMappers[0].Patterns = {{0, "T"}, {1, "U"}};
    EXPECT_EQ(AnimationsOf(set), first);
    EXPECT_EQ(set.TexturePatterns.Names(), (Texts{"T", "U"}));
}

/// Every part of two materials moves: the order of the members shows in their paths.
TEST(MaterialSet, MembersStandInTheOrderOfTheFormat)
{
    MaterialSet set;
    set.HasAnimation = true;
    for (const char* name : {"B", "A"}) {
        Material& material = AddMaterial(set, name);
        for (AnimationCurve& curve : material.ColorCurves)
            curve.Samples = {0.0f, 1.0f};
        for (int i = 0; i < 2; ++i) {
            material.AddTextureMapper("T", TextureWrap::Repeat, TextureWrap::Repeat);
            material.TextureMappers.back().Patterns[1] = "U";
            material.TextureCoordinators.emplace_back();
            for (AnimationCurve& curve : material.TextureCoordinators.back().Curves)
                curve.Samples = {0.0f, 1.0f};
        }
    }
    set.FinishAnimation(1, false, Tolerances, 1);
    Texts expected;
    for (const std::string name : {"A", "B"})
        for (const std::string index : {"0", "1"})
            expected.push_back("Materials[\"" + name + "\"].TextureMappers[" + index + "].Texture");
    for (const std::string name : {"A", "B"}) {
        for (const std::string index : {"0", "1"})
            for (const char* part : {"Translate", "Scale", "Rotate"})
                expected.push_back("Materials[\"" + name + "\"].TextureCoordinators[" + index + "]." + part);
        for (const char* part : {"Emission", "Ambient", "Diffuse", "Specular0"})
            expected.push_back("Materials[\"" + name + "\"].MaterialColor." + part);
    }
    Texts paths;
    const std::string text = AnimationsOf(set);
    for (std::size_t at = text.find("<Path>"); at != std::string::npos; at = text.find("<Path>", at + 1))
        paths.push_back(text.substr(at + 6, text.find("</Path>", at) - at - 6));
    EXPECT_EQ(paths, expected);
}

TEST(MaterialSet, MemberAnimations)
{
    MaterialSet set;
    set.HasAnimation = true;
    Material& material = AddMaterial(set, "Sea");
    material.TextureCoordinators.resize(2);
    auto& curves = material.TextureCoordinators[1].Curves;
    curves[CoordinatorCurve::ScaleS].Samples = {1.0f, 3.0f, 5.0f};
    curves[CoordinatorCurve::ScaleT].Samples = {1.0f, 1.0f, 1.0f}; // at its base value: left out
    curves[CoordinatorCurve::Rotate].Samples = {0.0f, 90.0f, 180.0f};
    curves[CoordinatorCurve::TranslateS].Samples = {0.5f, 0.5f, 0.5f}; // rests elsewhere: one key
    curves[CoordinatorCurve::TranslateT].Samples = {0.0f, 1.0f, 2.0f};
    set.FinishAnimation(2, false, Tolerances, 1);
    test::ExpectGolden(AnimationsOf(set), "core/material/animation-coordinator.xml");
}

TEST(MaterialSet, ColorMember)
{
    MaterialSet set;
    set.HasAnimation = true;
    Material& material = AddMaterial(set, "Lamp");
    material.Diffuse = {1.0f, 0.5f, 0.25f, 1.0f};
    material.ColorCurves[8].Samples = {1.0f, 0.0f};
    material.ColorCurves[9].Samples = {0.5f, 0.5f};
    material.ColorCurves[10].Samples = {0.125f, 0.125f};
    material.ColorCurves[11].Samples = {1.0f, 0.5f};
    set.FinishAnimation(1, true, Tolerances, 1);
    test::ExpectGolden(AnimationsOf(set), "core/material/animation-color.xml");
}

TEST(MaterialSet, PatternIndicesAreThoseOfTheWalk)
{
    for (unsigned seed = 0; seed < 100; ++seed) {
        std::mt19937 random(seed);
        TexturePatternList list;
        Texts walked;
        for (int i = 0; i < 50; ++i) {
            const std::string name = "t" + std::to_string(random() % 12);
            const auto place = std::find(walked.begin(), walked.end(), name) - walked.begin();
            if (place == static_cast<std::ptrdiff_t>(walked.size()))
                walked.push_back(name);
            ASSERT_EQ(list.FindOrAdd(name), place) << "seed " << seed << " step " << i;
        }
        ASSERT_EQ(list.Names(), walked) << "seed " << seed;
    }
}

} // namespace
} // namespace tq4x
