#include "animation/GroupDescription.h"

#include "pipeline/WordTable.h"
#include "pipeline/XmlWriter.h"

#include <string_view>

namespace tq4x
{
namespace
{

constexpr auto BlendOperationWords = WordTable<BlendOperation::RgbaColor>({
    {BlendOperation::Transform, "Transform"},
    {BlendOperation::CalculatedTransform, "CalculatedTransform"},
    {BlendOperation::CalculatedTransformQuaternion, "CalculatedTransformQuaternion"},
    {BlendOperation::CalculatedTransformAccurateScale, "CalculatedTransformAccurateScale"},
    {BlendOperation::CalculatedTransformAccurateScaleQuaternion,
     "CalculatedTransformAccurateScaleQuaternion"},
    {BlendOperation::Bool, "Bool"},
    {BlendOperation::Int, "Int"},
    {BlendOperation::Float, "Float"},
    {BlendOperation::Vector2, "Vector2"},
    {BlendOperation::Vector3, "Vector3"},
    {BlendOperation::Vector4, "Vector4"},
    {BlendOperation::RgbaColor, "RgbaColor"},
});

AnimationGroupDescription SkeletalGroup()
{
    return {.Name = "SkeletalAnimation",
            .EvaluationTiming = "AfterSceneCulling",
            .Members = {{R"(Skeleton.Bones["*"].AnimatedTransform)", BlendOperation::CalculatedTransform}}};
}

AnimationGroupDescription VisibilityGroup()
{
    return {.Name = "VisibilityAnimation",
            .EvaluationTiming = "BeforeWorldUpdate",
            .Members = {{"IsVisible", BlendOperation::Bool},
                        {R"(Meshes["*"].IsVisible)", BlendOperation::Bool},
                        {R"(MeshNodeVisibilities["*"].IsVisible)", BlendOperation::Bool}}};
}

AnimationMemberDescription MaterialMember(std::string_view path, BlendOperation operation)
{
    return {R"(Materials["*"].)" + std::string(path), operation};
}

AnimationGroupDescription MaterialGroup()
{
    return {.Name = "MaterialAnimation",
            .EvaluationTiming = "AfterSceneCulling",
            .Members = {
                MaterialMember("MaterialColor.Emission", BlendOperation::RgbaColor),
                MaterialMember("MaterialColor.Ambient", BlendOperation::RgbaColor),
                MaterialMember("MaterialColor.Diffuse", BlendOperation::RgbaColor),
                MaterialMember("MaterialColor.Specular0", BlendOperation::RgbaColor),
                MaterialMember("MaterialColor.Specular1", BlendOperation::RgbaColor),
                MaterialMember("MaterialColor.Constant0", BlendOperation::RgbaColor),
                MaterialMember("MaterialColor.Constant1", BlendOperation::RgbaColor),
                MaterialMember("MaterialColor.Constant2", BlendOperation::RgbaColor),
                MaterialMember("MaterialColor.Constant3", BlendOperation::RgbaColor),
                MaterialMember("MaterialColor.Constant4", BlendOperation::RgbaColor),
                MaterialMember("MaterialColor.Constant5", BlendOperation::RgbaColor),
                MaterialMember(R"(TextureMappers["*"].Sampler.BorderColor)", BlendOperation::RgbaColor),
                MaterialMember(R"(TextureMappers["*"].Texture)", BlendOperation::Int),
                MaterialMember("FragmentOperation.BlendOperation.BlendColor", BlendOperation::RgbaColor),
                MaterialMember(R"(TextureCoordinators["*"].Scale)", BlendOperation::Vector2),
                MaterialMember(R"(TextureCoordinators["*"].Rotate)", BlendOperation::Float),
                MaterialMember(R"(TextureCoordinators["*"].Translate)", BlendOperation::Vector2),
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
