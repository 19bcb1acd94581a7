#include "collect/ExportMaterial.h"

#include "collect/ExportMesh.h"
#include "collect/ExportTexture.h"
#include "collect/FiniteValues.h"
#include "collect/ReadShader.h"
#include "collect/ReadUserData.h"
#include "collect/SampleFrames.h"
#include "collect/ShaderPorts.h"
#include "export/ExportContext.h"
#include "material/Material.h"
#include "math/Scalar.h"
#include "pipeline/ExportValues.h"
#include "pipeline/MessageLog.h"
#include "pipeline/TextHelpers.h"

#include <xsi_material.h>
#include <xsi_property.h>
#include <xsi_shader.h>

#include <algorithm>

namespace tq4x
{
namespace
{

// Properties of older scenes may lack a parameter; the record then keeps what it has.

int ReadInt(const XSI::ProjectItem& item, const char* name, int otherwise)
{
    const XSI::CValue value = item.GetParameterValue(name);
    return value.IsEmpty() ? otherwise : static_cast<LONG>(value);
}

bool ReadBool(const XSI::ProjectItem& item, const char* name, bool otherwise)
{
    const XSI::CValue value = item.GetParameterValue(name);
    return value.IsEmpty() ? otherwise : static_cast<bool>(value);
}

/// How a coordinate set is laid on at one frame.
struct Projection
{
    float ScaleS = 1.0f;
    float ScaleT = 1.0f;
    float Rotate = 0.0f; ///< degrees
    float TranslateS = 0.0f;
    float TranslateT = 0.0f;
};

float ReadAt(const XSI::Parameter& parameter, double frame, float initial)
{
    return parameter.IsValid() ? static_cast<float>(parameter.GetValue(frame)) : initial;
}

/// The files scale coordinates, the host scales the picture. A zero is left as it is.
float InverseScale(float scale)
{
    return IsNegligible(scale) ? scale : 1.0f / scale;
}

Projection ReadProjection(const UvRecord& record, double frame)
{
    return {InverseScale(ReadAt(record.ScaleU, frame, 1.0f)),
            InverseScale(ReadAt(record.ScaleV, frame, 1.0f)), ReadAt(record.RotateW, frame, 0.0f),
            ReadAt(record.TranslateU, frame, 0.0f), ReadAt(record.TranslateV, frame, 0.0f)};
}

void AppendSample(TextureCoordinator& coordinator, const Projection& projection)
{
    const std::array<float, 5> values = {projection.ScaleS, projection.ScaleT, projection.Rotate,
                                         projection.TranslateS, projection.TranslateT};
    for (std::size_t i = 0; i < values.size(); ++i)
        coordinator.Curves[i].Samples.push_back(values[i]);
}

} // namespace

ExportMaterial::ExportMaterial(ExportContext& context, const XSI::CRef& material)
    : ExportBase(context, material)
{
    MaterialEntry& entry = context.Content.Materials.MaterialFor(this);
    m_index = static_cast<std::uint32_t>(entry.Index);
    Target = &entry.Material;
    const std::string hostName = ObjectName();
    Target->Name = context.MaterialNames.GetUniqueName(LegalName(hostName));
    if (Target->Name != hostName)
        ReportMessage(MessageCode::MaterialNameChanged, hostName + " -> " + Target->Name);
    Target->TextureCoordinateConfig = "Config0120";
    ReadProperties();
}

const std::string& ExportMaterial::TargetName() const
{
    return Target->Name;
}

void ExportMaterial::ReadMaterialAttributes(const XSI::CRef& reference)
{
    const XSI::Property property(reference);
    constexpr int lastCullingMode = static_cast<int>(CullingMode::Never);
    Material& target = *Target;
    const int culling = ReadInt(property, "TQ4X_ForPennonMatAttrCullFace",
                                static_cast<int>(target.Rasterization.CullingMode));
    target.Rasterization.CullingMode = static_cast<CullingMode>(std::clamp(culling, 0, lastCullingMode));
    target.IsFragmentLightEnabled =
        ReadBool(property, "TQ4X_ForPennonMatAttrFragmentLighting", target.IsFragmentLightEnabled);
    target.IsVertexLightEnabled =
        ReadBool(property, "TQ4X_ForPennonMatAttrVertexLighting", target.IsVertexLightEnabled);
    const int blend = ReadInt(property, "TQ4X_ForPennonMatAttrBlendMode", -1);
    if (blend >= 0) {
        target.SetBlendPreset(static_cast<BlendPreset>(blend));
        IsAutoBlend = false;
    }
    target.IsCompressible = !ReadBool(property, "TQ4X_ForPennonMatAttrNoCompress", !target.IsCompressible);
}

void ExportMaterial::ReadProperties()
{
    const XSI::CRefArray properties = XSI::Material(Object).GetProperties();
    const XSI::Property attributes(properties.Find("TQ4X_ForPennonMaterialAttrProp"));
    if (attributes.IsValid())
        ReadMaterialAttributes(attributes);
    const XSI::Property priority(properties.Find("TQ4X_ForPennonRenderPriorityProp"));
    if (ReadBool(priority, "TQ4X_ForPennonRenderPrioUsePriority", false))
        Target->RenderPriority = ReadInt(priority, "TQ4X_ForPennonRenderPrioPriority", 0);
    const XSI::Property userData(properties.Find("TQ4X_ForPennonUserDataProp"));
    if (userData.IsValid())
        AppendUserData(userData, Target->UserData);
}

bool ExportMaterial::Export()
{
    ReadShaders();
    return true;
}

void ExportMaterial::ReadShaders()
{
    const XSI::Shader surface(SourceOf(XSI::Material(Object).GetParameter("surface")));
    if (surface.IsValid()) {
        ProgID = surface.GetProgID();
        ReadShader(*this, surface);
    }
    ReadNormalMap();
}

void ExportMaterial::ReadNormalMap()
{
    const XSI::Shader bump(SourceOf(XSI::Material(Object).GetParameter("normal")));
    const XSI::Shader map(SourceOf(bump.GetParameter("Map")));
    const XSI::Parameter port = map.GetParameter("NormalMap");
    if (FindTextureSource("NormalMap", port) == TextureSource::Image)
        AddTextureStage(SourceOf(port), true);
}

void ExportMaterial::AddTextureStage(const XSI::CRef& texture, bool isNormalMap)
{
    Stages.push_back(MakeTextureStage(Context, texture, isNormalMap));
}

void ExportMaterial::AddMixColor(const XSI::CRef& reference)
{
    if (HasMixColor) {
        if (MixColorShader != reference)
            PrintMessage("MixColor is able to connect only one per material.(" + Target->Name + ").",
                         Severity::Warning);
        return;
    }
    constexpr std::array<const char*, 3> ports = {"base_color", "color1", "color2"};
    const XSI::Shader shader(reference);
    const int size = std::clamp(ReadInt(shader, "mixersize", 0), 0, static_cast<int>(ports.size()));
    for (int i = 0; i < size; ++i) {
        const XSI::CRef source = SourceOf(shader.GetParameter(ports[static_cast<std::size_t>(i)]));
        if (source.IsA(XSI::siTextureID))
            AddTextureStage(source, false);
    }
    MixColorShader = reference;
    HasMixColor = true;
}

bool ExportMaterial::Finish()
{
    if (Stages.size() > MostTextureStages) {
        ReportMessage(MessageCode::TooManyTextures, Target->Name);
        return false;
    }
    bool hasNormalMap = false;
    for (const TextureStage& stage : Stages) {
        if (stage.Frames.empty())
            continue; // nothing to refer to
        BuildTextureCoordinators(stage);
        BuildTextureMappers(stage);
        if (stage.IsNormalMap && !hasNormalMap) {
            hasNormalMap = true;
            SetUpBump(Target->TextureMappers.size() - 1);
        }
    }
    const bool hasVertexColor = HasVertexColors();
    const bool isTranslucent = std::any_of(
        Meshes.begin(), Meshes.end(), [](ExportMesh* mesh) { return mesh->HasTranslucentVertexColors(); });
    if (hasVertexColor && IsAutoBlend && isTranslucent)
        Target->SetBlendPreset(BlendPreset::Translucent);
    const std::size_t textures = Target->TextureMappers.size() - (hasNormalMap ? 1 : 0);
    Target->BuildFragmentLighting(Context.Content.Materials.LookupTables, hasVertexColor, textures);
    if (!AreFinite(*Target))
        PrintMessage("Values that are not finite exist(" + Target->Name + ").", Severity::Warning);
    return true;
}

void ExportMaterial::SetUpBump(std::size_t mapper)
{
    FragmentBump& bump = Target->FragmentShader.FragmentBump;
    bump.BumpTextureIndex = static_cast<std::int32_t>(mapper);
    bump.BumpMode = BumpMode::AsBump;
    bump.IsBumpRenormalize = true;
}

bool ExportMaterial::HasVertexColors() const
{
    return !Meshes.empty() && std::all_of(Meshes.begin(), Meshes.end(),
                                          [](ExportMesh* mesh) { return mesh->HasVertexColors(); });
}

/// The projection of a stage's coordinate set if all meshes give the set the same number, else nullptr and 0.
const UvRecord* ExportMaterial::CommonUvRecord(const TextureStage& stage, int& number) const
{
    number = 0;
    if (Meshes.empty())
        return nullptr;
    const std::string set = stage.TextureSpaceId.GetAsciiString();
    const int first = Meshes.front()->FindCoordinateSetNumber(set);
    const bool isCommon = std::all_of(Meshes.begin(), Meshes.end(), [&](ExportMesh* mesh) {
        return mesh->FindCoordinateSetNumber(set) == first;
    });
    if (!isCommon || first < 0)
        return nullptr;
    number = first;
    return Meshes.front()->FindUvRecord(set);
}

void ExportMaterial::BuildTextureCoordinators(const TextureStage& stage)
{
    int number = 0;
    const UvRecord* record = CommonUvRecord(stage, number);
    const auto projectionAt = [&](double frame) {
        return record != nullptr ? ReadProjection(*record, frame) : Projection{};
    };
    const ExportValues& values = GlobalExportValues();
    const Projection start = projectionAt(values.ExportStartFrame);
    const std::size_t count = Target->AddTextureCoordinator(
        number, MappingMethod::UvCoordinateMap, 0, MatrixMode::DccSoftimage, start.ScaleS, start.ScaleT,
        start.Rotate, start.TranslateS, start.TranslateT);
    TextureCoordinator& coordinator = *Target->TextureCoordinatorAt(count - 1);
    SampleFrames(values, [&](double frame) { AppendSample(coordinator, projectionAt(frame)); });
}

void ExportMaterial::BuildTextureMappers(const TextureStage& stage)
{
    const UvRecord* record =
        Meshes.empty() ? nullptr : Meshes.front()->FindUvRecord(stage.TextureSpaceId.GetAsciiString());
    const bool repeatsU = record != nullptr && record->WrapU;
    const bool repeatsV = record != nullptr && record->WrapV;
    TextureMapper* mapper = nullptr;
    for (const auto& [frame, texture] : stage.Frames) {
        const std::string name = Context.Content.Materials.Textures.Add(
            texture->FileName.GetAsciiString(), stage.IsNormalMap, texture->ImageForModel());
        if (mapper != nullptr) {
            mapper->Patterns[static_cast<std::int32_t>(frame)] = name;
            continue;
        }
        const std::size_t count =
            Target->AddTextureMapper(name, repeatsU ? TextureWrap::Repeat : TextureWrap::ClampToEdge,
                                     repeatsV ? TextureWrap::Repeat : TextureWrap::ClampToEdge);
        mapper = Target->TextureMapperAt(count - 1);
    }
}

ExportMaterial& FindOrCreateMaterial(ExportContext& context, const XSI::CRef& material)
{
    ExportMaterial* existing = FindMaterial(context, material);
    if (existing != nullptr)
        return *existing;
    const CollectorKey key{.ObjectID = material.GetObjectID()};
    return static_cast<ExportMaterial&>(
        context.Add(key, std::make_unique<ExportMaterial>(context, material)));
}

ExportMaterial* FindMaterial(const ExportContext& context, const XSI::CRef& material)
{
    ExportBase* collector = context.Find({.ObjectID = material.GetObjectID()});
    const bool isMaterial = collector != nullptr && collector->GetKind() == CollectorKind::Material;
    return isMaterial ? static_cast<ExportMaterial*>(collector) : nullptr;
}

} // namespace tq4x
