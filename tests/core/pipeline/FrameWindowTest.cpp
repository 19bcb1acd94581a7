#include "pipeline/FrameWindow.h"

#include "pipeline/ExportValues.h"
#include "support/MessageRecorder.h"

#include <limits>

namespace tq4x
{
namespace
{

using test::MessageRecorder;
using testing::ElementsAre;

constexpr PlayControl Control = {0.0, 100.0, 10.0, 20.0};
constexpr const char* Swapped = "W Start frame is bigger than End frame";
constexpr const char* StartWrong = "W Start frame is wrong";
constexpr const char* EndWrong = "W End frame is wrong";

TEST(FrameWindow, Resolve)
{
    const struct
    {
        const char* Name;
        std::uint32_t FrameRange;
        std::int32_t Start, End;
        double WindowStart, WindowEnd;
        std::vector<std::string> Messages;
    } cases[] = {
        {"all", 0, 5, 6, 0, 100, {}},
        {"playback", 1, 5, 6, 10, 20, {}},
        {"range loses one", 2, 5, 6, 4, 5, {}},
        {"one frame", 2, 5, 5, 4, 4, {}},
        {"bounds of the time line", 2, 1, 101, 0, 100, {}},
        {"end behind the time line stays", 2, 1, 9999, 0, 9998, {}},
        {"start before the time line stays", 2, -5, 10, -6, 9, {}},
        {"swapped", 2, 10, 5, 4, 9, {Swapped}},
        {"start behind the time line", 2, 200, 300, 0, 299, {StartWrong}},
        {"end before the time line", 2, -9, -5, -10, 100, {EndWrong}},
        {"swapped, then start behind", 2, 300, 200, 0, 299, {Swapped, StartWrong}},
        {"swapped, then end before", 2, -5, -9, -10, 100, {Swapped, EndWrong}},
        {"least and largest",
         2,
         std::numeric_limits<std::int32_t>::max(),
         std::numeric_limits<std::int32_t>::min(),
         -2147483649.0,
         2147483646.0,
         {Swapped}},
        {"unknown range counts as all", 3, 5, 6, 0, 100, {}},
    };

    for (const auto& row : cases) {
        const MessageRecorder recorder;
        ExportOptions options;
        options.FrameRange = row.FrameRange;
        options.StartFrame = row.Start;
        options.EndFrame = row.End;
        const FrameWindow window = ResolveFrameWindow(options, Control);
        EXPECT_EQ(window.Start, row.WindowStart) << row.Name;
        EXPECT_EQ(window.End, row.WindowEnd) << row.Name;
        EXPECT_EQ(MessageRecorder::Messages(), row.Messages) << row.Name;
    }
}

TEST(FrameWindow, AllThreeRepairsMayFollowEachOther)
{
    const MessageRecorder recorder;
    ExportOptions options;
    options.FrameRange = 2;
    options.StartFrame = 60;
    options.EndFrame = 50;
    const FrameWindow window = ResolveFrameWindow(options, {100.0, 10.0, 0.0, 0.0});
    EXPECT_EQ(window.Start, 100.0);
    EXPECT_EQ(window.End, 10.0);
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre(Swapped, StartWrong, EndWrong));
}

TEST(FrameWindow, FrameSteps)
{
    const struct
    {
        float Precision;
        int Steps;
    } cases[] = {{1.0f, 1}, {0.9f, 1}, {0.8f, 1}, {0.7f, 1},   {0.6f, 1}, {0.5f, 2},
                 {0.4f, 2}, {0.3f, 3}, {0.2f, 5}, {0.15f, 10}, {0.1f, 10}};

    for (const auto& row : cases)
        EXPECT_EQ(ComputeFrameSteps(row.Precision), row.Steps) << row.Precision;
}

TEST(FrameWindow, PrecisionIsBroughtIntoItsRangeWithOneWarning)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();

    const struct
    {
        float Precision;
        float Used;
        std::vector<std::string> Messages;
    } cases[] = {
        {1.0f, 1.0f, {}},
        {0.1f, 0.1f, {}},
        {0.25f, 0.25f, {}},
        {0.05f, 0.1f, {"W Frame precision is wrong(0.05)."}},
        {0.0f, 0.1f, {"W Frame precision is wrong(0)."}},
        {-3.0f, 0.1f, {"W Frame precision is wrong(-3)."}},
        {2.0f, 1.0f, {"W Frame precision is wrong(2)."}},
        {infinity, 1.0f, {"W Frame precision is wrong(inf)."}},
        {-infinity, 1.0f, {"W Frame precision is wrong(-inf)."}},
        {std::numeric_limits<float>::quiet_NaN(), 1.0f, {"W Frame precision is wrong(nan)."}},
    };

    for (const auto& row : cases) {
        const MessageRecorder recorder;
        EXPECT_EQ(UsableFramePrecision(row.Precision), row.Used) << row.Precision;
        EXPECT_EQ(MessageRecorder::Messages(), row.Messages);
    }
}

TEST(FrameWindow, SampleCountHasALimit)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double none = std::numeric_limits<double>::quiet_NaN();

    const struct
    {
        FrameWindow Window;
        float Precision;
        const char* Message; // empty: accepted
    } cases[] = {
        {{0.0, 100.0}, 1.0f, ""},
        {{5.0, 5.0}, 0.1f, ""},
        {{100.0, 0.0}, 1.0f, ""},
        {{0.0, 999999.0}, 1.0f, ""},
        {{-1e9, -1e9 + 10.0}, 0.1f, ""},
        {{0.0, 1000000.0}, 1.0f, "E Frame window is too long(0 to 1e+06)."},
        {{0.0, 100000.0}, 0.1f, "E Frame window is too long(0 to 100000)."},
        {{0.0, 2147483646.0}, 1.0f, "E Frame window is too long(0 to 2.14748e+09)."},
        {{2147483646.0, 0.0}, 1.0f, "E Frame window is too long(2.14748e+09 to 0)."},
        {{1e300, 1e300}, 1.0f, "E Frame window is too long(1e+300 to 1e+300)."},
        {{-1e17, -1e17 + 32}, 1.0f, "E Frame window is too long(-1e+17 to -1e+17)."},
        {{0.0, infinity}, 1.0f, "E Frame window is too long(0 to inf)."},
        {{-infinity, infinity}, 1.0f, "E Frame window is too long(-inf to inf)."},
        {{none, 1.0}, 1.0f, "E Frame window is too long(nan to 1)."},
    };

    for (const auto& row : cases) {
        const MessageRecorder recorder;
        const std::string wanted = row.Message;
        EXPECT_EQ(CheckSampleCount(row.Window, row.Precision), wanted.empty()) << row.Window.Start;
        EXPECT_EQ(MessageRecorder::Messages(),
                  wanted.empty() ? std::vector<std::string>{} : std::vector<std::string>{wanted});
    }
}

TEST(ExportValues, BeforeTheFirstExport)
{
    const ExportValues values;
    EXPECT_EQ(values.Tolerances.Scale, 0.01f);
    EXPECT_EQ(values.Tolerances.Rotate, 0.01f);
    EXPECT_EQ(values.Tolerances.Translate, 0.01f);
    EXPECT_EQ(values.FrameSteps, 1);
    EXPECT_EQ(values.LightMagnify, 1.0f);
    EXPECT_EQ(&GlobalExportValues(), &GlobalExportValues());
}

TEST(ExportValues, ComeFromTheOptions)
{
    const MessageRecorder recorder;
    ExportOptions options;
    options.FramePrecision = 0.01f;
    options.AdjustSkinning = 1;
    options.Magnify = 2.0f;
    options.ToleranceScale = 3.0f;
    options.ToleranceRotate = 4.0f;
    options.ToleranceTranslate = 5.0f;
    ExportValues values;
    SetSamplingValues(values, options);
    EXPECT_EQ(values.FramePrecision, 0.1f);
    EXPECT_EQ(values.FrameSteps, 10);
    EXPECT_TRUE(values.IsRigidSkinning);
    EXPECT_EQ(values.Tolerances.Scale, 0.01f);
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("W Frame precision is wrong(0.01)."));
    SetConversionValues(values, options);
    EXPECT_EQ(values.Tolerances.Scale, 3.0f);
    EXPECT_EQ(values.Tolerances.Rotate, 4.0f);
    EXPECT_EQ(values.Tolerances.Translate, 5.0f);
    EXPECT_EQ(values.LightMagnify, 2.0f);
    EXPECT_EQ(values.CameraMagnify, 2.0f);
    options.AdjustSkinning = 2;
    SetSamplingValues(values, options);
    EXPECT_FALSE(values.IsRigidSkinning);
}

} // namespace
} // namespace tq4x
