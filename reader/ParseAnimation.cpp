#include <array>
#include <span>

#include "NumberForm.h"
#include "ParseSections.h"

namespace tq4x::reader
{
namespace
{

KeyKind KindOfKey(std::string_view name)
{
    return name == "HermiteFloatKey" ? KeyKind::Hermite
           : name == "StepFloatKey"  ? KeyKind::Step
                                     : KeyKind::Linear;
}

/// The attributes of a key of each kind, in their order.
std::span<const std::string_view> AttributesOf(std::string_view key)
{
    static constexpr std::string_view Names[] = {"Frame", "Value", "InSlope", "OutSlope"};
    return std::span(Names).first(key == "HermiteFloatKey" ? 4 : 2);
}

/// The grammar sees the first keys of a list only; the rest is held against its form here.
void CheckKeyForm(const ElementReader& key, std::string_view expected)
{
    const std::span<const std::string_view> attributes = AttributesOf(expected);
    if (key.Name() == expected && key.HasAttributes(attributes) && !key.HasChildren()) {
        return;
    }
    std::string names;
    for (const std::string_view name : attributes) {
        names += (names.empty() ? "" : ", ") + std::string(name);
    }
    key.Findings().Error("TQ-KEY-FORM", key.Line(),
                         "A key of this list must be a " + std::string(expected) + " with " + names + ".");
}

Key ParseKey(const ElementReader& element)
{
    Key key;
    key.Kind = KindOfKey(element.Name());
    key.Frame = element.Float("Frame");
    key.Value = element.Float("Value");
    key.InSlope = element.Float("InSlope");
    key.OutSlope = element.Float("OutSlope");
    key.Line = element.Line();
    return key;
}

void ParseSegment(Curve& curve, const ElementReader& segment)
{
    const std::string_view expected = segment.Name() == "HermiteFloatSegment" ? "HermiteFloatKey"
                                      : segment.Name() == "StepFloatSegment"  ? "StepFloatKey"
                                                                              : "LinearFloatKey";
    for (const ElementReader& key : segment.Child("Keys").Children()) {
        CheckKeyForm(key, expected);
        curve.Keys.push_back(ParseKey(key));
    }
}

BoolCurve ParseBoolCurve(const ElementReader& element)
{
    BoolCurve curve;
    curve.StartFrame = element.Float("StartFrame");
    curve.EndFrame = element.Float("EndFrame");
    curve.DefaultValue = element.Boolean("DefaultValue");
    curve.Line = element.Line();
    for (const ElementReader& key : element.Child("Keys").Children()) {
        CheckKeyForm(key, "BoolKey");
        const std::string value = key.Text("Value");
        if (value != "true" && value != "false") {
            key.Findings().Error("TQ-KEY-FORM", key.Line(), "\"" + value + "\" is neither true nor false.");
        }
        curve.Keys.push_back({key.Float("Frame"), value == "true", key.Line()});
    }
    return curve;
}

std::optional<Curve> ParseOptionalCurve(const ElementReader& element)
{
    return element.Exists() ? std::optional(ParseCurve(element)) : std::nullopt;
}

CurveTriple ParseTriple(const ElementReader& element)
{
    return {ParseOptionalCurve(element.Child("XSegmentsFloatCurve")),
            ParseOptionalCurve(element.Child("YSegmentsFloatCurve")),
            ParseOptionalCurve(element.Child("ZSegmentsFloatCurve"))};
}

/// Vectors, colours, floats and integers: the names of their curves differ, never in one element.
std::array<std::optional<Curve>, 4> ParseChannels(const ElementReader& element)
{
    if (element.Name() == "RgbaColorAnimation") {
        return {ParseOptionalCurve(element.Child("RSegmentsFloatCurve")),
                ParseOptionalCurve(element.Child("GSegmentsFloatCurve")),
                ParseOptionalCurve(element.Child("BSegmentsFloatCurve")),
                ParseOptionalCurve(element.Child("ASegmentsFloatCurve"))};
    }
    if (element.Name() == "FloatAnimation" || element.Name() == "IntAnimation") {
        return {ParseOptionalCurve(element.Child("SegmentsFloatCurve")), {}, {}, {}};
    }
    CurveTriple vector = ParseTriple(element);
    return {std::move(vector[0]), std::move(vector[1]), std::move(vector[2]), {}};
}

MemberAnimation ParseMember(const ElementReader& element)
{
    MemberAnimation member;
    const ElementReader path = element.Child("Path");
    member.Path = path.Content();
    member.PathLine = path.Line();
    member.Line = element.Line();
    for (const ElementReader& animation : element.Children()) {
        if (animation.Name() == "Path") {
            continue;
        }
        member.Kind = animation.Name();
        member.Scale = ParseTriple(animation.Child("ScaleVector3Animation"));
        member.Rotate = ParseTriple(animation.Child("RotateVector3Animation"));
        member.Translate = ParseTriple(animation.Child("TranslateVector3Animation"));
        member.Channels = ParseChannels(animation);
        if (const ElementReader curve = animation.Child("BoolCurve"); curve.Exists()) {
            member.Bool = ParseBoolCurve(curve);
        }
    }
    return member;
}

/// The number behind the fixed beginning of "_1_10".
int ParsePrecision(const std::string& text)
{
    constexpr std::string_view Prefix = "_1_";
    return text.starts_with(Prefix) ? ParseInteger(std::string_view(text).substr(Prefix.size())).value_or(1)
                                    : 1;
}

} // namespace

Curve ParseCurve(const ElementReader& element)
{
    Curve curve;
    curve.PreRepeatMethod = element.Text("PreRepeatMethod");
    curve.PostRepeatMethod = element.Text("PostRepeatMethod");
    curve.StartFrame = element.Float("StartFrame");
    curve.EndFrame = element.Float("EndFrame");
    curve.Line = element.Line();
    for (const ElementReader& segment : element.Child("Segments").Children()) {
        ParseSegment(curve, segment);
    }
    return curve;
}

AnimationHead ParseAnimationHead(const ElementReader& animation)
{
    AnimationHead head;
    head.Name = animation.Text("Name");
    head.FrameSize = animation.Integer("FrameSize");
    head.IsLoop = animation.Text("LoopMode") == "Loop";
    head.Line = animation.Line();
    return head;
}

std::vector<MemberAnimation> ParseMembers(const ElementReader& animation)
{
    std::vector<MemberAnimation> members;
    for (const ElementReader& member : animation.Child("MemberAnimationDataSet").Children()) {
        members.push_back(ParseMember(member));
    }
    return members;
}

SkeletalAnimation ParseSkeletalAnimation(const ElementReader& element)
{
    SkeletalAnimation animation;
    animation.Head = ParseAnimationHead(element);
    animation.Members = ParseMembers(element);
    const ElementReader binarize = element.Child("SkeletalAnimationBinarizeOption");
    animation.IsFrameFormat = binarize.Boolean("IsFrameFormat");
    animation.ScaleQuantizeQuality = binarize.Integer("ScaleQuantizeQuality");
    animation.RotateQuantizeQuality = binarize.Integer("RotateQuantizeQuality");
    animation.TranslateQuantizeQuality = binarize.Integer("TranslateQuantizeQuality");
    animation.Bones = ParseSkeleton(element.Child("Skeleton"));
    const ElementReader meta = element.Child("EditData").Child("GenericMetaData");
    const ElementReader option = meta.Child("SkeletalAnimationDccToolExportOption");
    animation.StartFrame = option.Number("StartFrame");
    animation.EndFrame = option.Number("EndFrame");
    animation.Magnify = option.Float("Magnify", 1);
    const ElementReader bake = option.Child("SkeletalAnimationBakeOption");
    animation.FrameSteps = ParsePrecision(bake.Text("FramePrecision"));
    animation.ScaleTolerance = bake.Number("ScaleTolerance");
    animation.RotateTolerance = bake.Number("RotateTolerance");
    animation.TranslateTolerance = bake.Number("TranslateTolerance");
    return animation;
}

MaterialAnimation ParseMaterialAnimation(const ElementReader& element)
{
    MaterialAnimation animation;
    animation.Head = ParseAnimationHead(element);
    animation.Members = ParseMembers(element);
    for (const ElementReader& pattern : element.Child("TexturePatterns").Children("TexturePattern")) {
        animation.Patterns.push_back(ParseTextureReference(pattern.Child("TextureReference")));
    }
    return animation;
}

VisibilityAnimation ParseVisibilityAnimation(const ElementReader& element)
{
    return {ParseAnimationHead(element), ParseMembers(element)};
}

} // namespace tq4x::reader
