#include "glb/ClipBuilder.h"

#include <algorithm>
#include <cmath>

namespace tq4x::reader
{
namespace
{

bool IsEvery(std::span<const Curve* const> curves, KeyKind kind)
{
    return std::ranges::all_of(curves, [kind](const Curve* curve) {
        return std::ranges::all_of(curve->Keys, [kind](const Key& key) { return key.Kind == kind; });
    });
}

/// Rising, each once, none below 0.
void Order(std::vector<float>& frames)
{
    std::ranges::sort(frames);
    frames.erase(std::unique(frames.begin(), frames.end()), frames.end());
    std::erase_if(frames, [](float frame) { return frame < 0; });
    if (frames.empty()) {
        frames.push_back(0);
    }
}

std::span<const float> RowAt(const Track& track, std::size_t frame)
{
    return std::span(track.Values).subspan(frame * track.Components, track.Components);
}

void KeepFrames(Track& track, std::size_t count)
{
    track.Frames.resize(count);
    track.Values.resize(count * track.Components);
}

bool IsConstant(const Track& track)
{
    for (std::size_t i = 1; i < track.Frames.size(); ++i) {
        if (!std::ranges::equal(RowAt(track, 0), RowAt(track, i))) {
            return false;
        }
    }
    return true;
}

/// A rotation and its negative are the same; neighbours get the signs that are near each other.
void FitSigns(Track& track)
{
    for (std::size_t i = 1; i < track.Frames.size(); ++i) {
        float product = 0;
        for (std::size_t k = 0; k < 4; ++k) {
            product += track.Values[4 * (i - 1) + k] * track.Values[4 * i + k];
        }
        for (std::size_t k = 0; product < 0 && k < 4; ++k) {
            track.Values[4 * i + k] = -track.Values[4 * i + k];
        }
    }
}

/// Nothing to move: the one value is that at rest.
bool IsAtRest(Track& track, std::span<const float> atRest)
{
    if (!IsConstant(track)) {
        return false;
    }
    KeepFrames(track, 1);
    return std::ranges::equal(RowAt(track, 0), atRest);
}

} // namespace

Track ClipBuilder::Sample(std::span<const Curve* const> curves, int frameSize, std::size_t components,
                          TrackForm form, const TrackFunction& function)
{
    Track track;
    track.Components = components;
    track.IsStep = IsEvery(curves, KeyKind::Step);
    for (const Curve* const curve : curves) {
        std::ranges::transform(curve->Keys, std::back_inserter(track.Frames), &Key::Frame);
    }
    const bool isStraight = form == TrackForm::Linear && IsEvery(curves, KeyKind::Linear);
    const std::size_t between = track.IsStep || isStraight ? 0 : static_cast<std::size_t>(frameSize) + 1;
    const std::size_t needed = (between + track.Frames.size()) * components;
    if (needed <= m_scene.SamplesLeft) {
        for (std::size_t i = 0; i < between; ++i) {
            track.Frames.push_back(static_cast<float>(i));
        }
    } else if (!m_isLong) {
        m_isLong = true;
        m_scene.Warnings.push_back(
            "\"" + m_name + "\": the animation is too long; curves are joined by lines at their keys.");
    }
    Order(track.Frames);
    track.Values.resize(track.Frames.size() * components);
    m_scene.SamplesLeft -= std::min(m_scene.SamplesLeft, track.Values.size());
    for (std::size_t i = 0; i < track.Frames.size(); ++i) {
        function(track.Frames[i], std::span(track.Values).subspan(i * components, components));
    }
    return track;
}

void ClipBuilder::MoveNode(int node, std::string_view path, Track track, std::span<const float> atRest)
{
    if (path == "rotation") {
        FitSigns(track);
    }
    if (!IsAtRest(track, atRest)) {
        MakeTimesRise(track);
        const int output = m_scene.Writer.AddFloats(track.Values, track.Components, BufferUse::Data);
        AddChannel({{"node", node}, {"path", path}}, track, output);
    }
}

void ClipBuilder::MovePointer(const std::string& pointer, Track track, std::span<const float> atRest)
{
    if (!IsAtRest(track, atRest)) {
        MakeTimesRise(track);
        const int output = m_scene.Writer.AddFloats(track.Values, track.Components, BufferUse::Data);
        AddChannel(PointerTarget(pointer), track, output);
    }
}

void ClipBuilder::SwitchPointer(const std::string& pointer, const BoolCurve& curve, bool atRest)
{
    Track track;
    track.IsStep = true;
    std::ranges::transform(curve.Keys, std::back_inserter(track.Frames), &BoolKey::Frame);
    Order(track.Frames);
    for (const float frame : track.Frames) {
        track.Values.push_back(EvaluateBoolCurve(curve, frame) ? 1.0F : 0.0F);
    }
    const float rest = atRest ? 1 : 0;
    if (IsAtRest(track, {&rest, 1})) {
        return;
    }
    MakeTimesRise(track);
    const std::vector<std::uint32_t> values(track.Values.begin(), track.Values.end());
    AddChannel(PointerTarget(pointer), track, m_scene.Writer.AddIntegers(values, 1, BufferUse::Data, true));
}

void ClipBuilder::Finish()
{
    if (!m_channels.empty()) {
        m_scene.Writer.Add(
            "animations",
            {{"name", m_name}, {"channels", std::move(m_channels)}, {"samplers", std::move(m_samplers)}});
    }
}

Json ClipBuilder::PointerTarget(const std::string& pointer)
{
    return {{"path", "pointer"}, {"extensions", {{"KHR_animation_pointer", {{"pointer", pointer}}}}}};
}

void ClipBuilder::AddChannel(Json target, const Track& track, int output)
{
    if (target.contains("extensions")) {
        m_scene.Writer.UseExtension("KHR_animation_pointer");
    }
    const int times = AddTimes(track);
    const auto [place, isNew] = m_samplerPlaces.try_emplace({times, output, track.IsStep ? 1 : 0},
                                                            static_cast<int>(m_samplers.size()));
    if (isNew) {
        m_samplers.push_back(
            {{"input", times}, {"interpolation", track.IsStep ? "STEP" : "LINEAR"}, {"output", output}});
    }
    m_channels.push_back({{"sampler", place->second}, {"target", std::move(target)}});
}

int ClipBuilder::AddTimes(const Track& track)
{
    std::vector<float> times;
    times.reserve(track.Frames.size());
    for (const float frame : track.Frames) {
        times.push_back(static_cast<float>(static_cast<double>(frame) / m_framesPerSecond));
    }
    return m_scene.Writer.AddFloats(times, 1, BufferUse::Data, true);
}

/// Single precision may give frames that are near each other one time, and a tiny rate endless ones: only
/// frames whose times rise stay.
void ClipBuilder::MakeTimesRise(Track& track) const
{
    std::size_t count = 0;
    float before = -1;
    for (std::size_t i = 0; i < track.Frames.size(); ++i) {
        const float time = static_cast<float>(static_cast<double>(track.Frames[i]) / m_framesPerSecond);
        if (!(time > before) || !std::isfinite(time)) {
            continue;
        }
        before = time;
        track.Frames[count] = track.Frames[i];
        std::ranges::copy(RowAt(track, i),
                          track.Values.begin() + static_cast<std::ptrdiff_t>(count * track.Components));
        ++count;
    }
    KeepFrames(track, count);
}

} // namespace tq4x::reader
