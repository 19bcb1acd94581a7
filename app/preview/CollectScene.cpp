#include "preview/CollectScene.h"

#include <algorithm>
#include <map>

#include "glb/AddVisibilityClip.h"

namespace tq4x::preview
{
namespace
{

std::size_t CountTriangles(const reader::Shape& shape)
{
    std::size_t count = 0;
    for (const reader::PrimitiveSet& set : shape.Sets) {
        for (const reader::IndexStream& stream : set.Streams) {
            count += reader::ListTriangles(stream).size();
        }
    }
    return count;
}

/// The file states boxes without the model's magnification, positions with it.
reader::OrientedBoundingBox Magnified(reader::OrientedBoundingBox box, float factor)
{
    for (std::size_t i = 0; i < 3; ++i) {
        box.CenterPosition[i] *= factor;
        box.Size[i] *= factor;
    }
    return box;
}

void DescribeShape(const reader::Shape& shape, float magnify, PreviewMesh& mesh)
{
    mesh.Vertices = shape.VertexCount;
    mesh.Triangles = CountTriangles(shape);
    mesh.Sets = shape.Sets.size();
    mesh.Skinning = shape.Sets.empty() ? "None" : shape.Sets[0].SkinningMode;
    for (const reader::VertexStream& stream : shape.Streams) {
        mesh.Streams.push_back({stream.Usage, stream.QuantizedMode, stream.Dimension, stream.IsConstant});
    }
    if (mesh.Skinning != "RigidSkinning") {
        mesh.Box = Magnified(shape.BoundingBox, magnify);
    }
}

PreviewMaterial DescribeMaterial(const reader::Material& material)
{
    PreviewMaterial row = {material.Name,
                           material.Diffuse,
                           {},
                           material.CullingMode,
                           material.Operation.BlendMode,
                           material.Shader.IsAlphaTestEnabled,
                           material.IsFragmentLightEnabled || material.IsVertexLightEnabled,
                           0};
    for (const reader::TextureMapper& mapper : material.Mappers) {
        row.Textures.push_back(mapper.Texture.Name);
    }
    return row;
}

} // namespace

PreviewScene DescribeModel(const reader::Model& model)
{
    PreviewScene scene;
    std::map<std::string, std::size_t> users;
    const std::vector<bool> isVisible = reader::VisibleMeshes(model);
    for (std::size_t i = 0; i < model.Meshes.size(); ++i) {
        const reader::Mesh& mesh = model.Meshes[i];
        ++users[mesh.MaterialName];
        PreviewMesh row;
        row.Node = mesh.NodeName;
        row.Material = mesh.MaterialName;
        row.IsVisible = isVisible[i];
        if (mesh.Shape >= 0 && static_cast<std::size_t>(mesh.Shape) < model.Shapes.size()) {
            DescribeShape(model.Shapes[static_cast<std::size_t>(mesh.Shape)], model.Magnify, row);
        }
        scene.Meshes.push_back(std::move(row));
    }
    for (const reader::Material& material : model.Materials) {
        scene.Materials.push_back(DescribeMaterial(material));
        scene.Materials.back().Users = users[material.Name];
    }
    for (const reader::Bone& bone : model.Bones.Bones) {
        scene.Bones.push_back(bone.Name);
    }
    return scene;
}

} // namespace tq4x::preview
