#include <algorithm>
#include <cmath>
#include <numbers>

#include "glb/AddStage.h"
#include "glb/AddVisibilityClip.h"
#include "glb/MemberValues.h"
#include "glb/NodeMath.h"

namespace tq4x::reader
{
namespace
{

/// The cone of a spot light, in radians from its axis: full brightness within, none outside.
struct Cone
{
    double Inner = 0;
    double Outer = 0.25 * std::numbers::pi;
};

/// The table has the brightness by the cosine of the angle in 256 steps: zero up to the cosine of the outer
/// angle, one from that of the inner one.
Cone ConeOf(const LookupTable& table)
{
    constexpr int Last = 255;
    constexpr double Steps = 256;
    constexpr float Tolerance = 1e-3F; // of the table's curve
    int lastDark = 0;
    int firstFull = Last + 1;
    for (int i = Last; i >= 0; --i) {
        const float value = EvaluateCurve(table.Values, static_cast<float>(i)).value_or(0);
        firstFull = value >= 1 - Tolerance && firstFull == i + 1 ? i : firstFull;
        if (value <= Tolerance) {
            lastDark = i;
            break;
        }
    }
    Cone cone;
    constexpr double LeastWidth = 1e-4;  // glTF wants the inner angle below the outer one
    constexpr double Widest = 1.5707962; // and that at most a right angle, which no float is
    cone.Inner = std::acos(std::min(firstFull / Steps, 1.0));
    cone.Outer = std::min(std::acos(lastDark / Steps), Widest);
    cone.Inner = std::clamp(cone.Inner, 0.0, std::max(cone.Outer - LeastWidth, 0.0));
    cone.Outer = std::max(cone.Outer, cone.Inner + LeastWidth);
    return cone;
}

std::string TypeWord(const Light& light)
{
    return light.Kind == "DirectionalLight" ? "directional" : light.Kind == "SpotLight" ? "spot" : "point";
}

std::array<float, 3> ColorOf(const Color& color)
{
    return {std::clamp(color[0], 0.0F, 1.0F), std::clamp(color[1], 0.0F, 1.0F),
            std::clamp(color[2], 0.0F, 1.0F)};
}

float IntensityOf(const Color& color)
{
    return std::max(color[3], 0.0F);
}

/// Point lights shine everywhere; turning them would move nothing.
Quaternion RotationOf(const Light& light, const Vector3& direction)
{
    return light.Kind == "PointLight" ? Quaternion{0, 0, 0, 1} : QuaternionTowards(direction);
}

class LightConversion
{
public:
    LightConversion(const Light& light, const LightAnimation* animation, const LookupTableSet& tables,
                    ClipBuilder& clip, GlbScene& scene)
        : m_light(light),
          m_animation(animation),
          m_tables(tables),
          m_clip(clip),
          m_scene(scene)
    {}

    void Run()
    {
        if (m_light.Kind == "Ambient") {
            const bool isBlack = ColorOf(m_light.Ambient) == std::array<float, 3>{};
            if (!isBlack || Find("Ambient") != nullptr) {
                Warn("an ambient light has no place in glTF.");
            }
            return;
        }
        if (!m_light.IsBranchVisible && Find("IsLightEnabled") == nullptr) {
            Warn("the light is off and left out.");
            return;
        }
        AddNode();
        if (m_animation != nullptr) {
            Move();
        }
    }

private:
    void Warn(const std::string& text) { m_scene.Warnings.push_back("\"" + m_light.Name + "\": " + text); }

    const MemberAnimation* Find(std::string_view path) const
    {
        return m_animation == nullptr ? nullptr : FindMember(m_animation->Members, path);
    }

    void AddNode()
    {
        Json light = {{"name", m_light.Name},
                      {"type", TypeWord(m_light)},
                      {"color", NumberList(ColorOf(m_light.Diffuse))},
                      {"intensity", ShortNumber(IntensityOf(m_light.Diffuse))}};
        if (m_light.Kind != "DirectionalLight" && m_light.IsDistanceAttenuationEnabled &&
            m_light.DistanceAttenuationEnd > 0) {
            light["range"] = ShortNumber(m_light.DistanceAttenuationEnd);
        }
        if (m_light.Kind == "SpotLight") {
            light["spot"] = SpotOf();
        }
        m_scene.Writer.UseExtension("KHR_lights_punctual");
        Json& lights = m_scene.Writer.Root()["extensions"]["KHR_lights_punctual"]["lights"];
        lights.push_back(std::move(light));
        m_place = "/extensions/KHR_lights_punctual/lights/" + std::to_string(lights.size() - 1);
        Json node = {{"name", m_light.Name},
                     {"translation", NumberList(m_light.Local.Translate)},
                     {"rotation", NumberList(ToFloats(RotationOf(m_light, m_light.Direction)))}};
        node["extensions"]["KHR_lights_punctual"] = {{"light", lights.size() - 1}};
        m_node = m_scene.Writer.Add("nodes", std::move(node));
        m_scene.Roots.push_back(m_node);
    }

    Json SpotOf()
    {
        const auto table = std::ranges::find(m_tables.Tables, m_light.Angle.TableName, &LookupTable::Name);
        const Cone cone = table == m_tables.Tables.end() ? Cone() : ConeOf(*table);
        return {{"innerConeAngle", ShortNumber(static_cast<float>(cone.Inner))},
                {"outerConeAngle", ShortNumber(static_cast<float>(cone.Outer))}};
    }

    void Move()
    {
        MovePlace();
        if (const MemberAnimation* const diffuse = Find("Diffuse")) {
            MoveColor(*diffuse);
        }
        if (const MemberAnimation* const enabled = Find("IsLightEnabled");
            enabled != nullptr && enabled->Bool) {
            m_clip.SwitchPointer(SetVisible(m_node, m_light.IsBranchVisible, m_scene), *enabled->Bool,
                                 m_light.IsBranchVisible);
        }
    }

    void MovePlace()
    {
        const int length = m_animation->Head.FrameSize;
        if (const MemberAnimation* const transform = Find("Transform")) {
            const auto translate = [&](float frame, std::span<float> values) {
                std::ranges::copy(m_light.Local.Translate, values.begin());
                EvaluateCurves(transform->Translate, frame, values);
            };
            m_clip.MoveNode(
                m_node, "translation",
                m_clip.Sample(CurvesOf(transform->Translate), length, 3, TrackForm::Linear, translate),
                m_light.Local.Translate);
        }
        if (const MemberAnimation* const direction = Find("Direction")) {
            const auto rotate = [&](float frame, std::span<float> values) {
                Vector3 towards = m_light.Direction;
                EvaluateMember(direction, frame, towards);
                std::ranges::copy(ToFloats(RotationOf(m_light, towards)), values.begin());
            };
            m_clip.MoveNode(m_node, "rotation",
                            m_clip.Sample(CurvesOf({direction}), length, 4, TrackForm::Curved, rotate),
                            ToFloats(RotationOf(m_light, m_light.Direction)));
        }
    }

    void MoveColor(const MemberAnimation& diffuse)
    {
        const int length = m_animation->Head.FrameSize;
        const auto at = [&](float frame) {
            Color now = m_light.Diffuse;
            EvaluateMember(&diffuse, frame, now);
            return now;
        };
        const auto color = [&](float frame, std::span<float> values) {
            std::ranges::copy(ColorOf(at(frame)), values.begin());
        };
        const auto intensity = [&](float frame, std::span<float> values) {
            values[0] = IntensityOf(at(frame));
        };
        const float intensityAtRest = IntensityOf(m_light.Diffuse);
        m_clip.MovePointer(m_place + "/color",
                           m_clip.Sample(CurvesOf({&diffuse}), length, 3, TrackForm::Linear, color),
                           ColorOf(m_light.Diffuse));
        m_clip.MovePointer(m_place + "/intensity",
                           m_clip.Sample(CurvesOf({&diffuse}), length, 1, TrackForm::Linear, intensity),
                           {&intensityAtRest, 1});
    }

    const Light& m_light;
    const LightAnimation* m_animation = nullptr;
    const LookupTableSet& m_tables;
    ClipBuilder& m_clip;
    GlbScene& m_scene;
    std::string m_place; ///< JSON pointer of the light
    int m_node = -1;
};

const LightAnimation* FindAnimation(const Stage& stage, const Light& light)
{
    const auto found = std::ranges::find_if(stage.LightAnimations, [&](const LightAnimation& animation) {
        return animation.Head.Name == light.Name + ".LightAnimation";
    });
    return found == stage.LightAnimations.end() ? nullptr : &*found;
}

} // namespace

void AddLights(const Stage& stage, StageNames& known, ClipBuilder& clip, GlbScene& scene)
{
    for (const Light& light : stage.Lights) {
        if (known.Lights.insert(light.Name).second) {
            LightConversion(light, FindAnimation(stage, light), stage.LookupTables, clip, scene).Run();
        }
    }
}

} // namespace tq4x::reader
