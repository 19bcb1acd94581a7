#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Finding.h"
#include "ReadModel.h"
#include "cli/Console.h"

namespace tq4x::preview
{

/// A file that the export wrote.
struct PreviewFile
{
    std::string Path; ///< relative to the output folder
    std::string Kind; ///< "model", "texture", ...
    std::uintmax_t Size = 0;
};

/// A vertex stream as it stands in the file.
struct PreviewStream
{
    std::string Usage;
    std::string Mode; ///< "Float", "Short", ...
    std::size_t Dimension = 0;
    bool IsConstant = false;
};

/// A shape drawn with a material on a node.
struct PreviewMesh
{
    std::string Node;
    std::string Material;
    bool IsVisible = true;
    std::size_t Vertices = 0;
    std::size_t Triangles = 0;
    std::size_t Sets = 0;
    std::string Skinning; ///< "None", "RigidSkinning", "SmoothSkinning"
    std::vector<PreviewStream> Streams;
    /// In the units of the positions. Nothing where vertices stand in the spaces of several bones.
    std::optional<reader::OrientedBoundingBox> Box;
};

struct PreviewMaterial
{
    std::string Name;
    reader::Color Diffuse = {};
    std::vector<std::string> Textures; ///< names, one for each mapper
    std::string Culling;
    std::string Blend;
    bool HasAlphaTest = false;
    bool IsLit = false;
    std::size_t Users = 0; ///< meshes that are drawn with it
};

/// What the 3D view shows: a model, or what was written without one.
struct PreviewScene
{
    std::vector<PreviewMesh> Meshes;
    std::vector<PreviewMaterial> Materials;
    std::vector<std::string> Bones;
    std::string Glb;                ///< bytes of a binary glTF file; empty: nothing to show, or `Problem`
    std::string Problem;            ///< a sentence: why there is no view
    std::vector<std::string> Notes; ///< what the view leaves out
};

struct PreviewTexture
{
    std::string Name;
    std::string File;
    int Width = 0;
    int Height = 0;
    bool IsCube = false;
    std::string Format;
    std::size_t Levels = 0;
    std::size_t Bytes = 0; ///< of all levels and faces, as the console holds them
    std::string Thumbnail; ///< bytes of a PNG file; empty: the format can't be shown
};

struct PreviewClip
{
    std::string Name; ///< as the clips of the view are named
    std::string Kind; ///< "bones", "materials", "visibility", "camera", "light"
    std::string File;
    int Frames = 0; ///< length; the first frame is 0
    bool IsLoop = false;
    std::size_t Members = 0; ///< things that move
};

/// A camera or a light.
struct PreviewStageObject
{
    std::string Name;
    std::string File;
    std::string Facts; ///< "perspective, 45° high, 0.1 to 1000"
};

/// All that the page of an export tells.
struct PreviewData
{
    std::string Program;
    std::string Name; ///< of the output files
    std::string Scene;
    std::string Folder;
    std::string Author;
    std::string Date;
    int ExitCode = 0;
    float FramesPerSecond = 30;
    std::vector<PreviewFile> Files;
    std::vector<cli::Message> Messages;
    std::vector<reader::Finding> Findings; ///< of the check of the files; their paths are like the files' own
    std::vector<PreviewScene> Scenes;
    std::vector<PreviewTexture> Textures;
    std::vector<PreviewClip> Clips;
    std::vector<PreviewStageObject> Cameras;
    std::vector<PreviewStageObject> Lights;
};

} // namespace tq4x::preview
