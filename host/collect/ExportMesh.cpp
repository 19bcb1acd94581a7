#include "collect/ExportMesh.h"

#include "collect/ExportMaterial.h"
#include "collect/FiniteValues.h"
#include "collect/OpenGeometry.h"
#include "collect/ReadEnvelope.h"
#include "export/Each.h"
#include "export/ExportContext.h"
#include "geometry/AddPolygon.h"
#include "geometry/ChooseQuantization.h"
#include "geometry/ComputeBoneCapacity.h"
#include "geometry/EditMesh.h"
#include "geometry/GenerateTangents.h"
#include "geometry/Mesh.h"
#include "math/Scalar.h"
#include "pipeline/ExportOptions.h"
#include "pipeline/MessageLog.h"
#include "scene/NodeTree.h"

#include <xsi_geometryaccessor.h>
#include <xsi_longarray.h>

#include <algorithm>

namespace tq4x
{
namespace
{

constexpr std::size_t MostCoordinateSets = 3;
constexpr const char* TangentShader = "Softimage.material-ward.1.0";

VertexSlot SlotAt(VertexSlot first, std::size_t number)
{
    return static_cast<VertexSlot>(IndexOf(first) + number);
}

/// Index lists of a triangulated mesh.
struct TriangleIndices
{
    XSI::CLongArray Vertices; ///< three per triangle
    XSI::CLongArray Nodes;    ///< three per triangle
    XSI::CLongArray Polygons; ///< one per triangle
};

bool IsInRange(const XSI::CLongArray& indices, std::size_t count)
{
    for (const LONG index : Each(indices))
        if (index < 0 || static_cast<std::size_t>(index) >= count)
            return false;
    return true;
}

bool ReadTriangles(const XSI::CGeometryAccessor& accessor, std::size_t vertexCount, std::size_t nodeCount,
                   std::size_t polygonCount, TriangleIndices& triangles)
{
    const bool isRead = accessor.GetTriangleVertexIndices(triangles.Vertices).Succeeded() &&
                        accessor.GetTriangleNodeIndices(triangles.Nodes).Succeeded() &&
                        accessor.GetPolygonTriangleIndices(triangles.Polygons).Succeeded();
    const LONG corners = triangles.Vertices.GetCount();
    return isRead && corners % 3 == 0 && triangles.Nodes.GetCount() == corners &&
           triangles.Polygons.GetCount() == corners / 3 && IsInRange(triangles.Vertices, vertexCount) &&
           IsInRange(triangles.Nodes, nodeCount) && IsInRange(triangles.Polygons, polygonCount);
}

/// Which materials of the list have a polygon. Indices that point nowhere are passed over.
std::vector<bool> FindUsedMaterials(const XSI::CLongArray& indices, LONG materialCount)
{
    std::vector<bool> isUsed(static_cast<std::size_t>(materialCount), false);
    for (const LONG index : Each(indices))
        if (index >= 0 && index < materialCount)
            isUsed[static_cast<std::size_t>(index)] = true;
    return isUsed;
}

/// True if the colours have an alpha and one of them lets light through.
bool HasTranslucency(const MeshAttributes& attributes)
{
    constexpr float leastTranslucency = 0.0001f;
    return attributes.ColorDimension == 4 &&
           std::any_of(attributes.Colors.begin(), attributes.Colors.end(),
                       [](const Vector4& color) { return 1.0f - color.W > leastTranslucency; });
}

/// A corner with the vertex's position and everything else by node.
PolygonCorner MakeCorner(const Mesh& mesh, std::int32_t vertex, std::int32_t node)
{
    PolygonCorner corner;
    for (std::size_t slot = 0; slot < VertexSlotCount; ++slot)
        if (mesh.AttributeFlags[slot])
            corner.Slots[slot] = node;
    corner[VertexSlot::Position] = vertex;
    if (mesh.SkinWeights)
        corner.VertexIndex = vertex;
    return corner;
}

} // namespace

ExportMesh::ExportMesh(ExportContext& context, const XSI::CRef& object) : ExportNode(context, object) {}

ExportMesh::~ExportMesh() = default;

void ExportMesh::CreateMaterials()
{
    const XSI::CGeometryAccessor accessor = OpenGeometry(XSI::X3DObject(Object));
    const XSI::CRefArray materials = accessor.GetMaterials();
    XSI::CLongArray indices;
    if (!accessor.GetPolygonMaterialIndices(indices).Succeeded())
        return;
    const std::vector<bool> isUsed = FindUsedMaterials(indices, materials.GetCount());
    for (LONG i = 0; i < materials.GetCount(); ++i)
        if (isUsed[static_cast<std::size_t>(i)] && materials[i].IsValid())
            FindOrCreateMaterial(Context, materials[i]);
}

std::vector<XSI::CRef> ExportMesh::CollectInfluenceObjects() const
{
    const XSI::Envelope envelope = FindEnvelope(XSI::X3DObject(Object));
    std::vector<XSI::CRef> objects;
    for (const XSI::CRef& deformer : Each(envelope.GetDeformers()))
        objects.push_back(deformer);
    return objects;
}

int ExportMesh::FindCoordinateSetNumber(const std::string& name) const
{
    const auto found = std::find(m_usedSets.begin(), m_usedSets.end(), name);
    return found == m_usedSets.end() ? -1 : static_cast<int>(found - m_usedSets.begin());
}

const UvRecord* ExportMesh::FindUvRecord(const std::string& name) const
{
    const auto found = m_attributes.CoordinateSets.find(name);
    return found == m_attributes.CoordinateSets.end() ? nullptr : &found->second.Record;
}

bool ExportMesh::Export()
{
    if (!ExportNode::Export())
        return false;
    if (Collect() == ReadResult::Done) {
        SetMesh(TargetBone(), m_mesh.get());
        Context.Content.Model.Meshes.push_back(std::move(m_mesh));
        for (ExportMaterial* material : m_materials)
            material->Meshes.push_back(this);
    }
    return true;
}

ReadResult ExportMesh::Collect()
{
    const ExportOptions& options = CurrentOptions();
    const XSI::CGeometryAccessor accessor = OpenGeometry(XSI::X3DObject(Object));
    m_mesh = std::make_unique<Mesh>();
    m_mesh->BoneCapacity = static_cast<std::uint32_t>(
        ComputeBoneCapacity(options.NonUniformScale, options.MaxReservedUniformRegisters));
    m_mesh->NodeName = TargetBone().Name;
    m_mesh->Pool = MakeVertexAttributePool(ChooseQuantization(options));

    const bool isRead =
        ReadMeshAttributes(accessor, TargetBone().Name, options.SoftimageInvertVertexColorAlpha,
                           m_attributes) == ReadResult::Done &&
        ReadMaterials(accessor) == ReadResult::Done && UseCoordinateSets() == ReadResult::Done &&
        ReadSkin() == ReadResult::Done;
    if (!isRead)
        return ReadResult::GivenUp;
    CheckFinite(AreFinite(m_attributes));
    FillPool();
    if (AddTriangles(accessor) != ReadResult::Done)
        return ReadResult::GivenUp;
    m_polygonMaterials = {};
    MakeTangents();
    return ReadResult::Done;
}

/// Which material each polygon has, and the materials in use by creation index.
ReadResult ExportMesh::ReadMaterials(const XSI::CGeometryAccessor& accessor)
{
    const XSI::CRefArray materials = accessor.GetMaterials();
    const auto count = static_cast<std::size_t>(materials.GetCount());
    XSI::CLongArray indices;
    bool isComplete = accessor.GetPolygonMaterialIndices(indices).Succeeded() && IsInRange(indices, count);
    const std::vector<bool> isUsed = FindUsedMaterials(indices, materials.GetCount());
    std::vector<std::uint32_t> numbers(count, 0);
    for (std::size_t i = 0; isComplete && i < count; ++i) {
        if (!isUsed[i])
            continue;
        ExportMaterial* material = FindMaterial(Context, materials[static_cast<LONG>(i)]);
        isComplete = material != nullptr;
        if (!isComplete)
            break;
        numbers[i] = material->MaterialIndex();
        m_materials.push_back(material);
    }
    if (!isComplete) {
        ReportMessage(MessageCode::InternalError, TargetBone().Name);
        return ReadResult::GivenUp;
    }
    const auto byIndex = [](const ExportMaterial* a, const ExportMaterial* b) {
        return a->MaterialIndex() < b->MaterialIndex();
    };
    std::sort(m_materials.begin(), m_materials.end(), byIndex);
    m_materials.erase(std::unique(m_materials.begin(), m_materials.end()), m_materials.end());
    m_polygonMaterials.reserve(static_cast<std::size_t>(indices.GetCount()));
    for (const LONG index : Each(indices))
        m_polygonMaterials.push_back(numbers[static_cast<std::size_t>(index)]);
    return ReadResult::Done;
}

/// Numbers the coordinate sets by their first use in the materials' stages.
ReadResult ExportMesh::UseCoordinateSets()
{
    for (ExportMaterial* material : m_materials)
        for (const TextureStage& stage : material->Stages) {
            if (stage.Frames.empty())
                continue; // no mapper will come of it
            const std::string set = stage.TextureSpaceId.GetAsciiString();
            if (UseCoordinateSet(set, stage.Name.GetAsciiString(), *material) != ReadResult::Done)
                return ReadResult::GivenUp;
            if (m_usedSets.size() > MostCoordinateSets) {
                ReportMessage(MessageCode::TooManyTexturesOnMesh, TargetBone().Name);
                return ReadResult::GivenUp;
            }
        }
    return ReadResult::Done;
}

ReadResult ExportMesh::UseCoordinateSet(const std::string& name, const std::string& texture,
                                        ExportMaterial& material)
{
    if (!m_attributes.CoordinateSets.contains(name)) {
        PrintMessage("Can't get UV data of Texture(" + texture + ") at Material(" + material.TargetName() +
                         ").",
                     Severity::Error);
        return ReadResult::GivenUp;
    }
    if (FindCoordinateSetNumber(name) < 0)
        m_usedSets.push_back(name);
    if (m_tangentSet < 0 && material.ProgID == TangentShader)
        m_tangentSet = FindCoordinateSetNumber(name);
    return ReadResult::Done;
}

ReadResult ExportMesh::ReadSkin()
{
    const XSI::Envelope envelope = FindEnvelope(XSI::X3DObject(Object));
    if (!envelope.IsValid())
        return ReadResult::Done;
    std::unique_ptr<SkinWeightTable> table;
    const ReadResult result =
        ReadEnvelope(Context, envelope, Instances, m_attributes.Positions.size(), TargetBone().Name, table);
    if (result == ReadResult::Done)
        SetSkinWeights(*m_mesh, std::move(table));
    return result;
}

/// Raises the flags and moves the values into the pool; the coordinate sets keep their projections.
void ExportMesh::FillPool()
{
    VertexAttributePool& pool = m_mesh->Pool;
    m_hasColors = !m_attributes.Colors.empty();
    m_hasTranslucentColors = HasTranslucency(m_attributes);
    SetAttributeFlag(*m_mesh, VertexSlot::Position, true);
    SetAttributeFlag(*m_mesh, VertexSlot::Normal, true);
    SetAttributeFlag(*m_mesh, VertexSlot::Color, m_hasColors);
    pool[VertexSlot::Position].Edit<Vector3>() = std::move(m_attributes.Positions);
    pool[VertexSlot::Normal].Edit<Vector3>() = std::move(m_attributes.Normals);
    pool[VertexSlot::Color].Dimension = m_attributes.ColorDimension;
    pool[VertexSlot::Color].Edit<Vector4>() = std::move(m_attributes.Colors);
    for (std::size_t number = 0; number < m_usedSets.size(); ++number) {
        const VertexSlot slot = SlotAt(VertexSlot::TextureCoordinate0, number);
        std::vector<Vector2> values = std::move(m_attributes.CoordinateSets.at(m_usedSets[number]).Values);
        for (Vector2& value : values)
            value = {SnapToZero(value.X), SnapToZero(value.Y)};
        SetAttributeFlag(*m_mesh, slot, true);
        pool[slot].Edit<Vector2>() = std::move(values);
    }
    for (std::size_t number = 0; number < m_attributes.UserAttributes.size(); ++number) {
        std::optional<UserAttribute>& attribute = m_attributes.UserAttributes[number];
        if (!attribute)
            continue;
        const VertexSlot slot = SlotAt(VertexSlot::UserAttribute0, number);
        SetAttributeFlag(*m_mesh, slot, true);
        pool[slot].Dimension = attribute->Dimension;
        pool[slot].QuantizedMode = attribute->Mode;
        pool[slot].Edit<Vector4>() = std::move(attribute->Values);
    }
}

ReadResult ExportMesh::AddTriangles(const XSI::CGeometryAccessor& accessor)
{
    const VertexAttributePool& pool = m_mesh->Pool;
    TriangleIndices triangles;
    if (!ReadTriangles(accessor, pool[VertexSlot::Position].Size(), pool[VertexSlot::Normal].Size(),
                       m_polygonMaterials.size(), triangles)) {
        ReportMessage(MessageCode::InternalError, TargetBone().Name);
        return ReadResult::GivenUp;
    }
    std::array<PolygonCorner, 3> corners;
    for (LONG triangle = 0; triangle < triangles.Polygons.GetCount(); ++triangle) {
        for (LONG corner = 0; corner < 3; ++corner)
            corners[static_cast<std::size_t>(corner)] = MakeCorner(
                *m_mesh, triangles.Vertices[triangle * 3 + corner], triangles.Nodes[triangle * 3 + corner]);
        const auto polygon = static_cast<std::size_t>(triangles.Polygons[triangle]);
        if (AddPolygon(*m_mesh, m_polygonMaterials[polygon], PolygonOf(corners)).Status != 0) {
            ReportMessage(MessageCode::PolygonBoneSizeOver, TargetBone().Name);
            return ReadResult::GivenUp;
        }
    }
    return ReadResult::Done;
}

void ExportMesh::MakeTangents()
{
    if (m_tangentSet < 0)
        return;
    const VertexSlot slot = SlotAt(VertexSlot::TextureCoordinate0, static_cast<std::size_t>(m_tangentSet));
    if (GenerateTangents(*m_mesh, slot).Status != 0)
        ReportMessage(MessageCode::CannotGetTangentUv, TargetBone().Name);
}

} // namespace tq4x
