#pragma once

#include "Compare.h"
#include "RoundTripSettings.h"
#include "support/TemporaryFolder.h"

#include <cstdint>

namespace tq4x::test
{

/// A scene of the host by chance, and the options of its export. The same seed gives the same scene. It holds
/// what the host has: trees of nulls, bones, meshes, cameras and lights with repeated names, turned,
/// mirrored, hidden and moving; polygons with split and shared normals, colours, coordinates and attributes
/// of the user; skins; materials of all shaders with pictures of several kinds. Nothing in it makes the
/// exporter give up an object.
class RandomScene
{
public:
    /// Replaces the host's scene.
    explicit RandomScene(std::uint32_t seed);

    const RoundTripSettings& Settings() const { return m_settings; }

    const SourcePictures& Pictures() const { return m_pictures; }

private:
    TemporaryFolder m_folder; ///< of pictures in files
    RoundTripSettings m_settings;
    SourcePictures m_pictures;
};

} // namespace tq4x::test
