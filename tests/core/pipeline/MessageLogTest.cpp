#include "pipeline/MessageLog.h"

#include "support/MessageRecorder.h"

namespace tq4x
{
namespace
{

using test::MessageRecorder;
using testing::ElementsAre;

TEST(MessageLog, EmptySlotAnswersWithStatusOne)
{
    MessageLog::Instance().SetCallback(nullptr);
    const LogResult printed = MessageLog::Instance().Print("text", Severity::Information);
    EXPECT_EQ(printed.Status, 1);
    EXPECT_EQ(printed.Message, "Loggin callback is NULL.");
    EXPECT_EQ(MessageLog::Instance().Report(MessageCode::CannotOpenFile).Message, "Loggin callback is NULL.");
}

TEST(MessageLog, DetailFollowsInParenthesesWithoutABlank)
{
    const MessageRecorder recorder;
    ReportMessage(MessageCode::CannotOpenFile, "a/b.qmdl");
    ReportMessage(MessageCode::CannotOpenFile);
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E Can't open file(a/b.qmdl)", "E Can't open file"));
}

TEST(MessageLog, NumbersOutsideTheTableAreUnknownErrors)
{
    const MessageRecorder recorder;
    for (const int code : {-1, 25, 57})
        ReportMessage(static_cast<MessageCode>(code));
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("E Unknown Error", "W Unknown Error", "W Unknown Error"));
}

TEST(MessageLog, SeverityFollowsTheNumber)
{
    const MessageRecorder recorder;
    ReportMessage(MessageCode::TooManyTextures, "m");
    ReportMessage(MessageCode::TooManyTexturesOnMesh, "n");
    ReportMessage(MessageCode::MergeQmdlPathWrong);
    ReportMessage(MessageCode::BillboardIgnored);
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("E The number of composite texture is over 3(m)",
                            "W The number of composite texture is over 3(n)",
                            "E Path of qmdl file to merge is wrong",
                            "W Billboard Type is ignored if 'Convert To Model' option is ON"));
}

/// What each code says, by number.
const char* const Said[] = {
    "E BrellStudio cannot be found",
    "E Can't get texture size",
    "E Can't open file",
    "E Failed to start BrellStudio",
    "E Holed polygon exists",
    "E Influence object is not outputted",
    "E Multiple bind poses are not supported",
    "E No effective node",
    "E No output file",
    "E No shading group",
    "E Node for Output File Name is not selected",
    "E Output File Name is wrong",
    "E Output Folder is wrong",
    "E Same user attribute exists",
    "E Texture image name is wrong",
    "E Texture size is wrong",
    "E TGA file is wrong",
    "E The number of composite texture is over 3",
    "E UV linking is not identical",
    "E Vertex number is different from original mesh",
    "E Wrong weighted vertices exist",
    "E Polygon bone size is over",
    "E Max Reserved Uniform Registers is wrong",
    "E Internal Error",
    "E Path of qmdl file to merge is wrong",
    "W Unknown Error",
    "W Animation curve or expression is not connected to frame extension",
    "W Can't export NURBS surface",
    "W Can't export Subdivision surface",
    "W Can't get UV",
    "W Deformer is not effective",
    "W File texture is not connected",
    "W Frame offset is not zero",
    "W Inherits transform of non-skinned object is off",
    "W Material name is changed",
    "W No shader",
    "W Node name is changed",
    "W Output File Name is changed",
    "W Procedural texture is ignored",
    "W Projection mapping is not supported",
    "W PSD file texture is ignored",
    "W Shader is not supported",
    "W Shear is not zero",
    "W Stencil mapping is not supported",
    "W Texture file for texture pattern animation is not found",
    "W Texture name is changed",
    "W There are multiple shape",
    "W There are multiple texture files with the same name",
    "W Zero normal exist",
    "W Texture file doesn't exist",
    "W Texture type is not supported",
    "W Texture format is not supported",
    "W The number of composite texture is over 3",
    "W Map channel does not exist",
    "W Optimization failed",
    "W Can't get UV data for generating the tangent",
    "W Billboard Type is ignored if 'Convert To Model' option is ON",
};

TEST(MessageLog, EveryCodeHasItsTextAndSeverity)
{
    for (std::size_t code = 0; code < std::size(Said); ++code) {
        const MessageRecorder recorder;
        ReportMessage(static_cast<MessageCode>(code));
        EXPECT_THAT(MessageRecorder::Messages(), ElementsAre(Said[code])) << code;
    }
}

} // namespace
} // namespace tq4x
