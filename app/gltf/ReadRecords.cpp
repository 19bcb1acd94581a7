#include "gltf/ReadRecords.h"

#include <algorithm>
#include <array>

namespace tq4x::gltf
{
namespace
{

// Extensions that this reader takes over.
constexpr std::array<std::string_view, 8> KnownExtensions = {
    "KHR_texture_transform", "KHR_lights_punctual",
    "KHR_materials_unlit",   "KHR_node_visibility",
    "KHR_animation_pointer", "KHR_materials_emissive_strength",
    "KHR_mesh_quantization", "KHR_materials_pbrSpecularGlossiness",
};

bool IsKnown(std::string_view extension)
{
    return std::ranges::find(KnownExtensions, extension) != KnownExtensions.end();
}

std::vector<std::string> ReadTexts(const JsonPlace& root, std::string_view list)
{
    std::vector<std::string> texts;
    if (const auto found = root.Find(list)) {
        for (std::size_t i = 0; i < found->Size(); ++i) {
            texts.push_back(found->At(i).Text());
        }
    }
    return texts;
}

// The part before the point of "2.0"; -1 where the text does not start so.
int MajorVersion(const std::string& version)
{
    const std::size_t point = version.find('.');
    const bool isOneDigit = point == 1 && version[0] >= '0' && version[0] <= '9';
    return isOneDigit ? version[0] - '0' : -1;
}

void CheckVersion(const JsonPlace& asset)
{
    const auto version = asset.Require("version");
    if (MajorVersion(version.Text()) != 2) {
        version.Fail("This is glTF " + version.Text() + "; only glTF 2.0 is read.");
    }
    const auto least = asset.Find("minVersion");
    if (least && least->Text() != "2.0") {
        least->Fail("The file wants a reader of glTF " + least->Text() + "; this one reads glTF 2.0.");
    }
}

} // namespace

std::size_t ListSize(const JsonPlace& root, std::string_view list)
{
    const auto found = root.Find(list);
    return found ? found->Size() : 0;
}

void ForEachItem(const JsonPlace& root, std::string_view list,
                 const std::function<void(const JsonPlace&)>& read)
{
    const auto found = root.Find(list);
    for (std::size_t i = 0; found && i < found->Size(); ++i) {
        read(found->At(i));
    }
}

void ReadAsset(const JsonPlace& root, Document& document)
{
    const auto asset = root.Require("asset");
    CheckVersion(asset);
    document.Generator = ReadText(asset, "generator");
    document.ExtensionsUsed = ReadTexts(root, "extensionsUsed");
    document.ExtensionsRequired = ReadTexts(root, "extensionsRequired");
    const auto required = std::ranges::find_if_not(document.ExtensionsRequired, IsKnown);
    if (required != document.ExtensionsRequired.end()) {
        root.Require("extensionsRequired")
            .Fail("The scene requires the extension " + *required + ", which is not read.");
    }
    for (const std::string& extension : document.ExtensionsUsed) {
        if (!IsKnown(extension)) {
            document.Unread.push_back(
                {NoteSeverity::Warning, extension,
                 "The extension " + extension + " is not read; what it describes is left out."});
        }
    }
}

Document ReadRecords(const JsonValue& json)
{
    const JsonPlace root(json, "");
    Document document;
    ReadAsset(root, document);
    ReadBuffers(root, document);
    ReadAccessors(root, document);
    ReadTextures(root, document);
    ReadMaterials(root, document);
    ReadMeshes(root, document);
    ReadCameras(root, document);
    ReadLights(root, document);
    ReadNodes(root, document);
    ReadSkins(root, document);
    ReadAnimations(root, document);
    ReadScenes(root, document);
    return document;
}

} // namespace tq4x::gltf
