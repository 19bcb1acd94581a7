#include "glb/ConvertToGlb.h"

#include "glb/AddMeshes.h"

namespace tq4x::reader
{
namespace
{

const Model* FindModel(const ExportedFiles& files)
{
    for (const ExportedFile& file : files.Files) {
        if (file.Content.Model) {
            return &*file.Content.Model;
        }
    }
    return nullptr;
}

void ConvertModel(const Model& model, const TextureMap& textures, GlbScene& scene)
{
    const SkeletonNodes skeleton = AddSkeleton(model.Bones, model.Root, scene);
    const MaterialTable materials = AddMaterials(model, textures, scene);
    const std::vector<int> meshes = AddMeshes(model, skeleton, materials, {}, scene);
}

void AddScene(GlbScene& scene)
{
    Json content = Json::object();
    if (!scene.Roots.empty()) {
        content["nodes"] = scene.Roots;
    }
    scene.Writer.Root()["scene"] = scene.Writer.Add("scenes", std::move(content));
}

} // namespace

GlbResult ConvertToGlb(const ExportedFiles& files, const GlbOptions&)
{
    if (files.HasErrors) {
        return {"", {}, "The files have errors."};
    }
    GlbScene scene;
    if (const Model* const model = FindModel(files)) {
        ConvertModel(*model, files.Textures, scene);
    }
    AddScene(scene);
    std::string glb = scene.Writer.Finish();
    const std::string error = glb.empty() ? "The result would be larger than 4 GiB." : "";
    return {std::move(glb), std::move(scene.Warnings), error};
}

} // namespace tq4x::reader
