#include "animation/GroupDescription.h"

#include "pipeline/WordTable.h"
#include "pipeline/XmlWriter.h"

#include <string_view>

namespace tq4x
{
namespace
{

constexpr auto BlendOperationWords = WordTable<BlendOperationName::RgbaColor>({
    {BlendOperationName::Transform, "Transform"},
    {BlendOperationName::CalculatedTransform, "CalculatedTransform"},
    {BlendOperationName::CalculatedTransformQuaternion, "CalculatedTransformQuaternion"},
    {BlendOperationName::CalculatedTransformAccurateScale, "CalculatedTransformAccurateScale"},
    {BlendOperationName::CalculatedTransformAccurateScaleQuaternion,
     "CalculatedTransformAccurateScaleQuaternion"},
    {BlendOperationName::Bool, "Bool"},
    {BlendOperationName::Int, "Int"},
    {BlendOperationName::Float, "Float"},
    {BlendOperationName::Vector2, "Vector2"},
    {BlendOperationName::Vector3, "Vector3"},
    {BlendOperationName::Vector4, "Vector4"},
    {BlendOperationName::RgbaColor, "RgbaColor"},
});

AnimationGroupDescription SkeletalGroup()
{
    return {
        .Name = "SkeletalAnimation",
        .EvaluationTiming = "AfterSceneCulling",
        .Members = {{R"(Skeleton.Bones["*"].AnimatedTransform)", BlendOperationName::CalculatedTransform}}};
}

AnimationGroupDescription VisibilityGroup()
{
    return {.Name = "VisibilityAnimation",
            .EvaluationTiming = "BeforeWorldUpdate",
            .Members = {{"IsVisible", BlendOperationName::Bool},
                        {R"(Meshes["*"].IsVisible)", BlendOperationName::Bool},
                        {R"(MeshNodeVisibilities["*"].IsVisible)", BlendOperationName::Bool}}};
}

AnimationMemberDescription MaterialMember(std::string_view path, BlendOperationName operation)
{
    return {R"(Materials["*"].)" + std::string(path), operation};
}

AnimationGroupDescription MaterialGroup()
{
    return {.Name = "MaterialAnimation",
            .EvaluationTiming = "AfterSceneCulling",
            .Members = {
                MaterialMember("MaterialColor.Emission", BlendOperationName::RgbaColor),
                MaterialMember("MaterialColor.Ambient", BlendOperationName::RgbaColor),
                MaterialMember("MaterialColor.Diffuse", BlendOperationName::RgbaColor),
                MaterialMember("MaterialColor.Specular0", BlendOperationName::RgbaColor),
                MaterialMember("MaterialColor.Specular1", BlendOperationName::RgbaColor),
                MaterialMember("MaterialColor.Constant0", BlendOperationName::RgbaColor),
                MaterialMember("MaterialColor.Constant1", BlendOperationName::RgbaColor),
                MaterialMember("MaterialColor.Constant2", BlendOperationName::RgbaColor),
                MaterialMember("MaterialColor.Constant3", BlendOperationName::RgbaColor),
                MaterialMember("MaterialColor.Constant4", BlendOperationName::RgbaColor),
                MaterialMember("MaterialColor.Constant5", BlendOperationName::RgbaColor),
                MaterialMember(R"(TextureMappers["*"].Sampler.BorderColor)", BlendOperationName::RgbaColor),
                MaterialMember(R"(TextureMappers["*"].Texture)", BlendOperationName::Int),
                MaterialMember("FragmentOperation.BlendOperation.BlendColor", BlendOperationName::RgbaColor),
                MaterialMember(R"(TextureCoordinators["*"].Scale)", BlendOperationName::Vector2),
                MaterialMember(R"(TextureCoordinators["*"].Rotate)", BlendOperationName::Float),
                MaterialMember(R"(TextureCoordinators["*"].Translate)", BlendOperationName::Vector2),
            }};
}

} // namespace

void WriteMemberDescription(const AnimationMemberDescription& member, XmlWriter& stream)
{
    stream.Element("AnimationMemberDescription",
                   {{"BlendOperationName", WordOf(BlendOperationWords, member.BlendOperation)}},
                   [&] { stream.Leaf("Path", member.Path); });
}

void WriteGroupDescription(const AnimationGroupDescription& group, XmlWriter& stream)
{
    const auto writeMembers = [&] {
        for (const AnimationMemberDescription& member : group.Members)
            WriteMemberDescription(member, stream);
    };
    stream.Element("GraphicsAnimationGroupDescription",
                   {{"Name", group.Name}, {"EvaluationTiming", group.EvaluationTiming}},
                   [&] { stream.Element("MemberInformationSet", writeMembers); });
}

void WriteModelGroupDescriptions(XmlWriter& stream)
{
    stream.Element("AnimationGroupDescriptions", [&] {
        WriteGroupDescription(SkeletalGroup(), stream);
        WriteGroupDescription(VisibilityGroup(), stream);
        WriteGroupDescription(MaterialGroup(), stream);
    });
}

} // namespace tq4x
