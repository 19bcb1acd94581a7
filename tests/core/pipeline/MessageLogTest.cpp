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

} // namespace
} // namespace tq4x
