#include "HostScene.h"

#include <xsi_application.h>
#include <xsi_clusterproperty.h>
#include <xsi_imageclip2.h>
#include <xsi_model.h>
#include <xsi_polygonmesh.h>
#include <xsi_primitive.h>
#include <xsi_project.h>
#include <xsi_property.h>
#include <xsi_shader.h>
#include <xsi_texturelayer.h>
#include <xsi_timecontrol.h>

#include <algorithm>
#include <cctype>
#include <set>

namespace tq4x::test
{
namespace
{

/// Makes names unique by counting their uses.
class Names
{
public:
    std::string Take(const std::string& name)
    {
        const auto [place, isNew] = m_uses.try_emplace(name, 0);
        return isNew ? name : name + "_" + std::to_string(++place->second);
    }

private:
    std::map<std::string, int> m_uses;
};

std::string NameOf(const XSI::SIObject& object)
{
    return object.GetName().GetAsciiString();
}

std::string ProgId(const XSI::CRef& shader)
{
    return XSI::Shader(shader).GetProgID().GetAsciiString();
}

bool IsImage(const XSI::CRef& shader)
{
    return ProgId(shader) == "Softimage.txt2d-image-explicit.1.0";
}

bool IsMix(const XSI::CRef& shader)
{
    return ProgId(shader) == "Softimage.sib_color_2mix.1.0" ||
           ProgId(shader) == "Softimage.sib_color_8mix.1.0";
}

/// A file sequence: "folder/name[1..12;2].tga".
struct Sequence
{
    std::string Before;
    std::string Behind;
    int Low = 0;
    int High = 0;
    std::size_t Digits = 0;

    explicit Sequence(const std::string& pattern)
        : Before(pattern.substr(0, pattern.rfind('['))),
          Behind(pattern.substr(pattern.rfind(']') + 1))
    {
        const std::string range = pattern.substr(Before.size() + 1);
        Low = std::stoi(range);
        High = std::stoi(range.substr(range.find("..") + 2));
        Digits = std::stoul(range.substr(range.find(';') + 1));
    }

    std::string FileAt(int number) const
    {
        const std::string text = std::to_string(number);
        return Before + std::string(Digits - std::min(Digits, text.size()), '0') + text + Behind;
    }
};

/// The last frame of the window shows no picture of its own.
std::map<int, std::string> PicturesOf(const XSI::ImageClip2& clip, int first, int last)
{
    const XSI::TimeControl time = clip.GetTimeControl();
    if (time.GetClipIn() == 0.0 && time.GetClipOut() == 0.0)
        return {{0, clip.GetFileName().GetAsciiString()}};
    const XSI::CString pattern = clip.GetParameterValue("SourceFileName");
    const Sequence sequence(pattern.GetAsciiString());
    const double length = time.GetClipOut() - time.GetClipIn() + 1.0;
    const double start = time.GetStartOffset() - 1.0;
    std::map<int, std::string> pictures;
    std::string before;
    for (int frame = first; frame < last; ++frame) {
        const double moved = std::clamp((frame - start) * time.GetScale(), 0.0, length);
        const double source = frame < start ? 0.0 : time.GetClipIn() + moved;
        const std::string file =
            sequence.FileAt(std::clamp(static_cast<int>(source), sequence.Low, sequence.High));
        if (file != before)
            pictures[pictures.empty() ? 0 : frame] = file;
        before = file;
    }
    return pictures;
}

/// Collects a material's images in the order of the shader's ports.
class StageList
{
public:
    StageList(HostMaterial& material, const HostScene& scene, bool ignoresAmbient)
        : m_material(material),
          m_scene(scene),
          m_frame(scene.Frames.empty() ? 0.0 : scene.Frames.front().Host)
    {
        const XSI::Shader& surface = material.Surface;
        const std::string kind = surface.GetProgID().GetAsciiString();
        const bool isLit = kind != "Softimage.material-constant.1.0";
        if (!isLit)
            AddPort("color");
        if (isLit && Uses("diffuse_inuse")) {
            AddPort("diffuse");
            if (!ignoresAmbient)
                AddPort("ambient");
        }
        if (isLit && Uses("specular_inuse"))
            AddPort(kind == "Softimage.material-ward.1.0" ? "glossy" : "specular");
        if (Uses("refract_inuse"))
            AddTransparency();
        AddLayers();
        AddNormalMap();
    }

private:
    bool Uses(const char* flag) const { return FlagAt(m_material.Surface, flag, m_frame); }

    void Add(const XSI::CRef& shader, bool isNormalMap)
    {
        const XSI::Texture texture(shader);
        const XSI::ImageClip2 clip = texture.GetImageClip();
        const XSI::CString set = texture.GetParameterValue("tspace_id");
        const std::string file = clip.GetFileName().GetAsciiString();
        if (!file.empty())
            m_material.Stages.push_back({texture, set.GetAsciiString(), file, isNormalMap,
                                         PicturesOf(clip, static_cast<int>(m_scene.FirstFrame),
                                                    static_cast<int>(m_scene.LastFrame))});
    }

    void AddPort(const char* name)
    {
        const XSI::CRef source = SourceOf(m_material.Surface.GetParameter(name));
        if (IsImage(source))
            Add(source, false);
        else if (IsMix(source) && !m_mix.IsValid())
            AddMix(source);
    }

    void AddMix(const XSI::CRef& mix)
    {
        m_mix = mix;
        const auto size = std::min<LONG>(XSI::Shader(mix).GetParameterValue("mixersize"), 3);
        const char* const ports[] = {"base_color", "color1", "color2"};
        for (LONG i = 0; i < size; ++i) {
            const XSI::CRef source = SourceOf(XSI::Shader(mix).GetParameter(ports[i]));
            if (IsImage(source))
                Add(source, false);
        }
    }

    /// An image that is taken already is not taken again.
    void AddTransparency()
    {
        const XSI::CRef source = SourceOf(m_material.Surface.GetParameter("transparency"));
        const std::string file = XSI::Texture(source).GetImageClip().GetFileName().GetAsciiString();
        const bool isTaken = std::ranges::any_of(
            m_material.Stages, [&](const HostStage& stage) { return stage.ImageFile == file; });
        if (!IsImage(source) || !isTaken)
            AddPort("transparency");
    }

    void AddLayers()
    {
        const XSI::CRefArray layers = m_material.Surface.GetTextureLayers();
        for (LONG i = 0; i < layers.GetCount(); ++i) {
            const XSI::CRef source = SourceOf(XSI::TextureLayer(layers[i]).GetParameter("color"));
            if (IsImage(source))
                Add(source, false);
        }
    }

    void AddNormalMap()
    {
        const XSI::Shader bump(SourceOf(m_material.Object.GetParameter("normal")));
        const XSI::Shader map(SourceOf(bump.GetParameter("Map")));
        const XSI::CRef source = SourceOf(map.GetParameter("NormalMap"));
        if (IsImage(source))
            Add(source, true);
    }

    HostMaterial& m_material;
    const HostScene& m_scene;
    double m_frame;
    XSI::CRef m_mix;
};

/// Which materials of a mesh's list have a polygon.
std::vector<bool> UsedMaterials(const XSI::CGeometryAccessor& accessor)
{
    std::vector<bool> isUsed(static_cast<std::size_t>(accessor.GetMaterials().GetCount()), false);
    XSI::CLongArray indices;
    static_cast<void>(accessor.GetPolygonMaterialIndices(indices));
    for (LONG i = 0; i < indices.GetCount(); ++i)
        if (indices[i] >= 0 && indices[i] < static_cast<LONG>(isUsed.size()))
            isUsed[static_cast<std::size_t>(indices[i])] = true;
    return isUsed;
}

class SceneReader
{
public:
    SceneReader(HostScene& scene, const RoundTripSettings& settings) : m_scene(scene), m_settings(settings) {}

    void Read()
    {
        ReadFrames();
        const XSI::CRefArray roots = XSI::Application().GetActiveSceneRoot().GetChildren();
        if (roots.GetCount() != 1)
            m_scene.SyntheticRoot = m_names.Take("Tq4xRoot");
        m_scene.AmbientLight = m_names.Take("AmbientLight");
        for (LONG i = 0; i < roots.GetCount(); ++i)
            ReadBranch(roots[i]);
        for (HostNode& node : m_scene.Nodes)
            if (node.IsMesh)
                NumberUvSets(node);
    }

private:
    /// The frame is a running sum of the single-precision step.
    void ReadFrames()
    {
        const XSI::Property control(
            XSI::Application().GetActiveProject().GetProperties().Find(L"Play Control"));
        m_scene.FirstFrame = NumberAt(control, "GlobalIn", 0.0);
        m_scene.LastFrame = NumberAt(control, "GlobalOut", 0.0);
        if (m_settings.Range) {
            m_scene.FirstFrame = m_settings.Range->first - 1;
            m_scene.LastFrame = m_settings.Range->second - 1;
        }
        const int steps = 10 / static_cast<int>(static_cast<double>(m_settings.FramePrecision) * 10.0);
        const auto step = static_cast<double>(m_settings.FramePrecision);
        for (double frame = m_scene.FirstFrame; frame <= m_scene.LastFrame; frame += step)
            m_scene.Frames.push_back(
                {frame, static_cast<float>(m_scene.Frames.size()) / static_cast<float>(steps)});
    }

    void ReadBranch(const XSI::CRef& root)
    {
        std::vector<std::pair<XSI::CRef, int>> pending = {{root, -1}};
        while (!pending.empty()) {
            const auto [reference, parent] = pending.back();
            pending.pop_back();
            const int number = ReadNode(reference, parent);
            const XSI::CRefArray children = XSI::X3DObject(reference).GetChildren();
            for (LONG i = children.GetCount() - 1; i >= 0; --i)
                pending.emplace_back(children[i], number);
        }
    }

    int ReadNode(const XSI::CRef& reference, int parent)
    {
        HostNode node{XSI::X3DObject(reference), {}, parent, {}, {}, {}};
        node.Name = m_names.Take(NameOf(node.Object));
        node.IsMesh = node.Object.GetActivePrimitive().GetGeometry().GetRef().IsA(XSI::siPolygonMeshID);
        const int number = static_cast<int>(m_scene.Nodes.size());
        if (node.IsMesh)
            ReadMaterials(node, number);
        m_scene.Nodes.push_back(std::move(node));
        return number;
    }

    void ReadMaterials(HostNode& node, int number)
    {
        const XSI::CGeometryAccessor accessor = GeometryOf(node.Object);
        const XSI::CRefArray materials = accessor.GetMaterials();
        const std::vector<bool> isUsed = UsedMaterials(accessor);
        for (LONG i = 0; i < materials.GetCount(); ++i) {
            const int material = isUsed[static_cast<std::size_t>(i)] ? ReadMaterial(materials[i]) : -1;
            node.Materials.push_back(material);
            if (material < 0)
                continue;
            std::vector<int>& users = m_scene.Materials[static_cast<std::size_t>(material)].Users;
            if (users.empty() || users.back() != number)
                users.push_back(number);
        }
    }

    int ReadMaterial(const XSI::CRef& reference)
    {
        const int known = m_scene.FindMaterial(reference);
        if (known >= 0)
            return known;
        HostMaterial material{XSI::Material(reference), {}, {}, {}, {}};
        material.Name = m_materialNames.Take(LegalName(NameOf(material.Object)));
        material.Surface = XSI::Shader(SourceOf(material.Object.GetParameter("surface")));
        StageList(material, m_scene, m_settings.IgnoresAmbientTexture);
        m_scene.Materials.push_back(std::move(material));
        return static_cast<int>(m_scene.Materials.size()) - 1;
    }

    /// Sets are numbered by their first use in the mesh's materials, as these were met in the scene.
    void NumberUvSets(HostNode& node)
    {
        std::set<int> materials(node.Materials.begin(), node.Materials.end());
        materials.erase(-1);
        for (const int material : materials)
            for (const HostStage& stage : m_scene.Materials[static_cast<std::size_t>(material)].Stages)
                if (std::ranges::find(node.UvSets, stage.CoordinateSet) == node.UvSets.end())
                    node.UvSets.push_back(stage.CoordinateSet);
    }

    HostScene& m_scene;
    const RoundTripSettings& m_settings;
    Names m_names;
    Names m_materialNames;
};

} // namespace

int HostScene::FindNode(const XSI::CRef& object) const
{
    const auto found =
        std::ranges::find_if(Nodes, [&](const HostNode& node) { return node.Object == object; });
    return found == Nodes.end() ? -1 : static_cast<int>(found - Nodes.begin());
}

int HostScene::FindMaterial(const XSI::CRef& object) const
{
    const auto found = std::ranges::find_if(
        Materials, [&](const HostMaterial& material) { return material.Object == object; });
    return found == Materials.end() ? -1 : static_cast<int>(found - Materials.begin());
}

HostScene ReadHostScene(const RoundTripSettings& settings)
{
    HostScene scene;
    SceneReader(scene, settings).Read();
    return scene;
}

double NumberAt(const XSI::ProjectItem& item, const char* name, double frame)
{
    return static_cast<double>(item.GetParameterValue(name, frame));
}

bool FlagAt(const XSI::ProjectItem& item, const char* name, double frame, bool otherwise)
{
    const XSI::CValue value = item.GetParameterValue(name, frame);
    return value.IsEmpty() ? otherwise : static_cast<bool>(value);
}

XSI::Parameter VisibilityOf(const XSI::X3DObject& object)
{
    const XSI::CRefArray properties = object.GetProperties();
    for (LONG i = 0; i < properties.GetCount(); ++i)
        if (XSI::Property(properties[i]).GetType() == "visibility")
            return XSI::Property(properties[i]).GetParameter("viewvis");
    return {};
}

XSI::CGeometryAccessor GeometryOf(const XSI::X3DObject& object)
{
    return XSI::PolygonMesh(object.GetActivePrimitive().GetGeometry().GetRef()).GetGeometryAccessor();
}

XSI::Parameter ProjectionOf(const XSI::X3DObject& mesh, const std::string& set, const char* name)
{
    const XSI::CRefArray sets = GeometryOf(mesh).GetUVs();
    for (LONG i = 0; i < sets.GetCount(); ++i) {
        const XSI::CRefArray nested = XSI::SIObject(sets[i]).GetNestedObjects();
        if (NameOf(sets[i]) != set)
            continue;
        for (LONG k = 0; k < nested.GetCount(); ++k)
            if (nested[k].IsA(XSI::siPrimitiveID))
                return XSI::ProjectItem(nested[k]).GetParameter(name);
    }
    return {};
}

bool IsHierarchical(const XSI::X3DObject& object)
{
    return static_cast<bool>(object.GetParameterValue("siscaling"));
}

XSI::MATH::CMatrix4 GlobalAt(const XSI::X3DObject& object, double frame)
{
    return object.GetKinematics().GetGlobal().GetTransform(frame).GetMatrix4();
}

XSI::MATH::CMatrix4 LocalAt(const XSI::X3DObject& object, double frame)
{
    return object.GetKinematics().GetLocal().GetTransform(frame).GetMatrix4();
}

std::optional<XSI::MATH::CMatrix4> BindPoseOf(const HostNode& node)
{
    const XSI::X3DObject& object = node.Object;
    if (object.HasStaticKinematicState())
        return object.GetStaticKinematicState().GetTransform(0.0).GetMatrix4();
    if (node.IsMesh || object.IsA(XSI::siChainBoneID) || object.IsA(XSI::siChainEffectorID))
        return GlobalAt(object, 0.0);
    return std::nullopt;
}

XSI::CRef SourceOf(const XSI::Parameter& port)
{
    const XSI::CRef source = port.GetSource();
    return source.GetClassID() == XSI::siShaderParameterID ? XSI::SIObject(source).GetParent() : source;
}

std::string LegalName(const std::string& text)
{
    std::string legal = text;
    for (char& letter : legal) {
        const bool isAscii = static_cast<unsigned char>(letter) < 128;
        const bool isLegal = isAscii && (std::isalnum(static_cast<unsigned char>(letter)) != 0 ||
                                         letter == '-' || letter == '.' || letter == '_');
        if (!isLegal)
            letter = '_';
    }
    return legal;
}

std::string BaseName(const std::string& path)
{
    const std::size_t slash = path.find_last_of("/\\");
    const std::string file = slash == std::string::npos ? path : path.substr(slash + 1);
    return file.substr(0, file.rfind('.'));
}

} // namespace tq4x::test
