#include "gltf/AnimationTrack.h"
#include "gltf/CoordinateSets.h"
#include "gltf/MeshContent.h"
#include "gltf/OpenDocument.h"
#include "gltf/PictureSource.h"
#include "gltf/SceneError.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace tq4x::gltf;

namespace
{

// So that a file of zeros costs a fuzzer no more than moments.
constexpr std::uint64_t CornerBudget = 100'000;

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

/// Every index of a mesh points at something, and no number is none.
void CheckMesh(const MeshContent& content)
{
    const std::size_t vertexCount = content.Positions.size() / 3;
    Require(content.Normals.size() == 3 * vertexCount);
    Require(content.TriangleMaterials.size() * 3 == content.Triangles.size());
    for (const std::int32_t vertex : content.Triangles)
        Require(vertex >= 0 && static_cast<std::size_t>(vertex) < vertexCount);
    for (const double position : content.Positions)
        Require(std::isfinite(position));
    for (const VertexValues& values : content.Coordinates)
        Require(values.Values.size() == 2 * vertexCount);
    for (const VertexValues& values : content.Colors)
        Require(values.Values.size() == 4 * vertexCount);
}

void ReadMeshes(const Document& document)
{
    const CoordinateSets sets = BuildCoordinateSets(document, nullptr);
    std::uint64_t corners = MaxCorners - CornerBudget;
    for (std::size_t mesh = 0; mesh < document.Meshes.size(); ++mesh) {
        try {
            Notes notes;
            CheckMesh(BuildMeshContent(document, mesh, 2, sets, corners, notes));
        } catch (const SceneError&) {
            continue;
        }
    }
}

void ReadAnimations(const Document& document)
{
    for (const Animation& animation : document.Animations) {
        for (const AnimationChannel& channel : animation.Channels) {
            try {
                std::size_t repeated = 0;
                const AnimationTrack track = ReadTrack(document, animation.Samplers[channel.Sampler],
                                                       channel.Property, 30.0, "", repeated);
                double values[4] = {};
                for (const double frame : {-1.0, 0.0, 0.5, 1e9})
                    if (!track.Frames.empty())
                        EvaluateTrack(track, frame, values);
            } catch (const SceneError&) {
                continue;
            }
        }
    }
}

} // namespace

/// A file is opened or refused with a reason; what was opened can be used.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const OpenedDocument opened = OpenDocument(Bytes(data, data + size), AssetFolders{"/nonexistent", {}});
    Require(opened.Content.has_value() == opened.Error.empty());
    if (!opened.Content)
        return 0;
    ReadMeshes(*opened.Content);
    ReadAnimations(*opened.Content);
    for (std::size_t i = 0; i < opened.Content->Images.size(); ++i)
        static_cast<void>(ReadPicture(*opened.Content, i));
    return 0;
}
