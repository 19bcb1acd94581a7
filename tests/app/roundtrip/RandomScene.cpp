#include "RandomScene.h"

#include "RandomCurves.h"
#include "RandomDraw.h"
#include "RandomMaterials.h"
#include "RandomMesh.h"
#include "RandomPictures.h"
#include "RandomSettings.h"
#include "scene/CreateMaterials.h"
#include "scene/CreateObjects.h"
#include "scene/CreateParameters.h"
#include "scene/SetTransforms.h"
#include "support/ExportRun.h"
#include "support/SceneBuilder.h"

#include <xsi_light.h>

namespace tq4x::test
{
namespace
{

using XSI::MATH::CTransformation;
using XSI::MATH::DegreesToRadians;

/// Fills the host's scene.
class SceneMaker
{
public:
    /// `reels` draws what came to the scenes later: the scenes of the seeds are else what they were.
    SceneMaker(RandomDraw& draw, RandomDraw& reels, const TimeLine& time, const RoundTripSettings& settings)
        : m_draw(draw),
          m_reels(reels),
          m_time(time),
          m_settings(settings),
          m_isHierarchical(draw.Chance(15)),
          m_isDeep(draw.Chance(30))
    {}

    void Make(const std::filesystem::path& folder, SourcePictures& pictures)
    {
        const std::vector<XSI::ImageClip2> clips = DrawPictures(m_draw, folder, pictures);
        MakeSequences(m_reels, clips, folder, WindowStart(), WindowEnd(), pictures);
        for (int i = m_draw.Int(1, 3); i > 0; --i)
            m_sets.push_back("set" + std::to_string(i));
        m_materials = DrawMaterials(m_draw, clips, m_sets, m_time);
        for (int i = m_draw.Int(2, 12); i > 0; --i)
            AddNode();
        const MeshSupplies supplies{m_materials, m_sets, m_time, m_settings.NonUniformScale ? 3u : 6u};
        for (const XSI::X3DObject& mesh : m_meshes) {
            DrawMesh(m_draw, mesh, supplies);
            if (!m_bones.empty() && m_draw.Chance(45))
                DrawSkin(m_draw, mesh, m_bones, supplies);
        }
        for (const XSI::X3DObject& camera : m_cameras)
            MayAim(camera);
        if (m_draw.Chance(50))
            DrawAmbience();
    }

private:
    int WindowStart() const
    {
        return m_settings.Range ? m_settings.Range->first - 1 : static_cast<int>(m_time.First);
    }

    int WindowEnd() const
    {
        return m_settings.Range ? m_settings.Range->second - 1 : static_cast<int>(m_time.Last);
    }

    /// Every third name is used again.
    std::string Name()
    {
        return m_draw.Of<std::string>({"arm", "arm", "box.1", "Lamp",
                                       "node-" + std::to_string(m_nodes.size()),
                                       "part " + std::to_string(m_nodes.size())});
    }

    XSI::CRef Parent()
    {
        if (m_nodes.empty() || m_draw.Chance(m_isDeep ? 5 : 30))
            return {};
        return m_isDeep && m_draw.Chance(70) ? m_nodes.back() : m_draw.Of(m_nodes);
    }

    void AddNode()
    {
        const XSI::X3DObject node = MakeNode(Name(), Parent());
        m_nodes.push_back(node);
        XSI::Host::SetScalingRule(node, m_isHierarchical);
        Place(node);
        DrawVisibility(node);
    }

    XSI::X3DObject MakeNode(const std::string& name, const XSI::CRef& parent)
    {
        const int kind =
            m_nodes.empty() ? 0 : m_draw.Int(0, 9); // an export needs more than cameras and lights
        if (kind <= 3) {
            m_meshes.push_back(XSI::Host::CreateMesh(parent, name, {}));
            if (m_draw.Chance(15))
                m_bound.push_back(m_meshes.back());
            return m_meshes.back();
        }
        if (kind <= 5) {
            m_bones.push_back(XSI::Host::CreateChainBone(parent, name));
            return m_bones.back();
        }
        if (kind == 6) {
            m_bones.push_back(XSI::Host::CreateNull(parent, name));
            m_bound.push_back(m_bones.back());
            return m_bones.back();
        }
        if (kind == 7)
            return XSI::Host::CreateNull(parent, name);
        return kind == 8 ? MakeCamera(name, parent) : MakeLight(name, parent);
    }

    CTransformation DrawTransform()
    {
        CTransformation transform;
        const auto scale = [&] { return m_draw.Real(0.3, 2.5); };
        const int scaling = m_draw.Int(0, 9);
        const double uniform = scaling < 5 ? 1.0 : scale();
        transform.SetScalingFromValues(uniform, uniform, uniform);
        if (scaling >= 8)
            transform.SetScalingFromValues(scale(), scale() * (m_draw.Chance(30) ? -1.0 : 1.0), scale());
        const bool isRight = m_draw.Chance(25);
        const auto angle = [&] {
            return DegreesToRadians(isRight ? 90.0 * m_draw.Int(-2, 2) : m_draw.Real(-180.0, 180.0));
        };
        if (!m_draw.Chance(20))
            transform.SetRotationFromXYZAnglesValues(angle(), angle(), angle());
        const double reach = m_draw.Of<double>({1.0, 10.0, 300.0});
        const auto place = [&] { return m_draw.Real(-reach, reach); };
        if (!m_draw.Chance(15))
            transform.SetTranslationFromValues(place(), place(), place());
        return transform;
    }

    void Place(const XSI::X3DObject& node)
    {
        XSI::Host::SetLocalTransform(node, DrawTransform());
        if (m_draw.Chance(45)) {
            XSI::Host::TransformCurves curves;
            for (std::size_t axis = 0; axis < 3; ++axis) {
                curves.Translation[axis] = DrawRestingCurve(m_draw, m_time, -20.0, 20.0);
                curves.Rotation[axis] = DrawRestingCurve(m_draw, m_time, -400.0, 400.0);
                curves.Scaling[axis] =
                    m_draw.Chance(30) ? DrawRestingCurve(m_draw, m_time, 0.5, 2.0) : XSI::Host::Curve();
            }
            XSI::Host::SetLocalTransformCurves(node, curves);
        }
        if (!m_bound.empty() && m_bound.back() == node)
            XSI::Host::SetStaticTransform(node, m_draw.Chance(50)
                                                    ? node.GetKinematics().GetGlobal().GetTransform(0.0)
                                                    : DrawTransform());
    }

    void DrawVisibility(const XSI::X3DObject& node)
    {
        if (!m_draw.Chance(40))
            return;
        const XSI::Parameter visibility = XSI::Host::SetVisibility(node, m_draw.Chance(60));
        if (!m_draw.Chance(50))
            return;
        XSI::Host::Curve curve = DrawCurve(m_draw, m_time, 0.0, 1.0);
        curve.Interpolation = XSI::Host::Curve::Shape::Step;
        for (XSI::Host::Curve::Key& key : curve.Keys)
            key.Value = key.Value < 0.5 ? 0.0 : 1.0;
        XSI::Host::SetCurve(visibility, curve);
    }

    void SetAndMove(const XSI::CRef& object, const char* name, double low, double high)
    {
        MayMove(m_draw, XSI::Host::AddParameter(object, name, m_draw.Real(low, high)), 25, m_time, low, high);
    }

    XSI::X3DObject MakeCamera(const std::string& name, const XSI::CRef& parent)
    {
        const XSI::X3DObject camera = XSI::Host::CreateCamera(parent, name);
        m_cameras.push_back(camera);
        XSI::Host::AddParameter(camera, "proj", m_draw.Int(0, 1));
        XSI::Host::AddParameter(camera, "fovtype", m_draw.Int(0, 1));
        XSI::Host::AddParameter(camera, "aspect", m_draw.Real(0.5, 2.0));
        SetAndMove(camera, "fov", 10.0, 120.0);
        SetAndMove(camera, "near", 0.01, 1.0);
        SetAndMove(camera, "far", 50.0, 5000.0);
        SetAndMove(camera, "orthoheight", 1.0, 50.0);
        SetAndMove(camera, "projplanewidth", 2.0, 6.0);
        return camera;
    }

    /// Whether the three are never in line: no direction is upward then.
    bool SpanPlane(const XSI::X3DObject& a, const XSI::X3DObject& b, const XSI::X3DObject& c) const
    {
        const auto placeAt = [](const XSI::X3DObject& object, double frame) {
            return object.GetKinematics().GetGlobal().GetTransform(frame).GetTranslation();
        };
        for (int tenth = m_time.First * 10; tenth <= m_time.Last * 10; ++tenth) {
            const double frame = tenth / 10.0;
            XSI::MATH::CVector3 ab = placeAt(b, frame), ac = placeAt(c, frame), cross;
            ab.SubInPlace(placeAt(a, frame));
            ac.SubInPlace(placeAt(a, frame));
            cross.Cross(ab, ac);
            if (!(cross.GetLength() > 0.05 * ab.GetLength() * ac.GetLength()))
                return false;
        }
        return true;
    }

    void MayAim(const XSI::X3DObject& camera)
    {
        const XSI::CRef target = m_draw.Of(m_nodes), up = m_draw.Of(m_nodes);
        const bool hasUp = m_draw.Chance(50);
        if (target == camera || !m_draw.Chance(60) || (hasUp && !SpanPlane(camera, target, up)))
            return;
        const XSI::Constraint constraint =
            XSI::Host::AddConstraint(camera, {target}, hasUp ? up : XSI::CRef(), m_draw.Real(-200.0, 200.0));
        MayMove(m_draw, constraint.GetParameter("roll"), 40, m_time, -300.0, 300.0);
    }

    XSI::X3DObject MakeLight(const std::string& name, const XSI::CRef& parent)
    {
        const auto type = static_cast<XSI::Host::LightType>(m_draw.Int(0, 2));
        const XSI::Light light = XSI::Host::CreateLight(parent, name, type);
        XSI::Host::AddParameter(light, "LightCone", m_draw.Real(5.0, 170.0));
        XSI::Host::AddParameter(light, "DiffuseContribution", m_draw.Chance(80));
        XSI::Host::AddParameter(light, "SpecularContribution", m_draw.Chance(80));
        const XSI::Shader shader = XSI::Host::LightShaderOf(light);
        XSI::Host::AddParameter(shader, "spread", m_draw.Real(0.5, 30.0));
        SetAndMove(shader, "intensity", 0.0, 4.0);
        for (const char* component : {"red", "green", "blue"}) {
            const XSI::Parameter color = shader.GetParameter("color").GetParameter(component);
            XSI::Host::SetCurve(color, DrawCurve(m_draw, m_time, 0.0, 1.0));
            if (!m_draw.Chance(20))
                XSI::Host::RemoveSource(color);
        }
        return light;
    }

    void DrawAmbience()
    {
        const XSI::Parameter ambience =
            XSI::Host::SetAmbience(m_draw.Real(0.0, 1.0), m_draw.Real(0.0, 1.0), m_draw.Real(0.0, 1.0));
        MayMove(m_draw, ambience.GetParameter("green"), 30, m_time, 0.0, 1.0);
    }

    RandomDraw& m_draw;
    RandomDraw& m_reels;
    const TimeLine& m_time;
    const RoundTripSettings& m_settings;
    bool m_isHierarchical;
    bool m_isDeep;
    std::vector<std::string> m_sets;
    std::vector<XSI::Material> m_materials;
    std::vector<XSI::X3DObject> m_nodes;
    std::vector<XSI::X3DObject> m_meshes;
    std::vector<XSI::X3DObject> m_bones; ///< objects with a bind pose, which may move skins
    std::vector<XSI::X3DObject> m_bound; ///< objects whose bind pose is stored
    std::vector<XSI::X3DObject> m_cameras;
};

} // namespace

RandomScene::RandomScene(std::uint32_t seed)
{
    SceneBuilder scene;
    ExportRun::EnsurePlugin();
    RandomDraw draw(seed);
    const int first = draw.Of<int>({0, 0, 0, 5, -3});
    const TimeLine time{first, first + (draw.Chance(15) ? 0 : draw.Int(1, 12))};
    scene.Frames(time.First, time.Last);
    m_settings = DrawSettings(draw, time.First, time.Last);
    RandomDraw reels(~seed);
    SceneMaker(draw, reels, time, m_settings).Make(m_folder.Path(), m_pictures);
}

} // namespace tq4x::test
