#include "animation/GroupDescription.h"
#include "pipeline/XmlWriter.h"
#include "support/Golden.h"

#include <algorithm>

namespace tq4x
{
namespace
{

TEST(WriteModelGroupDescriptions, WritesThreeGroups)
{
    XmlWriter stream;
    stream.AtLevel(4, [&] { WriteModelGroupDescriptions(stream); });
    test::ExpectGolden(stream.Text(), "core/animation/model-groups.xml");
}

TEST(WriteGroupDescription, KnowsAllBlendOperations)
{
    const char* const words[] = {"Transform",
                                 "CalculatedTransform",
                                 "CalculatedTransformQuaternion",
                                 "CalculatedTransformAccurateScale",
                                 "CalculatedTransformAccurateScaleQuaternion",
                                 "Bool",
                                 "Int",
                                 "Float",
                                 "Vector2",
                                 "Vector3",
                                 "Vector4",
                                 "RgbaColor"};
    AnimationGroupDescription group{"G", "BeforeWorldUpdate", {}};
    std::string expected =
        "<GraphicsAnimationGroupDescription Name=\"G\" EvaluationTiming=\"BeforeWorldUpdate\">\n"
        "\t<MemberInformationSet>\n";
    for (int i = 0; i < 12; ++i) {
        group.Members.push_back({"P" + std::to_string(i), static_cast<BlendOperationName>(i)});
        expected += "\t\t<AnimationMemberDescription BlendOperationName=\"" + std::string(words[i]) +
                    "\">\n\t\t\t<Path>P" + std::to_string(i) + "</Path>\n\t\t</AnimationMemberDescription>\n";
    }
    expected += "\t</MemberInformationSet>\n</GraphicsAnimationGroupDescription>\n";
    XmlWriter stream;
    WriteGroupDescription(group, stream);
    EXPECT_EQ(stream.Text(), expected);
}

} // namespace
} // namespace tq4x
