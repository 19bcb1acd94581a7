#pragma once

#include "collect/ExportBase.h"
#include "collect/TextureStage.h"

#include <xsi_ref.h>
#include <xsi_string.h>

#include <cstdint>
#include <string>
#include <vector>

namespace tq4x
{

class ExportMesh;
struct Material;

/// The collector of one material: attribute properties, shader graph, texture stages.
class ExportMaterial : public ExportBase
{
public:
    /// Makes the record, names it and reads the attribute properties.
    ExportMaterial(ExportContext& context, const XSI::CRef& material);

    CollectorKind GetKind() const override { return CollectorKind::Material; }

    bool IsKindOf(CollectorKind kind) const override { return kind == CollectorKind::Material; }

    /// Reads the shaders. Always true.
    bool Export() override;

    /// Reads the shaders on the ports `surface` and `normal`.
    void ReadShaders();

    /// Appends a stage for a host texture.
    void AddTextureStage(const XSI::CRef& texture, bool isNormalMap);

    /// Takes the images of a mix node, of which a material has one at the most.
    void AddMixColor(const XSI::CRef& shader);

    /// Turns the stages into coordinators and mappers and sets the fragment lighting up. Runs when all meshes
    /// are known. False with more than three stages.
    [[nodiscard]] bool Finish();

    /// Number by creation, the same for shapes, meshes and coordinate sets.
    std::uint32_t MaterialIndex() const { return m_index; }

    const std::string& TargetName() const;

    XSI::CString ProgID = "Invalid"; ///< kind of the surface shader
    std::vector<TextureStage> Stages;
    std::vector<ExportMesh*> Meshes; ///< users of the material that were not given up
    Material* Target = nullptr;
    bool HasMixColor = false;
    XSI::CRef MixColorShader;
    bool IsAutoBlend = true; ///< the blend preset is derived from the shader

private:
    void ReadMaterialAttributes(const XSI::CRef& property);
    void ReadProperties();
    void ReadNormalMap();
    void BuildTextureCoordinators(const TextureStage& stage);
    void BuildTextureMappers(const TextureStage& stage);
    const struct UvRecord* CommonUvRecord(const TextureStage& stage, int& number) const;
    void SetUpBump(std::size_t mapper);
    bool HasVertexColors() const;

    std::uint32_t m_index = 0;
};

/// The collector of a material; made if there is none yet.
ExportMaterial& FindOrCreateMaterial(ExportContext& context, const XSI::CRef& material);

/// The collector of a material, or nullptr.
ExportMaterial* FindMaterial(const ExportContext& context, const XSI::CRef& material);

} // namespace tq4x
