#pragma once

#include "ExpectedSkeleton.h"
#include "HostScene.h"
#include "ReadDocument.h"
#include "RoundTripSettings.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tq4x::test
{

/// The files of one export, read back.
struct WrittenScene
{
    std::filesystem::path Folder;
    reader::Model Model;
    reader::Document Skeletal; ///< its animation is absent where nothing moves; so with the next two
    reader::Document Materials;
    reader::Document Visibility;
    reader::Stage Cameras;
    reader::Stage Lights;
    reader::Stage Environment;
};

/// A picture that a texture was made of, for those that the host leaves to the exporter.
struct SourcePicture
{
    int Width = 0;
    int Height = 0;
    std::vector<std::uint8_t> Pixels; ///< R, G, B, A in rows from the top; empty: see `Encoded`
    bool HasAlpha = false;
    std::string Format;                ///< of a picture that a texture tool has encoded
    std::vector<std::uint8_t> Encoded; ///< all levels, as they are to stand in the file
    int LevelCount = 1;
};

using SourcePictures = std::map<std::string, SourcePicture>; ///< by path

/// Two sides of a comparison.
struct RoundTrip
{
    const RoundTripSettings& Settings;
    const HostScene& Host;
    const ExpectedSkeleton& Skeleton;
    const WrittenScene& Written;
    const SourcePictures& Pictures;
};

// Each compares one section of the files with the host's objects. What is compared is entered in the table of
// deviations; whatever is off by more than its bound is a failure.

/// Names, parents, bind and rest poses of all nodes.
void CompareSkeleton(const RoundTrip& trip);

/// Triangle by triangle: positions, normals, colours, coordinates, attributes of the user and weights of all
/// corners, and the boxes around each shape.
void CompareGeometry(const RoundTrip& trip);

/// Colours, blending, culling, lighting, coordinates and samplers.
void CompareMaterials(const RoundTrip& trip);

/// The pixels of every texture that a material refers to.
void CompareTextures(const RoundTrip& trip);

// At every sampled frame.

void CompareSkeletalAnimation(const RoundTrip& trip);
void CompareMaterialAnimation(const RoundTrip& trip);
void CompareVisibility(const RoundTrip& trip);
void CompareCameras(const RoundTrip& trip);
void CompareLights(const RoundTrip& trip);

} // namespace tq4x::test
