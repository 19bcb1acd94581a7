#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>

#include "CheckSections.h"

namespace tq4x::reader
{
namespace
{

constexpr std::size_t MostTextures = 3;

void CheckStages(const Material& material, FindingList& findings)
{
    const std::string place = "Material \"" + material.Name + "\": ";
    const std::size_t mappers = material.Mappers.size();
    if (mappers > MostTextures) {
        findings.Error("TQ-TEXTURE-COUNT", material.Line,
                       place + std::to_string(mappers) + " textures, at most " +
                           std::to_string(MostTextures) + ".");
    }
    if (material.Coordinators.size() != mappers) {
        findings.Error("TQ-TEXTURE-COUNT", material.Line,
                       place + std::to_string(mappers) + " mappers, but " +
                           std::to_string(material.Coordinators.size()) + " coordinators.");
    }
    for (const TextureCoordinator& coordinator : material.Coordinators) {
        if (coordinator.SourceCoordinate < 0 || coordinator.SourceCoordinate > 2) {
            findings.Error("TQ-COORDINATE-RANGE", material.Line,
                           place + "there is no TextureCoordinate" +
                               std::to_string(coordinator.SourceCoordinate) + ".");
        }
    }
    const bool hasBump = material.Shader.BumpMode != "NotUsed";
    if (hasBump && static_cast<std::size_t>(material.Shader.BumpTextureIndex) >= mappers) {
        findings.Error("TQ-TEXTURE-UNIT", material.Line,
                       place + "the bump texture is Texture" +
                           std::to_string(material.Shader.BumpTextureIndex) + ", there are " +
                           std::to_string(mappers) + " textures.");
    }
}

void CheckCombiners(const Material& material, FindingList& findings)
{
    for (const TextureCombiner& combiner : material.Shader.Combiners) {
        for (const auto& sources : {combiner.SourceRgb, combiner.SourceAlpha}) {
            for (const std::string& source : sources) {
                const bool isTexture = source.starts_with("Texture") && source.size() == 8;
                if (isTexture && static_cast<std::size_t>(source.back() - '0') >= material.Mappers.size()) {
                    findings.Error("TQ-TEXTURE-UNIT", material.Line,
                                   "Material \"" + material.Name + "\": a combiner takes " + source +
                                       ", there are " + std::to_string(material.Mappers.size()) +
                                       " textures.");
                }
            }
        }
    }
}

void CheckSamplers(const Material& material, const LookupTableSet& tables, FindingList& findings)
{
    const FragmentShader& shader = material.Shader;
    for (const LookupTableSampler* const sampler :
         {&shader.ReflectanceR, &shader.ReflectanceG, &shader.ReflectanceB, &shader.Distribution0,
          &shader.Distribution1, &shader.Fresnel}) {
        CheckSampler(*sampler, tables, "Material \"" + material.Name + "\"", findings);
    }
}

/// The texture's name stands twice in a reference.
void CheckReference(const TextureReference& reference, FindingList& findings)
{
    if (reference.Path != "Textures/" + reference.Name + ".qtex") {
        findings.Error("TQ-REF-TEXTURE-NAME", reference.Line,
                       "The texture \"" + reference.Name + "\" has the path \"" + reference.Path + "\".");
    }
}

} // namespace

void CheckSampler(const LookupTableSampler& sampler, const LookupTableSet& set, std::string_view place,
                  FindingList& findings)
{
    const auto isNamed = [&](const LookupTable& table) { return table.Name == sampler.TableName; };
    if (sampler.HasTable && std::ranges::none_of(set.Tables, isNamed)) {
        findings.Error("TQ-REF-TABLE", sampler.Line,
                       std::string(place) + ": there is no lookup table \"" + sampler.TableName + "\".");
    }
}

void CheckLookupTables(const LookupTableSet& set, FindingList& findings)
{
    std::unordered_set<std::string_view> names;
    for (const LookupTable& table : set.Tables) {
        const std::string place = "Lookup table \"" + table.Name + "\"";
        if (!names.insert(table.Name).second) {
            findings.Error("TQ-NAME-REPEAT", table.Line,
                           "The table name \"" + table.Name + "\" stands twice.");
        }
        CheckCurve(table.Values, place, findings);
        const float start = table.IsGeneratedAsAbs ? 0.0F : -255.0F;
        const bool isInside = table.Values.Keys.empty() || (table.Values.Keys.front().Frame >= start &&
                                                            table.Values.Keys.back().Frame <= 255.0F);
        if (table.Values.Keys.empty() || !isInside) {
            findings.Error("TQ-TABLE-RANGE", table.Line,
                           place + ": its keys must lie from " + (table.IsGeneratedAsAbs ? "0" : "-255") +
                               " to 255.");
        }
    }
}

void CheckMaterials(const Model& model, FindingList& findings)
{
    const Material* last = nullptr;
    for (const Material& material : model.Materials) {
        if (last != nullptr && material.Name < last->Name) {
            findings.Warning("TQ-ORDER", material.Line,
                             "Material \"" + material.Name + "\" stands behind \"" + last->Name + "\".");
        } else if (last != nullptr && material.Name == last->Name) {
            findings.Warning("TQ-NAME-REPEAT", material.Line,
                             "The material name \"" + material.Name + "\" stands twice.");
        }
        last = &material;
        CheckStages(material, findings);
        CheckCombiners(material, findings);
        CheckSamplers(material, model.LookupTables, findings);
        for (const TextureMapper& mapper : material.Mappers) {
            CheckReference(mapper.Texture, findings);
        }
    }
}

void CheckTextureFile(const TextureReference& reference, const std::filesystem::path& folder,
                      FindingList& findings)
{
    // Only what the name itself makes legal is looked up: a path of another form was told already and might
    // lead anywhere.
    if (reference.Path != "Textures/" + reference.Name + ".qtex" ||
        reference.Name.find('/') != std::string::npos) {
        return;
    }
    std::error_code error;
    const std::filesystem::path textures = folder / "Textures";
    if (!std::filesystem::is_directory(textures, error)) {
        findings.Warning("TQ-REF-TEXTURE-FOLDER", reference.Line,
                         "The file " + reference.Path + " can't be found: there is no folder Textures.");
    } else if (!std::filesystem::is_regular_file(textures / (reference.Name + ".qtex"), error)) {
        findings.Error("TQ-REF-TEXTURE", reference.Line, "The file " + reference.Path + " does not exist.");
    }
}

} // namespace tq4x::reader
