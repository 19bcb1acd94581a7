#include "environment/LightDocument.h"
#include "core/environment/Stage.h"
#include "environment/FinishLights.h"
#include "pipeline/XmlWriter.h"
#include "support/Golden.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tq4x
{
namespace
{

using test::MakeLight;
using test::Rest;
using test::Sample;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::string LightsText(LightSet& set, const char* baseName = "scene")
{
    XmlWriter stream;
    WriteLights(set, stream, baseName);
    EXPECT_EQ(stream.Level(), 0);
    return stream.Text();
}

std::string LightsText(const Light& light)
{
    LightSet set;
    set.Add() = light;
    return LightsText(set);
}

std::string AnimationsText(LightSet& set, bool isLoop = false)
{
    FinishLights(set, 2, isLoop, {}, 0.001f, 1);
    XmlWriter stream;
    WriteLightAnimations(set, stream);
    EXPECT_EQ(stream.Level(), 0);
    return stream.Text();
}

std::string AnimationsText(const Light& light, bool isLoop = false)
{
    LightSet set;
    set.Add() = light;
    return AnimationsText(set, isLoop);
}

TEST(LightDocument, WritesADirectionalLight)
{
    Light light = MakeLight("sun", LightKind::DirectionalLight);
    light.IsLightEnabled = false;
    light.Direction = {-0.0f, -1.0f, 5e-7f};
    test::ExpectGolden(LightsText(light), "core/environment/light-directional.xml");
}

TEST(LightDocument, WritesAPointLight)
{
    Light light = MakeLight("bulb", LightKind::PointLight);
    light.IsTwoSideDiffuse = light.IsDistanceAttenuationEnabled = light.IsInheritingDirectionRotate = true;
    light.DistanceAttenuationStart = 0.5f;
    light.DistanceAttenuationEnd = 8.0f;
    test::ExpectGolden(LightsText(light), "core/environment/light-point.xml");
}

TEST(LightDocument, WritesASpotLightBehindItsTable)
{
    LightSet set;
    SetSpotCone(set.Add() = MakeLight("spot", LightKind::SpotLight), 120.0f, 15.0f, set.LookupTables);
    test::ExpectGolden(LightsText(set), "core/environment/light-spot.xml");
}

TEST(LightDocument, WritesAnAmbientLight)
{
    Light light = MakeLight("AmbientLight", LightKind::Ambient);
    light.Translate = {};
    test::ExpectGolden(LightsText(light), "core/environment/light-ambient.xml");
}

TEST(LightDocument, AnimatesADirectionalLight)
{
    Light light = MakeLight("sun", LightKind::DirectionalLight);
    Sample(light, LightCurve::Visibility, {1.0f, 0.0f, 0.0f});
    Sample(light, LightCurve::Translate + 2, {3.0f, 4.0f, 5.0f});
    Rest(light, LightCurve::Diffuse, {1.0f, 0.5f, 0.5f, 0.8f}); // blue rests beside the alpha, but elsewhere
    Sample(light, LightCurve::Diffuse + 3, {0.8f, 0.4f, 0.0f});
    Sample(light, LightCurve::Direction, {0.0f, 0.5f, 1.0f});
    test::ExpectGolden(AnimationsText(light, true), "core/environment/light-animation-directional.xml");
}

TEST(LightDocument, AnimatesAPointLightWithoutDirection)
{
    Light light = MakeLight("bulb", LightKind::PointLight);
    Sample(light, LightCurve::Translate, {1.0f, 2.0f, 3.0f});
    Sample(light, LightCurve::Direction, {0.0f, 0.5f, 1.0f});
    test::ExpectGolden(AnimationsText(light), "core/environment/light-animation-point.xml");
}

TEST(LightDocument, AnimatesASpotLight)
{
    Light light = MakeLight("spot", LightKind::SpotLight);
    Sample(light, LightCurve::Specular0, {0.5f, 0.6f, 0.7f});
    Sample(light, LightCurve::Specular1, {0.5f, 0.6f, 0.7f});
    Sample(light, LightCurve::Direction + 1, {-1.0f, -0.5f, 0.0f});
    test::ExpectGolden(AnimationsText(light), "core/environment/light-animation-spot.xml");
}

TEST(LightDocument, AnimatesAnAmbientLight)
{
    Light light = MakeLight("AmbientLight", LightKind::Ambient);
    Rest(light, LightCurve::Ambient, {0.25f, 0.5f, 0.75f, 1.0f});
    Sample(light, LightCurve::Ambient, {0.25f, 0.5f, 0.75f});
    test::ExpectGolden(AnimationsText(light), "core/environment/light-animation-ambient.xml");
}

/// The texts between two marks, in their order.
std::vector<std::string> TextsBetween(const std::string& text, const std::string& before,
                                      const std::string& behind)
{
    std::vector<std::string> found;
    for (std::size_t at = text.find(before); at != std::string::npos; at = text.find(before, at)) {
        at += before.size();
        found.push_back(text.substr(at, text.find(behind, at) - at));
    }
    return found;
}

struct MemberCase
{
    LightKind Kind;
    const char* KindWord;
    const char* TypeWord;
    std::vector<std::string> Paths; ///< if every curve moves
};

const MemberCase MemberCases[] = {
    {LightKind::Ambient, "Unused", "Ambient", {"Transform", "Ambient", "IsLightEnabled"}},
    {LightKind::DirectionalLight,
     "DirectionalLight",
     "Fragment",
     {"Transform", "Ambient", "Diffuse", "Specular0", "Specular1", "Direction", "IsLightEnabled"}},
    {LightKind::PointLight,
     "PointLight",
     "Fragment",
     {"Transform", "Ambient", "Diffuse", "Specular0", "Specular1", "IsLightEnabled"}},
    {LightKind::SpotLight,
     "SpotLight",
     "Fragment",
     {"Transform", "Ambient", "Diffuse", "Specular0", "Specular1", "Direction", "IsLightEnabled"}},
};

TEST(LightDocument, ChoosesMembersByTheKind)
{
    for (const MemberCase& row : MemberCases) {
        Light light = MakeLight("l", row.Kind);
        for (AnimationCurve& curve : light.Curves)
            curve.Samples = {0.0f, 10.0f, 20.0f};
        const std::string text = AnimationsText(light);
        EXPECT_EQ(TextsBetween(text, "<Path>", "</Path>"), row.Paths) << row.KindWord;
        EXPECT_THAT(text, HasSubstr("<LightAnimationData Name=\"l.LightAnimation\" FrameSize=\"2\" "
                                    "LoopMode=\"OneTime\" IsAdditiveAnimation=\"false\" LightKind=\"" +
                                    std::string(row.KindWord) + "\" LightType=\"" + row.TypeWord + "\">"));
        std::vector<std::string> ofTransform = TextsBetween(text, "\n\t\t\t\t\t\t\t<", ">");
        ofTransform.resize(6);
        EXPECT_THAT(ofTransform, ElementsAre("ScaleVector3Animation", "/ScaleVector3Animation",
                                             "RotateVector3Animation", "/RotateVector3Animation",
                                             "TranslateVector3Animation", "/TranslateVector3Animation"))
            << row.KindWord;
    }
}

TEST(LightDocument, SortsLightsByTheBytesOfTheirNames)
{
    LightSet set;
    for (const char* name : {"b", "a_1", "B", "AmbientLight", "a"}) {
        Light& light = set.Add() = MakeLight(name, LightKind::PointLight);
        Sample(light, LightCurve::Translate, {1.0f, 2.0f, 3.0f});
    }
    EXPECT_THAT(TextsBetween(LightsText(set), "<FragmentLightQtr Name=\"", "\""),
                ElementsAre("AmbientLight", "B", "a", "a_1", "b"));
    EXPECT_THAT(TextsBetween(AnimationsText(set), "<LightAnimationData Name=\"", ".LightAnimation\""),
                ElementsAre("b", "a_1", "B", "AmbientLight", "a"))
        << "animations stay in the order of the list";
}

TEST(LightDocument, WritesNothingWhereThereIsNothing)
{
    LightSet empty;
    EXPECT_EQ(LightsText(empty), "");
    EXPECT_EQ(AnimationsText(empty), "");
    EXPECT_EQ(AnimationsText(MakeLight("still", LightKind::PointLight)), "");
}

TEST(LightDocument, WritesNoTableSectionWithoutTables)
{
    EXPECT_THAT(LightsText(MakeLight("bulb", LightKind::PointLight)),
                Not(HasSubstr("LookupTableSetContents")));
}

TEST(LightDocument, MagnifiesTheTranslationOfTheElementAlone)
{
    LightSet set;
    set.Magnify = 10.0f;
    Light& light = set.Add() = MakeLight("l", LightKind::PointLight);
    Sample(light, LightCurve::Translate, {10.0f, 20.0f, 30.0f});
    EXPECT_THAT(LightsText(set), HasSubstr("<Translate X=\"10\" Y=\"20\" Z=\"30\"/>"));
    EXPECT_EQ(light.Translate, (Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_THAT(AnimationsText(set), HasSubstr("<HermiteFloatKey Frame=\"2\" Value=\"30\""));
}

TEST(LightDocument, NamesSharedAndClashingTables)
{
    LightSet set;
    SetSpotCone(set.Add() = MakeLight("one", LightKind::SpotLight), 90.0f, 5.0f, set.LookupTables);
    SetSpotCone(set.Add() = MakeLight("two", LightKind::SpotLight), 90.0f, 5.0f, set.LookupTables);
    SetSpotCone(set.Add() = MakeLight("one", LightKind::SpotLight), 60.0f, 5.0f, set.LookupTables);
    const std::string text = LightsText(set, "stage");
    EXPECT_THAT(TextsBetween(text, "<LookupTableSetContentQtr Name=\"", "\""),
                ElementsAre("stage.LightLutset"));
    EXPECT_THAT(TextsBetween(text, "<ImageLookupTableQtr Name=\"", "\""), ElementsAre("one", "one_1"));
    EXPECT_THAT(TextsBetween(text, "TableName=\"", "\""), ElementsAre("one", "one_1", "one"));
    EXPECT_EQ(LightsText(set, "stage"), text) << "a second file names them alike";
}

} // namespace
} // namespace tq4x
