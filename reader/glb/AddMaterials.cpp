#include "glb/AddMaterials.h"

#include <algorithm>

#include "glb/TextureTransform.h"

namespace tq4x::reader
{
namespace
{

double Short(double value)
{
    return ShortNumber(static_cast<float>(value));
}

/// The picture that the combiners show: the first that one of them takes. -1: none.
int ShownMapper(const Material& material)
{
    constexpr std::string_view Word = "Texture";
    for (const TextureCombiner& combiner : material.Shader.Combiners) {
        for (const std::string& source : combiner.SourceRgb) {
            if (source.size() == Word.size() + 1 && source.starts_with(Word)) {
                return source.back() - '0';
            }
        }
    }
    return -1;
}

/// Nothing lights the surface: its material says so, or it has none of what lit shaders give it.
bool IsUnlit(const Material& material)
{
    const bool hasLight = material.IsFragmentLightEnabled || material.IsVertexLightEnabled;
    const bool isConstant = material.Ambient == Color{} && material.Specular0 == Color{} &&
                            !material.Shader.IsDistribution0Enabled;
    return !hasLight || isConstant;
}

class MaterialConversion
{
public:
    MaterialConversion(const Material& material, const LookupTableSet& tables, TextureConversion& textures,
                       GlbScene& scene)
        : m_material(material),
          m_tables(tables),
          m_textures(textures),
          m_scene(scene)
    {}

    GlbMaterial Run()
    {
        m_place = "/materials/" + std::to_string(NextIndex());
        m_json["name"] = m_material.Name;
        AddColor();
        AddNormals();
        AddEmission();
        AddBlending();
        AddCulling();
        if (IsUnlit(m_material)) {
            UseExtension("KHR_materials_unlit", Json::object());
        }
        m_result.Index = m_scene.Writer.Add("materials", std::move(m_json));
        m_result.Source = &m_material;
        return m_result;
    }

private:
    std::size_t NextIndex()
    {
        const Json& root = m_scene.Writer.Root();
        return root.contains("materials") ? root.at("materials").size() : 0;
    }

    void Warn(const std::string& text) { m_scene.Warnings.push_back("\"" + m_material.Name + "\": " + text); }

    void UseExtension(const std::string& name, Json content)
    {
        m_scene.Writer.UseExtension(name);
        m_json["extensions"][name] = std::move(content);
    }

    void AddColor()
    {
        Json& surface = m_json["pbrMetallicRoughness"];
        Color color = m_material.Diffuse;
        std::ranges::transform(color, color.begin(), [](float part) { return std::clamp(part, 0.0F, 1.0F); });
        if (color != Color{1, 1, 1, 1}) {
            surface["baseColorFactor"] = NumberList(color);
        }
        const int shown = ShownMapper(m_material);
        if (const std::optional<Json> info = TextureInfo(shown, ImageUse::Surface)) {
            surface["baseColorTexture"] = *info;
            m_result.TextureInfos[static_cast<std::size_t>(shown)] =
                m_place + "/pbrMetallicRoughness/baseColorTexture";
        }
        const SurfaceFinish finish = ComputeFinish(m_material, m_tables);
        surface["metallicFactor"] = Short(finish.Metallic);
        surface["roughnessFactor"] = Short(finish.Roughness);
    }

    void AddNormals()
    {
        if (m_material.Shader.BumpMode == "NotUsed") {
            return;
        }
        if (m_material.Shader.BumpMode == "AsTangent") {
            Warn("a map of tangents has no place in glTF.");
            return;
        }
        const int index = m_material.Shader.BumpTextureIndex;
        if (const std::optional<Json> info = TextureInfo(index, ImageUse::Normal)) {
            m_json["normalTexture"] = *info;
            m_result.TextureInfos[static_cast<std::size_t>(index)] = m_place + "/normalTexture";
        }
    }

    std::optional<Json> TextureInfo(int index, ImageUse use)
    {
        const std::size_t mapper = static_cast<std::size_t>(index);
        if (index < 0 || mapper >= m_result.TextureInfos.size() || mapper >= m_material.Mappers.size() ||
            mapper >= m_material.Coordinators.size()) {
            return std::nullopt;
        }
        const TextureCoordinator& coordinator = m_material.Coordinators[mapper];
        if (coordinator.MappingMethod != "UvCoordinateMap") {
            Warn("texture " + std::to_string(index) + " is mapped in a way that has no place in glTF.");
            return std::nullopt;
        }
        const int texture = m_textures.Add(m_material.Mappers[mapper], use);
        if (texture < 0) {
            return std::nullopt;
        }
        const int set = std::clamp(coordinator.SourceCoordinate, 0, 2);
        m_result.CoordinateSets = std::max(m_result.CoordinateSets, set + 1);
        Json info = {{"index", texture}};
        if (set != 0) {
            info["texCoord"] = set;
        }
        AddTransform(coordinator, info);
        return info;
    }

    void AddTransform(const TextureCoordinator& coordinator, Json& info)
    {
        const TextureTransform transform = ComputeTextureTransform(coordinator);
        if (!transform.IsExact) {
            Warn("a turn together with different scales of a texture comes near only.");
        }
        Json content;
        if (const Json offset = {Short(transform.Offset[0]), Short(transform.Offset[1])};
            offset != Json({0.0, 0.0})) {
            content["offset"] = offset;
        }
        if (transform.Rotation != 0) {
            content["rotation"] = Short(transform.Rotation);
        }
        if (const Json scale = {Short(transform.Scale[0]), Short(transform.Scale[1])};
            scale != Json({1.0, 1.0})) {
            content["scale"] = scale;
        }
        if (!content.empty()) {
            m_scene.Writer.UseExtension("KHR_texture_transform");
            info["extensions"]["KHR_texture_transform"] = std::move(content);
        }
    }

    /// Colours brighter than white are split: glTF's own factor ends at 1.
    void AddEmission()
    {
        std::array<float, 3> color{};
        std::transform(m_material.Emission.begin(), m_material.Emission.begin() + 3, color.begin(),
                       [](float part) { return std::max(part, 0.0F); });
        const float strength = std::ranges::max(color);
        if (!(strength > 0)) {
            return;
        }
        if (strength > 1) {
            std::ranges::transform(color, color.begin(), [strength](float part) { return part / strength; });
            UseExtension("KHR_materials_emissive_strength", {{"emissiveStrength", ShortNumber(strength)}});
        }
        m_json["emissiveFactor"] = NumberList(color);
    }

    void AddBlending()
    {
        const FragmentOperation& operation = m_material.Operation;
        const bool isBlended = operation.BlendMode == "Blend" || operation.BlendMode == "SeparateBlend";
        if (isBlended) {
            m_json["alphaMode"] = "BLEND";
            const BlendParameter& rgb = operation.Rgb;
            if (rgb.Source != "SourceAlpha" || rgb.Destination != "OneMinusSourceAlpha" ||
                rgb.Equation != "FuncAdd") {
                Warn("its way of blending has no place in glTF; it is plainly translucent there.");
            }
        } else if (operation.BlendMode == "Logic") {
            Warn("logic operations have no place in glTF.");
        }
        if (m_material.Shader.IsAlphaTestEnabled) {
            AddAlphaTest(isBlended);
        }
    }

    void AddAlphaTest(bool isBlended)
    {
        const FragmentShader& shader = m_material.Shader;
        const bool isCutoff = shader.AlphaTestFunction == "Greater" || shader.AlphaTestFunction == "Gequal";
        if (isBlended || !isCutoff) {
            if (shader.AlphaTestFunction != "Always") {
                Warn("its alpha test has no place in glTF.");
            }
            return;
        }
        m_json["alphaMode"] = "MASK";
        if (shader.AlphaTestReference != 0.5F) {
            m_json["alphaCutoff"] = ShortNumber(std::max(shader.AlphaTestReference, 0.0F));
        }
    }

    void AddCulling()
    {
        if (m_material.CullingMode == "FrontFace" || m_material.CullingMode == "Always") {
            Warn("glTF can't leave out front faces; both sides are shown.");
        }
        if (m_material.CullingMode != "BackFace") {
            m_json["doubleSided"] = true;
        }
    }

    const Material& m_material;
    const LookupTableSet& m_tables;
    TextureConversion& m_textures;
    GlbScene& m_scene;
    std::string m_place;
    Json m_json;
    GlbMaterial m_result;
};

} // namespace

MaterialTable AddMaterials(const Model& model, const TextureMap& textures, GlbScene& scene)
{
    MaterialTable table;
    TextureConversion conversion(textures, scene);
    for (const Material& material : model.Materials) {
        GlbMaterial added = MaterialConversion(material, model.LookupTables, conversion, scene).Run();
        table.emplace(material.Name, std::move(added));
    }
    return table;
}

} // namespace tq4x::reader
