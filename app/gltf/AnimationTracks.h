#pragma once

#include <functional>
#include <map>
#include <memory>
#include <tuple>

#include "gltf/AnimationTrack.h"

namespace tq4x::gltf
{

/// The tracks of one animation, by what they move. Shared with whoever evaluates them later.
class AnimationTracks
{
public:
    using Track = std::shared_ptr<const AnimationTrack>;

    AnimationTracks() = default;

    /// Reads all channels of an animation. Channels without keys and second channels of one target are left
    /// out with a note. Throws `SceneError` as `ReadTrack` does.
    AnimationTracks(const Document& document, std::size_t animation, double framesPerSecond, Notes& notes);

    /// Null where nothing moves it.
    [[nodiscard]] Track Find(AnimatedProperty property, std::size_t object,
                             TextureSlot slot = TextureSlot::BaseColor) const;

    /// Frame of the last key of all tracks; 0 without any.
    [[nodiscard]] double LastFrame() const { return m_lastFrame; }

private:
    using Target = std::tuple<AnimatedProperty, std::size_t, TextureSlot>;

    std::map<Target, Track> m_tracks;
    double m_lastFrame = 0.0;
};

/// The name of an animation, "animation3" for one without.
[[nodiscard]] std::string AnimationName(const Document& document, std::size_t animation);

/// One component of a track as a function of the frame; it keeps the track alive.
[[nodiscard]] std::function<double(double frame)> ComponentOf(AnimationTracks::Track track,
                                                              std::size_t component);

} // namespace tq4x::gltf
