#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <xsi_ref.h>
#include <xsi_status.h>
#include <xsi_transformation.h>
#include <xsi_value.h>

#include "scene/ImageData.h"
#include "scene/MeshGeometry.h"

// The plain objects behind the handles. Relations are object numbers, so that a relation to an object that
// was deleted is merely one that finds nothing.

namespace XSI
{

class PluginRegistrar;

} // namespace XSI

namespace XSI::Host
{

using ObjectId = ULONG; ///< 0: none.

/// Numbers in the order in which they were added, each once.
class OrderedIds
{
public:
    /// False if the number is there already.
    bool Add(ObjectId id);
    bool Remove(ObjectId id);
    void Clear();

    /// Removes the numbers for which a function answers true.
    template<class Test>
    void RemoveIf(const Test& test)
    {
        std::erase_if(m_order, test);
        m_known = std::unordered_set<ObjectId>(m_order.begin(), m_order.end());
    }

    const std::vector<ObjectId>& InOrder() const { return m_order; }

private:
    std::vector<ObjectId> m_order;
    std::unordered_set<ObjectId> m_known;
};

/// What an object goes with: the scene that is open, or the process.
enum class Lifetime : unsigned char
{
    Scene,
    Session,
};

struct Object
{
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    /// Appends the objects that go when this one is deleted.
    virtual void ListOwned(std::vector<ObjectId>& owned) const;

    /// Takes an object that is deleted out of this one's lists.
    virtual void Forget(ObjectId id);

    ObjectId Id = 0;
    ObjectId Parent = 0;
    siClassID ClassId = siUnknownClassID;
    Lifetime Life = Lifetime::Scene;
    std::string Name;
    std::string Type;             ///< Type word, empty for classes that have none.
    std::vector<ObjectId> Nested; ///< Owned objects that are no children, properties or parameters.
};

/// What is fixed about a parameter once it exists. Limits are empty where there are none.
struct ParameterDefinition
{
    CValue::DataType Type = CValue::siDouble;
    CValue Default;
    CValue Min;
    CValue Max;
    CValue SuggestedMin;
    CValue SuggestedMax;
    std::string Label;
    std::string Description;
};

/// What drives a parameter instead of its constant.
struct ParameterSource
{
    siSourceType Kind = siUnknownSource;
    CRef Source;                                  ///< What GetSource answers.
    std::function<double(double frame)> Evaluate; ///< Empty for shaders: the constant stays the value.
};

struct ParameterObject : Object
{
    void ListOwned(std::vector<ObjectId>& owned) const override;
    void Forget(ObjectId id) override;

    std::shared_ptr<const ParameterDefinition> Definition;
    LONG Capabilities = siAnimatable | siPersistable;
    CValue Value;
    std::unique_ptr<ParameterSource> Driver; ///< None: constant.
    std::vector<ObjectId> Components;        ///< Of a colour: `red`, `green`, `blue`, `alpha`.
};

/// An object with parameters and properties.
struct ItemObject : Object
{
    void ListOwned(std::vector<ObjectId>& owned) const override;
    void Forget(ObjectId id) override;

    std::vector<ObjectId> Parameters;
    std::vector<ObjectId> Properties;
    ObjectId Layout = 0; ///< Of a custom property, made when asked for.
};

/// Global matrices of one node by frame. Frames ascend.
struct GlobalTrack
{
    std::vector<double> Frames;
    std::vector<MATH::CMatrix4> Matrices;
    std::list<ObjectId>::iterator Use; ///< Place in the cache's list of uses.
};

/// An object in space.
struct NodeObject : ItemObject
{
    void ListOwned(std::vector<ObjectId>& owned) const override;
    void Forget(ObjectId id) override;

    std::vector<ObjectId> Children;
    ObjectId Model = 0; ///< The nearest model above; the scene root has none.

    MATH::CTransformation Local;
    std::function<MATH::CTransformation(double frame)> LocalSource; ///< Empty: Local at every frame.
    std::optional<MATH::CTransformation> StaticState;               ///< Bind pose relative to the scene.
    ObjectId ScalingRule = 0;                                       ///< The parameter `siscaling`.
    std::unique_ptr<GlobalTrack> Track;                             ///< Belongs to the transform cache.

    ObjectId Kinematics = 0; ///< These three are made when asked for.
    ObjectId StaticKinematics = 0;
    ObjectId Primitive = 0;

    ObjectId Material = 0;
    siModelKind ModelKind = siModelKind_Regular;
    ObjectId InstanceMaster = 0;
    std::vector<ObjectId> Shaders; ///< Of a light.
};

struct KinematicsObject : ItemObject
{
    void ListOwned(std::vector<ObjectId>& owned) const override;
    void Forget(ObjectId id) override;

    ObjectId Local = 0;
    ObjectId Global = 0;
    std::vector<ObjectId> Constraints;
};

struct ConstraintObject : ItemObject
{
    std::vector<CRef> Constraining;
    CRef UpVector;
};

struct LibraryObject : ItemObject
{
    void ListOwned(std::vector<ObjectId>& owned) const override;
    void Forget(ObjectId id) override;

    std::vector<ObjectId> Materials;
};

struct SceneObject : ItemObject
{
    void ListOwned(std::vector<ObjectId>& owned) const override;
    void Forget(ObjectId id) override;

    ObjectId Root = 0;
    std::vector<ObjectId> Libraries;
};

struct MaterialObject : ItemObject
{
    OrderedIds UsedBy;
};

struct ShaderObject : ItemObject
{
    void ListOwned(std::vector<ObjectId>& owned) const override;
    void Forget(ObjectId id) override;

    std::string ProgId;
    std::vector<ObjectId> Layers;
    ObjectId Clip = 0; ///< Of a texture; clips may be shared and are not owned.
};

struct TimeControlObject : ItemObject
{
    double ClipIn = 0.0;
    double ClipOut = 0.0;
    double Scale = 1.0;
    double StartOffset = 1.0;
};

/// Gives the picture at a frame of the scene; null if it can't be had.
using ImageSource = std::function<std::shared_ptr<const ImageData>(double frame)>;

struct ClipObject : ItemObject
{
    void ListOwned(std::vector<ObjectId>& owned) const override;

    std::string FileName;
    ImageSource Pixels;
    ObjectId TimeControl = 0;
};

struct PrimitiveObject : ItemObject
{
    void ListOwned(std::vector<ObjectId>& owned) const override;

    ObjectId Geometry = 0;
};

struct GeometryObject : ItemObject
{
    void ListOwned(std::vector<ObjectId>& owned) const override;
    void Forget(ObjectId id) override;

    MeshGeometry Mesh;
    std::vector<ObjectId> Clusters;
};

struct ClusterObject : ItemObject
{
    ObjectId Material = 0;
};

/// What the values of a cluster property are for.
enum class ClusterPropertyKind
{
    UserNormal,
    Color, ///< Attributes of the user as well.
    Uv,
};

struct ClusterPropertyObject : ItemObject
{
    ClusterPropertyKind Kind = ClusterPropertyKind::Color;
    LONG ValueSize = 4;
    std::vector<float> Values;
    bool IsReadable = true; ///< False: GetValues fails.
};

/// The vertices that one object moves.
struct DeformerWeights
{
    CRef Deformer;
    std::vector<std::pair<LONG, double>> Weights; ///< Vertex and percentage; vertices not named have 0.
};

struct EnvelopeObject : ItemObject
{
    std::vector<DeformerWeights> Deformers;
    LONG VertexCount = 0;
};

using Attributes = std::map<std::string, CValue>;

struct ContextObject : Object
{
    CRef Source;
    LONG Event = 0; ///< Of a page's event.
    CRefArray Inspected;
    Attributes Values;
};

/// A function of a plug-in that the host calls by name.
using Callback = std::function<CStatus(CRef& context)>;

struct PluginObject : Object
{
    void ListOwned(std::vector<ObjectId>& owned) const override;

    std::string Author;
    std::string Label;
    LONG Major = 0;
    LONG Minor = 0;
    std::map<std::string, std::string> Notes; ///< Mail, address, help, categories.
    std::vector<ObjectId> Items; ///< Commands, property types and menus in order of registration.
    std::function<Callback(const std::string& name)> FindCallback;
    std::function<CStatus(PluginRegistrar& plugin)> Unload;
};

struct CommandObject : Object
{
    void ListOwned(std::vector<ObjectId>& owned) const override;

    std::string Description;
    bool HasReturnValue = false;
    std::vector<ObjectId> Arguments;
};

struct ArgumentObject : Object
{
    CValue Default;
    CValue Value;
};

struct MenuObject : Object
{
    void ListOwned(std::vector<ObjectId>& owned) const override;

    LONG Anchor = 0;
    bool IsDynamic = false;
    std::vector<ObjectId> Items;
};

struct MenuItemObject : Object
{
    std::string Callback; ///< Empty: a separator.
};

struct LayoutObject : Object
{
    void ListOwned(std::vector<ObjectId>& owned) const override;

    std::vector<ObjectId> Items;
    Attributes Values;
};

struct PageItemObject : Object
{
    std::string Control;
    std::string Label;
    CValueArray UiItems;
    Attributes Values;
};

struct ProgressState
{
    std::string Caption;
    std::string StatusText;
    bool IsVisible = false;
    bool IsCancelEnabled = true;
    bool IsCancelPressed = false;
    LONG Minimum = 0;
    LONG Maximum = 100;
    LONG Step = 1;
    LONG Value = 0;
};

struct ProgressObject : Object
{
    ProgressState State;
};

struct SelectionObject : Object
{
    OrderedIds Selected;
    std::uint64_t CheckedRevision = 0; ///< Of names, when deleted objects were last taken out.
};

} // namespace XSI::Host
