#include "gltf/AnimationTracks.h"

#include <algorithm>
#include <array>

namespace tq4x::gltf
{
namespace
{

std::string PlaceOf(std::size_t animation, std::size_t sampler)
{
    return "/animations/" + std::to_string(animation) + "/samplers/" + std::to_string(sampler);
}

/// One note for each reason, since a character may have hundreds of such channels.
void AddUnread(const Animation& animation, const std::string& name, Notes& notes)
{
    std::vector<std::string> said;
    for (const Note& note : animation.Unread) {
        if (std::ranges::find(said, note.Text) == said.end()) {
            said.push_back(note.Text);
            notes.push_back({note.Severity, name, note.Text});
        }
    }
}

} // namespace

AnimationTracks::AnimationTracks(const Document& document, std::size_t animation, double framesPerSecond,
                                 Notes& notes)
{
    const Animation& source = document.Animations[animation];
    const std::string name = AnimationName(document, animation);
    AddUnread(source, name, notes);
    std::size_t repeatedCount = 0;
    for (const AnimationChannel& channel : source.Channels) {
        auto track = std::make_shared<AnimationTrack>(
            ReadTrack(document, source.Samplers[channel.Sampler], channel.Property, framesPerSecond,
                      PlaceOf(animation, channel.Sampler), repeatedCount));
        if (track->Frames.empty()) {
            notes.push_back({NoteSeverity::Warning, name, "A channel has no keys."});
            continue;
        }
        m_lastFrame = std::max(m_lastFrame, track->Frames.back());
        const Target target(channel.Property, channel.Object, channel.Slot);
        if (!m_tracks.try_emplace(target, std::move(track)).second) {
            notes.push_back(
                {NoteSeverity::Warning, name, "Two channels move the same value; the first one counts."});
        }
    }
    if (repeatedCount > 0) {
        notes.push_back(
            {NoteSeverity::Warning, name,
             std::to_string(repeatedCount) +
                 " keys repeat the time of the key before them; of each such group the last one counts."});
    }
}

AnimationTracks::Track AnimationTracks::Find(AnimatedProperty property, std::size_t object,
                                             TextureSlot slot) const
{
    const auto found = m_tracks.find(Target(property, object, slot));
    return found == m_tracks.end() ? nullptr : found->second;
}

std::string AnimationName(const Document& document, std::size_t animation)
{
    const std::string& name = document.Animations[animation].Name;
    return name.empty() ? "animation" + std::to_string(animation) : name;
}

std::function<double(double frame)> ComponentOf(AnimationTracks::Track track, std::size_t component)
{
    return [track = std::move(track), component](double frame) {
        std::array<double, 4> values{};
        EvaluateTrack(*track, frame, values);
        return values[component];
    };
}

} // namespace tq4x::gltf
