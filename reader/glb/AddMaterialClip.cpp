#include "glb/AddMaterialClip.h"

#include <algorithm>
#include <map>

#include "glb/MemberValues.h"
#include "glb/TextureTransform.h"

namespace tq4x::reader
{
namespace
{

/// The members that move one coordinator.
struct MovingCoordinator
{
    const MemberAnimation* Translate = nullptr;
    const MemberAnimation* Scale = nullptr;
    const MemberAnimation* Rotate = nullptr;

    [[nodiscard]] TextureCoordinator At(const TextureCoordinator& start, float frame) const
    {
        std::array<float, 2> translate = {start.TranslateS, start.TranslateT};
        std::array<float, 2> scale = {start.ScaleS, start.ScaleT};
        TextureCoordinator now = start;
        EvaluateMember(Translate, frame, translate);
        EvaluateMember(Scale, frame, scale);
        EvaluateMember(Rotate, frame, {&now.Rotate, 1});
        now.TranslateS = translate[0];
        now.TranslateT = translate[1];
        now.ScaleS = scale[0];
        now.ScaleT = scale[1];
        return now;
    }
};

class MaterialClip
{
public:
    MaterialClip(const MaterialAnimation& animation, const MaterialTable& materials, ClipBuilder& clip,
                 GlbScene& scene)
        : m_animation(animation),
          m_materials(materials),
          m_clip(clip),
          m_scene(scene)
    {}

    void Run()
    {
        for (const MemberAnimation& member : m_animation.Members) {
            const std::optional<MemberPath> path = ParseMemberPath(member.Path, "Materials");
            const auto found = path ? m_materials.find(path->Owner) : m_materials.end();
            const Material* const material = found == m_materials.end() ? nullptr : found->second.Source;
            if (material == nullptr) {
                Warn(member.Path, "the model has no material of this name to be moved.");
            } else if (path->Member == "TextureCoordinators") {
                Collect(*material, *path, member);
            } else if (!MoveColor(*material, path->Member, member)) {
                Warn(member.Path, "has no place in glTF and is left out.");
            }
        }
        for (const auto& [place, moving] : m_coordinators) {
            MoveCoordinator(*place.first, place.second, moving);
        }
    }

private:
    void Warn(const std::string& path, const std::string& text)
    {
        m_scene.Warnings.push_back(path + ": " + text);
    }

    void Collect(const Material& material, const MemberPath& path, const MemberAnimation& member)
    {
        if (static_cast<std::size_t>(path.MemberIndex) >= material.Coordinators.size()) {
            Warn(member.Path, "the material has no texture of this number to be moved.");
            return;
        }
        // Ordered by place in the model, so that equal input gives equal bytes.
        MovingCoordinator& moving = m_coordinators[{&material, path.MemberIndex}];
        (path.Last == "Translate" ? moving.Translate
         : path.Last == "Scale"   ? moving.Scale
                                  : moving.Rotate) = &member;
    }

    std::string PointerTo(const Material& material) const
    {
        return "/materials/" + std::to_string(m_materials.find(material.Name)->second.Index);
    }

    bool MoveColor(const Material& material, const std::string& name, const MemberAnimation& member)
    {
        if (name == "MaterialColor.Diffuse") {
            MoveDiffuse(material, member);
            return true;
        }
        if (name == "MaterialColor.Emission") {
            MoveEmission(material, member);
            return true;
        }
        return false;
    }

    void MoveDiffuse(const Material& material, const MemberAnimation& member)
    {
        const auto clamp = [](float part) { return std::clamp(part, 0.0F, 1.0F); };
        Color atRest = material.Diffuse;
        std::ranges::transform(atRest, atRest.begin(), clamp);
        Track track = SampleColor(material.Diffuse, 4, member);
        std::ranges::transform(track.Values, track.Values.begin(), clamp);
        MoveTo(PointerTo(material) + "/pbrMetallicRoughness/baseColorFactor", std::move(track), atRest);
    }

    /// The factor ends at 1, so the brightest colour of all frames gives the strength.
    void MoveEmission(const Material& material, const MemberAnimation& member)
    {
        Track track = SampleColor(material.Emission, 3, member);
        Vector3 atRest = {material.Emission[0], material.Emission[1], material.Emission[2]};
        const float strength = std::max({1.0F, std::ranges::max(track.Values), std::ranges::max(atRest)});
        const auto scale = [strength](float part) { return std::max(part, 0.0F) / strength; };
        std::ranges::transform(track.Values, track.Values.begin(), scale);
        std::ranges::transform(atRest, atRest.begin(), scale);
        if (strength > 1) {
            m_scene.Writer.UseExtension("KHR_materials_emissive_strength");
            At(PointerTo(material) + "/extensions/KHR_materials_emissive_strength/emissiveStrength") =
                ShortNumber(strength);
        }
        MoveTo(PointerTo(material) + "/emissiveFactor", std::move(track), atRest);
    }

    Track SampleColor(const Color& start, std::size_t components, const MemberAnimation& member)
    {
        const auto evaluate = [&](float frame, std::span<float> values) {
            std::ranges::copy(std::span(start).first(components), values.begin());
            EvaluateMember(&member, frame, values);
        };
        return m_clip.Sample(CurvesOf({&member}), m_animation.Head.FrameSize, components, TrackForm::Linear,
                             evaluate);
    }

    /// A pointer must lead to something that stands in the file.
    Json& At(const std::string& pointer) { return m_scene.Writer.Root()[Json::json_pointer(pointer)]; }

    void MoveTo(const std::string& pointer, Track track, std::span<const float> atRest)
    {
        At(pointer) = NumberList(atRest);
        m_clip.MovePointer(pointer, std::move(track), atRest);
    }

    void MoveCoordinator(const Material& material, int index, const MovingCoordinator& moving)
    {
        const std::size_t mapper = static_cast<std::size_t>(index);
        const GlbMaterial& added = m_materials.find(material.Name)->second;
        if (mapper >= added.TextureInfos.size() || added.TextureInfos[mapper].empty()) {
            Warn("Materials[\"" + material.Name + "\"].TextureCoordinators[" + std::to_string(index) + "]",
                 "moves a texture that is not shown; it is left out.");
            return;
        }
        const TextureCoordinator& start = material.Coordinators[mapper];
        const TextureTransform atRest = ComputeTextureTransform(start);
        const std::string pointer = added.TextureInfos[mapper];
        RequireTransform(pointer, atRest);
        const auto move = [&](const std::string& name, std::size_t components, auto take) {
            const auto evaluate = [&](float frame, std::span<float> values) {
                std::ranges::copy(take(ComputeTextureTransform(moving.At(start, frame))), values.begin());
            };
            m_clip.MovePointer(pointer + "/extensions/KHR_texture_transform/" + name,
                               m_clip.Sample(CurvesOf({moving.Translate, moving.Scale, moving.Rotate}),
                                             m_animation.Head.FrameSize, components, TrackForm::Curved,
                                             evaluate),
                               std::span<const float>(take(atRest)).first(components));
        };
        using Pair = std::array<float, 2>;
        move("offset", 2, [](const TextureTransform& transform) {
            return Pair{static_cast<float>(transform.Offset[0]), static_cast<float>(transform.Offset[1])};
        });
        move("rotation", 1, [](const TextureTransform& transform) {
            return std::array<float, 1>{static_cast<float>(transform.Rotation)};
        });
        move("scale", 2, [](const TextureTransform& transform) {
            return Pair{static_cast<float>(transform.Scale[0]), static_cast<float>(transform.Scale[1])};
        });
    }

    void RequireTransform(const std::string& pointer, const TextureTransform& atRest)
    {
        m_scene.Writer.UseExtension("KHR_texture_transform");
        Json& transform = At(pointer + "/extensions/KHR_texture_transform");
        const auto number = [](double value) { return ShortNumber(static_cast<float>(value)); };
        transform["offset"] = {number(atRest.Offset[0]), number(atRest.Offset[1])};
        transform["rotation"] = number(atRest.Rotation);
        transform["scale"] = {number(atRest.Scale[0]), number(atRest.Scale[1])};
    }

    const MaterialAnimation& m_animation;
    const MaterialTable& m_materials;
    ClipBuilder& m_clip;
    GlbScene& m_scene;
    std::map<std::pair<const Material*, int>, MovingCoordinator> m_coordinators;
};

} // namespace

void AddMaterialClip(const MaterialAnimation& animation, const MaterialTable& materials, ClipBuilder& clip,
                     GlbScene& scene)
{
    MaterialClip(animation, materials, clip, scene).Run();
}

} // namespace tq4x::reader
