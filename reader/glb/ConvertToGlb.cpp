#include "glb/ConvertToGlb.h"

#include <algorithm>
#include <list>

#include "glb/AddMaterialClip.h"
#include "glb/AddMeshes.h"
#include "glb/AddSkeletalClip.h"
#include "glb/AddStage.h"
#include "glb/AddVisibilityClip.h"

namespace tq4x::reader
{
namespace
{

/// What there is of the model for animations to move.
struct ConvertedModel
{
    const Model* Source = nullptr; ///< absent: only a skeleton is known, or not even that
    const Skeleton* Bones = nullptr;
    SkeletonNodes Nodes;
    MaterialTable Materials;
    std::vector<int> Meshes; ///< node of each mesh
};

class Conversion
{
public:
    Conversion(const ExportedFiles& files, const GlbOptions& options) : m_files(files), m_options(options) {}

    GlbResult Run()
    {
        const ConvertedModel model = ConvertModel();
        // An environment file repeats what stands in others without what moves it, so it comes last.
        for (const bool isEnvironment : {false, true}) {
            for (const ExportedFile& file : m_files.Files) {
                if ((file.Content.Kind == FileKind::Environment) == isEnvironment) {
                    ConvertRest(file, model);
                }
            }
        }
        for (NamedClip& clip : m_clips) {
            clip.Builder.Finish();
        }
        AddScene();
        GlbResult result;
        result.Glb = m_scene.Writer.Finish();
        result.Error = result.Glb.empty() ? "The result would be larger than 4 GiB." : "";
        result.Warnings = std::move(m_scene.Warnings);
        return result;
    }

private:
    struct NamedClip
    {
        std::string Name;
        ClipBuilder Builder;
    };

    ConvertedModel ConvertModel()
    {
        ConvertedModel model;
        std::set<std::size_t> moving;
        for (const ExportedFile& file : m_files.Files) {
            if (file.Content.Model) {
                model.Source = &*file.Content.Model;
            }
            if (model.Bones == nullptr && file.Content.SkeletalAnimation) {
                model.Bones = &file.Content.SkeletalAnimation->Bones;
            }
        }
        if (model.Source != nullptr) {
            model.Bones = &model.Source->Bones;
            model.Materials = AddMaterials(*model.Source, m_files.Textures, m_scene);
        }
        if (model.Bones != nullptr) {
            const Transform root = model.Source != nullptr ? model.Source->Root : Transform();
            model.Nodes = AddSkeleton(*model.Bones, root, m_scene);
        }
        if (model.Source != nullptr) {
            model.Meshes =
                AddMeshes(*model.Source, model.Nodes, model.Materials, FindMoving(*model.Source), m_scene);
        }
        return model;
    }

    std::set<std::size_t> FindMoving(const Model& model) const
    {
        std::set<std::size_t> moving;
        for (const ExportedFile& file : m_files.Files) {
            if (file.Content.VisibilityAnimation) {
                moving.merge(MovingMeshes(*file.Content.VisibilityAnimation, model));
            }
        }
        return moving;
    }

    /// Files of one base name are one clip.
    ClipBuilder& ClipOf(const ExportedFile& file)
    {
        const std::string name = file.Path.stem().string();
        const auto known = std::ranges::find(m_clips, name, &NamedClip::Name);
        if (known != m_clips.end()) {
            return known->Builder;
        }
        m_clips.push_back({name, ClipBuilder(name, m_options.FramesPerSecond, m_scene)});
        return m_clips.back().Builder;
    }

    void ConvertRest(const ExportedFile& file, const ConvertedModel& model)
    {
        const Document& content = file.Content;
        ClipBuilder& clip = ClipOf(file);
        if (content.SkeletalAnimation) {
            AddSkeletalClip(*content.SkeletalAnimation, *model.Bones, model.Nodes, clip, m_scene);
        }
        if (content.MaterialAnimation) {
            AddMaterialClip(*content.MaterialAnimation, model.Materials, clip, m_scene);
        }
        if (content.VisibilityAnimation && model.Source != nullptr) {
            AddVisibilityClip(*content.VisibilityAnimation, *model.Source, model.Meshes, clip, m_scene);
        }
        AddCameras(content.Stage, m_stageNames, clip, m_scene);
        AddLights(content.Stage, m_stageNames, clip, m_scene);
    }

    void AddScene()
    {
        Json content = Json::object();
        if (!m_scene.Roots.empty()) {
            content["nodes"] = m_scene.Roots;
        }
        m_scene.Writer.Root()["scene"] = m_scene.Writer.Add("scenes", std::move(content));
    }

    const ExportedFiles& m_files;
    const GlbOptions& m_options;
    GlbScene m_scene;
    std::list<NamedClip> m_clips; ///< in order of their first file
    StageNames m_stageNames;
};

} // namespace

GlbResult ConvertToGlb(const ExportedFiles& files, const GlbOptions& options)
{
    if (files.HasErrors) {
        return {"", {}, "The files have errors."};
    }
    return Conversion(files, options).Run();
}

} // namespace tq4x::reader
