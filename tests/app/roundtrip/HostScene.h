#pragma once

#include "ApproxMatrix.h"
#include "RoundTripSettings.h"

#include <xsi_geometryaccessor.h>
#include <xsi_light.h>
#include <xsi_material.h>
#include <xsi_parameter.h>
#include <xsi_shader.h>
#include <xsi_texture.h>
#include <xsi_x3dobject.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tq4x::test
{

/// A sampled frame: the host's and the files'.
struct SampledFrame
{
    double Host = 0.0;
    float File = 0.0f;
};

/// An image of a material in the order in which the exporter takes them.
struct HostStage
{
    XSI::Texture Texture;
    std::string CoordinateSet;
    std::string ImageFile; ///< path of the clip's picture
    bool IsNormalMap = false;
    std::map<int, std::string>
        Pictures; ///< paths by the frame from which on they are seen; the first from 0 on
};

struct HostMaterial
{
    XSI::Material Object;
    std::string Name; ///< as the files name it
    XSI::Shader Surface;
    std::vector<HostStage> Stages;
    std::vector<int> Users; ///< nodes with polygons of this material, in order
};

struct HostNode
{
    XSI::X3DObject Object;
    std::string Name; ///< as the files name it
    int Parent = -1;  ///< -1: the export's root
    bool IsMesh = false;
    std::vector<int> Materials;      ///< by number of the mesh's list; -1 for one without polygons
    std::vector<std::string> UvSets; ///< the coordinate sets in use, in the order of their streams
};

/// What an export of the whole scene has to write, read from the host's objects: the nodes in the order of
/// the scene, the names that repeated ones get, the materials in the order in which they are met.
struct HostScene
{
    std::vector<HostNode> Nodes;
    std::vector<HostMaterial> Materials;
    std::string SyntheticRoot; ///< the name of the node above all roots; empty if there is one root
    std::string AmbientLight;  ///< the name of the scene's ambient light
    double FirstFrame = 0.0;   ///< the host's
    double LastFrame = 0.0;
    std::vector<SampledFrame> Frames;

    /// -1 for an object that is not in the scene.
    int FindNode(const XSI::CRef& object) const;
    int FindMaterial(const XSI::CRef& object) const;
};

HostScene ReadHostScene(const RoundTripSettings& settings);

/// A number or flag of an object at a frame.
double NumberAt(const XSI::ProjectItem& item, const char* name, double frame);
bool FlagAt(const XSI::ProjectItem& item, const char* name, double frame, bool otherwise = false);

/// `viewvis`; invalid for an object that has none.
XSI::Parameter VisibilityOf(const XSI::X3DObject& object);

XSI::CGeometryAccessor GeometryOf(const XSI::X3DObject& object);

/// The parameter of a projection of a mesh's coordinate set; invalid if the set has none.
XSI::Parameter ProjectionOf(const XSI::X3DObject& mesh, const std::string& set, const char* name);

bool IsHierarchical(const XSI::X3DObject& object);

XSI::MATH::CMatrix4 GlobalAt(const XSI::X3DObject& object, double frame);
XSI::MATH::CMatrix4 LocalAt(const XSI::X3DObject& object, double frame);

/// The pose in which a skin is bound to the object, or in which its mesh is stored; nothing for other
/// objects.
std::optional<XSI::MATH::CMatrix4> BindPoseOf(const HostNode& node);

/// The shader behind a port, through the output by which it may be connected.
XSI::CRef SourceOf(const XSI::Parameter& port);

/// The characters that names of materials and textures may have; others become "_".
std::string LegalName(const std::string& text);

/// The file name without folder and extension.
std::string BaseName(const std::string& path);

} // namespace tq4x::test
