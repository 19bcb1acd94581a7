#include "scene/CreateMaterials.h"

#include "scene/CreateParameters.h"
#include "scene/KnownShaders.h"
#include "scene/Session.h"

namespace XSI::Host
{

namespace
{

void AddPort(const CRef& shader, const ShaderPort& port)
{
    switch (port.Type) {
    case ShaderPort::Kind::Color:
        AddColorParameter(shader, port.Name, port.Value, port.Value, port.Value, port.Alpha);
        return;
    case ShaderPort::Kind::Number:
        AddParameter(shader, port.Name, port.Value);
        return;
    case ShaderPort::Kind::Integer:
        AddParameter(shader, port.Name, static_cast<LONG>(port.Value));
        return;
    case ShaderPort::Kind::Flag:
        AddParameter(shader, port.Name, port.Value != 0.0);
        return;
    case ShaderPort::Kind::Text:
        AddParameter(shader, port.Name, CValue(""));
        return;
    }
}

void AddPorts(const CRef& shader, const KnownShader& known)
{
    for (const auto& group : known.PortGroups) {
        for (const ShaderPort& port : group) {
            AddPort(shader, port);
        }
    }
}

} // namespace

MaterialLibrary CreateMaterialLibrary(std::string_view name)
{
    auto* scene = Objects().Find<SceneObject>(Session::Current().Scene);
    auto& library = Objects().Create<LibraryObject>(siMaterialLibraryID, name, {}, scene->Id);
    scene->Libraries.push_back(library.Id);
    Objects().TouchNames();
    return RefOf(library);
}

Material CreateMaterial(std::string_view name, const MaterialLibrary& library)
{
    const auto* scene = Objects().Find<SceneObject>(Session::Current().Scene);
    auto* owner = Objects().Find<LibraryObject>(library);
    if (owner == nullptr) {
        owner = scene->Libraries.empty() ? nullptr : Objects().Find<LibraryObject>(scene->Libraries.front());
    }
    if (owner == nullptr) {
        owner = Objects().Find<LibraryObject>(CreateMaterialLibrary("DefaultLib"));
    }
    auto& material = Objects().Create<MaterialObject>(siMaterialID, name, "material", owner->Id);
    owner->Materials.push_back(material.Id);
    AddColorParameter(RefOf(material), "surface", 0.0, 0.0, 0.0);
    AddColorParameter(RefOf(material), "normal", 0.0, 0.0, 0.0);
    Objects().TouchNames();
    return RefOf(material);
}

Shader CreateShader(const CRef& owner, std::string_view progId, std::string_view name)
{
    auto* item = Objects().Find<ItemObject>(owner);
    if (item == nullptr) {
        return Shader();
    }
    const KnownShader* known = FindKnownShader(progId);
    const siClassID classId = known != nullptr && known->IsTexture ? siTextureID : siShaderID;
    auto& shader = Objects().Create<ShaderObject>(classId, name, {}, item->Id);
    shader.ProgId = progId;
    if (item->ClassId != siLightID) {
        item->Nested.push_back(shader.Id);
    }
    if (known != nullptr) {
        AddPorts(RefOf(shader), *known);
    }
    AddColorParameter(RefOf(shader), "out", 0.0, 0.0, 0.0);
    return RefOf(shader);
}

Shader CreateSurfaceShader(const CRef& material, std::string_view progId)
{
    const Shader shader = CreateShader(material, progId, progId);
    ConnectShader(Material(material).GetParameter(L"surface"), shader);
    return shader;
}

Texture CreateTexture(const CRef& owner, std::string_view name, const ImageClip2& clip,
                      std::string_view coordinateSet)
{
    const Texture texture(CreateShader(owner, "Softimage.txt2d-image-explicit.1.0", name));
    if (auto* shader = Objects().Find<ShaderObject>(texture)) {
        shader->Clip = clip.GetObjectID();
        texture.GetParameter(L"tspace_id").PutValue(FromUtf8(coordinateSet));
    }
    return texture;
}

TextureLayer AddTextureLayer(const Shader& shader, std::string_view name, const CRef& texture)
{
    auto* object = Objects().Find<ShaderObject>(shader);
    if (object == nullptr) {
        return TextureLayer();
    }
    auto& layer = Objects().Create<ItemObject>(siTextureLayerID, name, {}, object->Id);
    object->Layers.push_back(layer.Id);
    ConnectShader(AddColorParameter(RefOf(layer), "color", 0.0, 0.0, 0.0), texture);
    return RefOf(layer);
}

ImageClip2 CreateImageClip(std::string_view name, std::string_view fileName)
{
    auto& clip = Objects().Create<ClipObject>(siImageClipID, name, {}, Session::Current().Project);
    clip.FileName = fileName;
    clip.TimeControl = Objects().Create<TimeControlObject>(siTimeControlID, "timectrl", {}, clip.Id).Id;
    AddParameter(RefOf(clip), "SourceFileName", FromUtf8(fileName));
    Objects().TouchNames();
    return RefOf(clip);
}

void SetPixels(const ImageClip2& clip, std::shared_ptr<const ImageData> pixels)
{
    SetPixelSource(clip, [kept = std::move(pixels)](double) { return kept; });
}

void SetPixelSource(const ImageClip2& clip, ImageSource source)
{
    if (auto* object = Objects().Find<ClipObject>(clip)) {
        object->Pixels = std::move(source);
    }
}

void SetSequence(const ImageClip2& clip, std::string_view pattern, double clipIn, double clipOut,
                 double startOffset, double scale)
{
    const auto* object = Objects().Find<ClipObject>(clip);
    auto* time = object != nullptr ? Objects().Find<TimeControlObject>(object->TimeControl) : nullptr;
    if (time == nullptr) {
        return;
    }
    AddParameter(clip, "SourceFileName", FromUtf8(pattern));
    time->ClipIn = clipIn;
    time->ClipOut = clipOut;
    time->StartOffset = startOffset;
    time->Scale = scale;
}

} // namespace XSI::Host
