#include "gltf/OpenScene.h"

#include <algorithm>
#include <cmath>

#include "gltf/OpenDocument.h"
#include "gltf/SceneBuild.h"
#include "gltf/SceneError.h"
#include "scene/Session.h"

namespace tq4x::gltf
{
namespace
{

OpenedScene Fail(SceneStatus status, std::string error)
{
    XSI::Host::Session::Current().NewScene();
    return {status, std::move(error), {}, {}};
}

/// The animation that is wanted, none for a document without any. `error` tells why a wanted one is not
/// there.
Index ChooseClip(const Document& document, const std::optional<std::string>& wanted, std::string& error)
{
    const std::size_t count = document.Animations.size();
    if (!wanted) {
        return count > 0 ? Index(0) : Index();
    }
    std::string names;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string name = AnimationName(document, i);
        if (name == *wanted) {
            return i;
        }
        names += (i == 0 ? "" : ", ") + name;
    }
    error = "The scene has no animation \"" + *wanted + "\"; " +
            (count == 0 ? std::string("it has none.") : "it has: " + names + ".");
    return std::nullopt;
}

std::vector<std::filesystem::path> FilesOf(const std::filesystem::path& scene, const SceneOptions& options,
                                           const Document& document)
{
    std::vector<std::filesystem::path> files = {scene};
    for (std::size_t i = 0; i < document.Buffers.size(); ++i) {
        const std::string& uri = document.Buffers[i].Uri;
        if (!uri.empty() && !IsDataUri(uri)) {
            files.push_back(ResolveUri(uri, {scene.parent_path(), options.AssetRoot}, ""));
        }
    }
    for (const Image& image : document.Images) {
        if (!image.File.empty()) {
            files.push_back(image.File);
        }
    }
    return files;
}

/// The order is that of need: sets name what materials and meshes share, and places, poses and marks need the
/// objects.
void BuildScene(SceneBuild& build)
{
    const PageParameters pages;
    SetPlayControl(build);
    BuildMaterials(build, pages);
    BuildObjects(build);
    PlaceObjects(build);
    SetBindPoses(build);
    SetVisibilities(build);
    ApplyExtras(build, pages);
}

SceneBuild Prepare(Document document, const SceneOptions& options, const Index& clip)
{
    SceneBuild build;
    build.Remarks = document.Unread;
    build.Options = options;
    if (clip) {
        build.Tracks = AnimationTracks(document, *clip, options.FramesPerSecond, build.Remarks);
    }
    build.Sets = BuildCoordinateSets(document, clip ? &document.Animations[*clip] : nullptr);
    build.Order = NodesInOrder(document);
    build.Source = std::make_shared<const Document>(std::move(document));
    return build;
}

} // namespace

OpenedScene OpenScene(const std::filesystem::path& file, const SceneOptions& options)
{
    OpenedDocument opened = OpenDocument(file, {options.AssetRoot});
    if (!opened.Content) {
        return Fail(SceneStatus::BadScene, opened.Error);
    }
    std::string clipError;
    const Index clip = ChooseClip(*opened.Content, options.Clip, clipError);
    if (!clipError.empty()) {
        return Fail(SceneStatus::NoClip, clipError);
    }
    XSI::Host::Session::Current().NewScene(file.stem().string(), file.string());
    try {
        OpenedScene scene;
        scene.Files = FilesOf(file, options, *opened.Content);
        SceneBuild build = Prepare(*std::move(opened.Content), options, clip);
        BuildScene(build);
        scene.Remarks = std::move(build.Remarks);
        return scene;
    } catch (const SceneError& error) {
        return Fail(SceneStatus::BadScene, error.Place + ": " + error.Text);
    } catch (const std::bad_alloc&) {
        return Fail(SceneStatus::BadScene, "There is not enough memory for this scene.");
    }
}

} // namespace tq4x::gltf
