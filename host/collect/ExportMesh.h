#pragma once

#include "collect/ExportX3DObject.h"
#include "collect/ReadMeshAttributes.h"

#include <memory>
#include <string>
#include <vector>

namespace XSI
{
class CGeometryAccessor;
}

namespace tq4x
{

class ExportMaterial;
struct Mesh;

/// The collector of a polygon mesh: a node that carries a `Mesh`. A mesh that can't be collected is given up
/// with a message; its node stays and the export goes on.
class ExportMesh : public ExportNode
{
public:
    ExportMesh(ExportContext& context, const XSI::CRef& object);
    ~ExportMesh() override;

    CollectorKind GetKind() const override { return CollectorKind::Mesh; }

    bool IsKindOf(CollectorKind kind) const override
    {
        return kind == CollectorKind::Mesh || ExportNode::IsKindOf(kind);
    }

    bool Export() override;

    /// Makes the collectors of the materials that the polygons use, in the order of the host's list.
    void CreateMaterials();

    /// The deformers of the mesh's envelope; none for an unskinned mesh.
    std::vector<XSI::CRef> CollectInfluenceObjects() const;

    /// Number of a coordinate set in this mesh, by order of first use: slot 4 + number holds it. -1 if it
    /// isn't used.
    int FindCoordinateSetNumber(const std::string& name) const;

    /// Projection of a coordinate set, or nullptr.
    const UvRecord* FindUvRecord(const std::string& name) const;

    bool HasVertexColors() const { return m_hasColors; }

    /// True if the colours have an alpha and one of them lets light through.
    bool HasTranslucentVertexColors() const { return m_hasTranslucentColors; }

    std::vector<ExportX3DObject*> Influences; ///< collectors of the deformers, from the link check

private:
    ReadResult Collect();
    ReadResult ReadMaterials(const XSI::CGeometryAccessor& accessor);
    ReadResult UseCoordinateSets();
    ReadResult UseCoordinateSet(const std::string& name, const std::string& texture,
                                ExportMaterial& material);
    ReadResult ReadSkin();
    void FillPool();
    ReadResult AddTriangles(const XSI::CGeometryAccessor& accessor);
    void MakeTangents();

    std::vector<std::uint32_t> m_polygonMaterials; ///< per polygon, by creation index
    std::vector<ExportMaterial*> m_materials;      ///< in use, by creation index
    MeshAttributes m_attributes;
    std::vector<std::string> m_usedSets; ///< names of the coordinate sets in use, by number
    bool m_hasColors = false;
    bool m_hasTranslucentColors = false;
    int m_tangentSet = -1; ///< number of the set that tangents are made from
    std::unique_ptr<tq4x::Mesh> m_mesh;
};

} // namespace tq4x
