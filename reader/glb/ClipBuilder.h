#pragma once

#include <array>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ReadAnimation.h"
#include "glb/GlbScene.h"

namespace tq4x::reader
{

/// A value over time.
struct Track
{
    std::vector<float> Frames; ///< rising, none below 0
    std::size_t Components = 1;
    std::vector<float> Values; ///< `Components` for each frame
    bool IsStep = false;       ///< a value holds until the next frame, else values are joined by lines
};

/// How the value that is sampled follows from its curves.
enum class TrackForm
{
    Linear, ///< straight curves give straight values: they need no frames between their keys
    Curved, ///< such as rotations
};

/// What is sampled at a frame, `Components` numbers.
using TrackFunction = std::function<void(float frame, std::span<float> values)>;

/// One animation of the glTF file: everything that moves in the files of one base name.
class ClipBuilder
{
public:
    ClipBuilder(std::string name, double framesPerSecond, GlbScene& scene)
        : m_name(std::move(name)),
          m_framesPerSecond(framesPerSecond),
          m_scene(scene)
    {}

    /// Samples a value at the keys of its curves and, where they are not straight, at every frame from 0 to
    /// `frameSize`. Stepped curves give a stepped track. A clip that is too long for memory is sampled at the
    /// keys alone, with a warning.
    [[nodiscard]] Track Sample(std::span<const Curve* const> curves, int frameSize, std::size_t components,
                               TrackForm form, const TrackFunction& function);

    /// Lets a node's "translation", "rotation" or "scale" move. Of a track that never changes one key
    /// remains, and nothing where that is the value at rest. Rotations are quaternions; signs are made to
    /// fit.
    void MoveNode(int node, std::string_view path, Track track, std::span<const float> atRest);

    /// The same for what a JSON pointer leads to.
    void MovePointer(const std::string& pointer, Track track, std::span<const float> atRest);

    /// The same for something that is true or false.
    void SwitchPointer(const std::string& pointer, const BoolCurve& curve, bool atRest);

    /// Adds the animation to the file if something moves.
    void Finish();

private:
    void AddChannel(Json target, const Track& track, int output);
    [[nodiscard]] int AddTimes(const Track& track);
    void MakeTimesRise(Track& track) const;
    [[nodiscard]] static Json PointerTarget(const std::string& pointer);

    std::string m_name;
    double m_framesPerSecond = 30;
    GlbScene& m_scene;
    Json m_channels = Json::array();
    Json m_samplers = Json::array();
    std::map<std::array<int, 3>, int> m_samplerPlaces; ///< by times, values and interpolation
    bool m_isLong = false;
};

} // namespace tq4x::reader
