#pragma once

#include "collect/UvRecord.h"
#include "geometry/VertexAttributePool.h"
#include "math/Vector.h"

#include <xsi_geometryaccessor.h>

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tq4x
{

/// What keeps a mesh from being collected: a message, already reported.
enum class [[nodiscard]] ReadResult{
    Done,
    GivenUp,
};

/// Values of one attribute of the user, per node.
struct UserAttribute
{
    std::string Name;
    std::int32_t Dimension = 4;
    tq4x::QuantizedMode Mode = tq4x::QuantizedMode::Byte;
    std::vector<Vector4> Values;
};

/// A coordinate set of a mesh.
struct CoordinateSet
{
    UvRecord Record;
    std::vector<Vector2> Values; ///< per node, v upwards
};

/// What a polygon mesh holds beside its triangles. Lists are per node, except the positions.
struct MeshAttributes
{
    std::vector<Vector3> Positions; ///< per vertex
    std::vector<Vector3> Normals;
    std::string ColorName;
    std::int32_t ColorDimension = 4;
    std::vector<Vector4> Colors; ///< empty: no colours
    std::array<std::optional<UserAttribute>, 3> UserAttributes;
    std::map<std::string, CoordinateSet> CoordinateSets; ///< by name
};

/// Reads positions, normals, colours, user attributes and coordinates of a mesh. Messages carry `name`. A
/// list that has not one value for each node gives the mesh up.
ReadResult ReadMeshAttributes(const XSI::CGeometryAccessor& accessor, const std::string& name,
                              bool invertColorAlpha, MeshAttributes& attributes);

} // namespace tq4x
