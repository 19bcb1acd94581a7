#include "collect/TextureStage.h"

#include "collect/ExportTexture.h"
#include "collect/ShaderPorts.h"
#include "pipeline/ExportValues.h"
#include "pipeline/FileAccess.h"
#include "pipeline/MessageLog.h"

#include <xsi_imageclip2.h>
#include <xsi_texture.h>
#include <xsi_timecontrol.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace tq4x
{
namespace
{

/// Frames of the export's window, as whole numbers; the last one adds no picture of its own.
struct Window
{
    int First = 0;
    int Last = 0;
};

Window ExportWindow()
{
    constexpr double farthest = 1e9; // frames of the host are far below
    const ExportValues& values = GlobalExportValues();
    return {static_cast<int>(std::clamp(values.ExportStartFrame, -farthest, farthest)),
            static_cast<int>(std::clamp(values.ExportEndFrame, -farthest, farthest))};
}

/// The frame of the source that a clip shows at a frame of the scene.
double SourceFrame(const XSI::TimeControl& control, int frame)
{
    const double length = control.GetClipOut() - control.GetClipIn() + 1.0;
    const double start = control.GetStartOffset() - 1.0;
    if (frame < start)
        return 0.0;
    const double distance = std::min(std::max((frame - start) * control.GetScale(), 0.0), length);
    return control.GetClipIn() + distance;
}

/// A source frame as a whole number within a range.
int ClampedSourceFrame(const XSI::TimeControl& control, int frame, int low, int high)
{
    const double source = SourceFrame(control, frame);
    if (!(source > low))
        return low;
    return source < high ? static_cast<int>(source) : high;
}

/// A file pattern such as `name[1..30;3].tga`.
struct SequencePattern
{
    std::string Prefix;
    std::string Suffix;
    int Low = 0;
    int High = 0;
    int Digits = 1;
};

std::optional<int> ParseNumber(std::string_view text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// "low..high", exactly two numbers.
bool ParseBounds(std::string_view text, SequencePattern& pattern)
{
    const std::size_t dots = text.find("..");
    if (dots == std::string_view::npos)
        return false;
    const std::optional<int> low = ParseNumber(text.substr(0, dots));
    const std::optional<int> high = ParseNumber(text.substr(dots + 2));
    if (!low || !high || *low > *high)
        return false;
    pattern.Low = *low;
    pattern.High = *high;
    return true;
}

std::optional<SequencePattern> ParsePattern(const std::string& text)
{
    constexpr int mostDigits = 255; // no file name is longer
    const std::size_t open = text.rfind('[');
    const std::size_t close = text.find(']');
    if (open == std::string::npos || close == std::string::npos || close < open)
        return std::nullopt;
    const std::string_view middle = std::string_view(text).substr(open + 1, close - open - 1);
    SequencePattern pattern{text.substr(0, open), text.substr(close + 1)};
    if (!ParseBounds(middle.substr(0, middle.find(';')), pattern))
        return std::nullopt;
    const std::size_t last = middle.rfind(';');
    if (last != std::string_view::npos)
        pattern.Digits = std::clamp(ParseNumber(middle.substr(last + 1)).value_or(1), 1, mostDigits);
    return pattern;
}

std::string SequenceFileName(const SequencePattern& pattern, int number)
{
    std::array<char, 272> digits{};
    std::snprintf(digits.data(), digits.size(), "%0*d", pattern.Digits, number);
    return pattern.Prefix + digits.data() + pattern.Suffix;
}

/// Makes the pictures of a stage, one after the other.
struct StageBuilder
{
    ExportContext& Context;
    XSI::ImageClip2 Clip;
    TextureStage& Stage;

    void AddFrame(int frame, const XSI::CString& fileName) const
    {
        Stage.Frames[static_cast<float>(frame)] = &FindOrCreateTexture(Context, Clip, frame, fileName);
    }

    void AddSingle(const XSI::CString& fileName) const
    {
        Stage.Frames[0.0f] = &FindOrCreateTexture(Context, Clip, XSI::CurrentTime, fileName);
    }

    void AddSequence() const
    {
        const XSI::CString source = Clip.GetParameterValue("SourceFileName");
        const std::optional<SequencePattern> pattern = ParsePattern(source.GetAsciiString());
        if (!pattern)
            return;
        const Window window = ExportWindow();
        int previous = -1;
        for (int frame = window.First; frame < window.Last; ++frame) {
            const int number = ClampedSourceFrame(Clip.GetTimeControl(), frame, pattern->Low, pattern->High);
            if (number == previous)
                continue;
            previous = number;
            AddFrame(frame, SequenceFileName(*pattern, number).c_str());
        }
    }

    void AddScript(const XSI::CString& fileName) const
    {
        const std::vector<std::string> lines = ReadLines(fileName.GetAsciiString());
        if (lines.empty())
            return;
        const Window window = ExportWindow();
        std::string previous;
        for (int frame = window.First; frame < window.Last; ++frame) {
            const int last = static_cast<int>(lines.size()) - 1;
            const int number = ClampedSourceFrame(Clip.GetTimeControl(), frame, 0, last);
            const std::string& line = lines[static_cast<std::size_t>(number)];
            if (line == previous || line.empty())
                continue;
            previous = line;
            AddFrame(frame, line.c_str());
        }
    }

    static std::vector<std::string> ReadLines(const std::string& path)
    {
        constexpr std::size_t largestScript = std::size_t{16} << 20; // bytes
        std::vector<std::string> lines;
        std::istringstream stream(ReadFileText(path, largestScript).value_or(""));
        for (std::string line; std::getline(stream, line); lines.push_back(line))
            if (line.ends_with('\r'))
                line.pop_back();
        return lines;
    }
};

} // namespace

TextureStage MakeTextureStage(ExportContext& context, const XSI::CRef& reference, bool isNormalMap)
{
    const XSI::Texture texture(reference);
    const XSI::ImageClip2 clip = texture.GetImageClip();
    const XSI::CString fileName = clip.GetFileName();
    const XSI::TimeControl control = clip.GetTimeControl();
    TextureStage stage{texture.GetName(), {}, texture.GetParameterValue("tspace_id"), isNormalMap};
    const StageBuilder builder{context, clip, stage};
    if (fileName.IsEmpty())
        ReportMessage(MessageCode::TextureImageNameWrong);
    else if (EndsWithNoCase(fileName, ".scr"))
        builder.AddScript(fileName);
    else if (control.GetClipIn() == 0.0 && control.GetClipOut() == 0.0)
        builder.AddSingle(fileName);
    else
        builder.AddSequence();
    return stage;
}

} // namespace tq4x
