#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "gltf/JsonValue.h"
#include "gltf/Note.h"

/// A glTF 2.0 document as typed records. The lists are those of the file, in its order; whatever refers to
/// another record holds its index, and the reader has checked that it exists. Lengths and angles are as in
/// the file: metres, radians, seconds.
namespace tq4x::gltf
{

using Index = std::optional<std::size_t>;
using Bytes = std::vector<std::uint8_t>;

struct Buffer
{
    std::string Name;
    std::uint64_t ByteLength = 0;
    std::string Uri; ///< empty: the binary chunk of a .glb
    Bytes Data;      ///< `ByteLength` bytes once the document is open
};

struct BufferView
{
    std::string Name;
    std::size_t Buffer = 0;
    std::uint64_t ByteOffset = 0;
    std::uint64_t ByteLength = 0;
    std::uint64_t ByteStride = 0; ///< 0: elements are packed
};

enum class ComponentType : std::uint16_t
{
    Byte = 5120,
    UnsignedByte = 5121,
    Short = 5122,
    UnsignedShort = 5123,
    UnsignedInt = 5125,
    Float = 5126,
};

enum class AccessorShape : std::uint8_t
{
    Scalar,
    Vec2,
    Vec3,
    Vec4,
    Mat2,
    Mat3,
    Mat4,
};

/// Values that replace those of the base. The indices rise strictly.
struct SparseValues
{
    std::uint64_t Count = 0;
    std::size_t IndicesView = 0;
    std::uint64_t IndicesOffset = 0;
    ComponentType IndicesType = ComponentType::UnsignedShort;
    std::size_t ValuesView = 0;
    std::uint64_t ValuesOffset = 0;
};

struct Accessor
{
    std::string Name;
    Index View; ///< none: all zeros
    std::uint64_t ByteOffset = 0;
    ComponentType Type = ComponentType::Float;
    bool Normalized = false;
    std::uint64_t Count = 0;
    AccessorShape Shape = AccessorShape::Scalar;
    std::optional<SparseValues> Sparse;
};

struct Image
{
    std::string Name;
    std::string Uri;            ///< as in the file, empty for embedded ones and for data: URIs
    std::filesystem::path File; ///< where `Uri` points to; may be missing on disk
    std::string MimeType;
    Index View; ///< embedded in a buffer
    Bytes Data; ///< embedded as a data: URI
};

enum class Wrap : std::uint16_t
{
    ClampToEdge = 33071,
    MirroredRepeat = 33648,
    Repeat = 10497,
};

struct Sampler
{
    std::string Name;
    std::optional<std::uint16_t> MagFilter; ///< numbers of OpenGL, as in the file
    std::optional<std::uint16_t> MinFilter;
    Wrap WrapS = Wrap::Repeat;
    Wrap WrapT = Wrap::Repeat;
};

struct Texture
{
    std::string Name;
    Index Sampler;
    Index Source; ///< none: an extension holds the image, in a form that is not read
};

/// KHR_texture_transform: coordinates are scaled, then turned, then moved.
struct TextureTransform
{
    std::array<double, 2> Offset = {0.0, 0.0};
    double Rotation = 0.0; ///< radians, counter-clockwise in a picture whose v points down
    std::array<double, 2> Scale = {1.0, 1.0};
};

struct TextureUse
{
    std::size_t Texture = 0;
    std::size_t CoordinateSet = 0; ///< the number of TEXCOORD_n
    std::optional<TextureTransform> Transform;
    double Scale = 1.0; ///< `scale` of a normal texture, `strength` of an occlusion texture
};

enum class AlphaMode : std::uint8_t
{
    Opaque,
    Mask,
    Blend,
};

/// KHR_materials_pbrSpecularGlossiness; its diffuse colour and texture stand as the material's base colour.
struct SpecularGlossiness
{
    std::array<double, 3> Specular = {1.0, 1.0, 1.0};
    double Glossiness = 1.0;
};

struct Material
{
    std::string Name;
    std::array<double, 4> BaseColor = {1.0, 1.0, 1.0, 1.0};
    double Metallic = 1.0;
    double Roughness = 1.0;
    std::array<double, 3> Emissive = {0.0, 0.0, 0.0};
    double EmissiveStrength = 1.0; ///< KHR_materials_emissive_strength
    std::optional<TextureUse> BaseColorTexture;
    std::optional<TextureUse> MetallicRoughnessTexture;
    std::optional<TextureUse> NormalTexture;
    std::optional<TextureUse> OcclusionTexture;
    std::optional<TextureUse> EmissiveTexture;
    AlphaMode Alpha = AlphaMode::Opaque;
    double AlphaCutoff = 0.5;
    bool DoubleSided = false;
    bool Unlit = false; ///< KHR_materials_unlit
    std::optional<SpecularGlossiness> Gloss;
    JsonValue Extras;
};

/// The numbers of `mode`.
enum class PrimitiveMode : std::uint8_t
{
    Points,
    Lines,
    LineLoop,
    LineStrip,
    Triangles,
    TriangleStrip,
    TriangleFan,
};

struct Attribute
{
    std::string Name; ///< "POSITION", "TEXCOORD_0", "_TQ4XUSER0" ...
    std::size_t Accessor = 0;
};

struct Primitive
{
    std::vector<Attribute> Attributes; ///< in the order of the file
    Index Indices;                     ///< none: the vertices in their order
    Index Material;                    ///< none: the default material
    PrimitiveMode Mode = PrimitiveMode::Triangles;
    std::size_t TargetCount = 0; ///< morph targets

    /// The accessor of an attribute, none where the primitive has no such attribute.
    [[nodiscard]] Index Find(std::string_view name) const;
};

struct Mesh
{
    std::string Name;
    std::vector<Primitive> Primitives;
    JsonValue Extras;
};

struct Camera
{
    std::string Name;
    bool IsPerspective = true;
    std::optional<double> AspectRatio; ///< width over height; absent: that of the picture to be made
    double VerticalAngle = 0.0;        ///< radians
    double HalfWidth = 0.0;            ///< `xmag` and `ymag` of an orthographic camera
    double HalfHeight = 0.0;
    double Near = 0.0;
    std::optional<double> Far; ///< absent: infinite
};

enum class LightKind : std::uint8_t
{
    Directional,
    Point,
    Spot,
};

/// KHR_lights_punctual.
struct Light
{
    std::string Name;
    LightKind Kind = LightKind::Directional;
    std::array<double, 3> Color = {1.0, 1.0, 1.0};
    double Intensity = 1.0; ///< candela, or lux for directional lights
    double InnerConeAngle = 0.0;
    double OuterConeAngle = 0.78539816339744831; ///< radians from the axis
};

struct Node
{
    std::string Name;
    std::vector<std::size_t> Children;
    Index Parent;
    std::optional<std::array<double, 16>> Matrix; ///< column after column; else the three below
    std::array<double, 3> Translation = {0.0, 0.0, 0.0};
    std::array<double, 4> Rotation = {0.0, 0.0, 0.0, 1.0}; ///< unit quaternion x, y, z, w
    std::array<double, 3> Scale = {1.0, 1.0, 1.0};
    Index Mesh;
    Index Skin;
    Index Camera;
    Index Light;
    std::optional<bool> Visible; ///< KHR_node_visibility
    JsonValue Extras;
};

struct Skin
{
    std::string Name;
    Index InverseBindMatrices; ///< accessor; none: identities
    std::vector<std::size_t> Joints;
};

enum class Interpolation : std::uint8_t
{
    Step,
    Linear,
    CubicSpline,
};

struct AnimationSampler
{
    std::size_t Input = 0;
    std::size_t Output = 0;
    Interpolation Shape = Interpolation::Linear;
};

/// What a channel moves. The words in comments are those of `path`, or the end of the JSON pointer of
/// KHR_animation_pointer.
enum class AnimatedProperty : std::uint8_t
{
    Translation,
    Rotation,
    Scale,
    Visible,   ///< extensions/KHR_node_visibility/visible
    BaseColor, ///< pbrMetallicRoughness/baseColorFactor
    Emissive,  ///< emissiveFactor
    EmissiveStrength,
    TextureOffset,   ///< .../extensions/KHR_texture_transform/offset
    TextureRotation, ///< .../rotation
    TextureScale,    ///< .../scale
    VerticalAngle,   ///< cameras: perspective/yfov
    AspectRatio,     ///< perspective/aspectRatio
    HalfWidth,       ///< orthographic/xmag
    HalfHeight,      ///< orthographic/ymag
    Near,            ///< .../znear
    Far,             ///< .../zfar
    LightColor,      ///< lights: color
    LightIntensity,  ///< intensity
    InnerConeAngle,  ///< spot/innerConeAngle
    OuterConeAngle,  ///< spot/outerConeAngle
};

/// The textures of a material whose transforms can move.
enum class TextureSlot : std::uint8_t
{
    BaseColor,
    Normal,
    Emissive,
};

struct AnimationChannel
{
    std::size_t Sampler = 0;
    AnimatedProperty Property = AnimatedProperty::Translation;
    std::size_t Object = 0; ///< node, material, camera or light, as the property says
    TextureSlot Slot = TextureSlot::BaseColor;
};

struct Animation
{
    std::string Name;
    std::vector<AnimationSampler> Samplers;
    std::vector<AnimationChannel> Channels; ///< without those that are not read; these are noted
    Notes Unread;                           ///< about channels, for whoever uses this animation
};

struct Scene
{
    std::string Name;
    std::vector<std::size_t> Roots;
    JsonValue Extras;
};

struct Document
{
    std::string Generator;
    std::vector<std::string> ExtensionsUsed;
    std::vector<std::string> ExtensionsRequired;
    std::vector<Buffer> Buffers;
    std::vector<BufferView> Views;
    std::vector<Accessor> Accessors;
    std::vector<Image> Images;
    std::vector<Sampler> Samplers;
    std::vector<Texture> Textures;
    std::vector<Material> Materials;
    std::vector<Mesh> Meshes;
    std::vector<Camera> Cameras;
    std::vector<Light> Lights;
    std::vector<Node> Nodes; ///< a forest: no cycle, at most one parent each
    std::vector<Skin> Skins;
    std::vector<Animation> Animations;
    std::vector<Scene> Scenes;
    std::vector<std::size_t> Roots; ///< of the default scene: the one named, else the first, else all roots
    std::string SceneName;
    JsonValue SceneExtras;
    Notes Unread; ///< what the file has and this reader does not take over
};

/// "Root/Arm/Hand": names from the root down, "node3" for a node without one.
[[nodiscard]] std::string NodePath(const Document& document, std::size_t node);
[[nodiscard]] std::string NodeName(const Document& document, std::size_t node);

/// "material3" for a material without a name.
[[nodiscard]] std::string MaterialName(const Document& document, std::size_t material);

/// Nodes of the default scene, parents first, children in file order.
[[nodiscard]] std::vector<std::size_t> NodesInOrder(const Document& document);

[[nodiscard]] constexpr std::size_t ComponentCount(AccessorShape shape)
{
    switch (shape) {
    case AccessorShape::Scalar:
        return 1;
    case AccessorShape::Vec2:
        return 2;
    case AccessorShape::Vec3:
        return 3;
    case AccessorShape::Vec4:
    case AccessorShape::Mat2:
        return 4;
    case AccessorShape::Mat3:
        return 9;
    case AccessorShape::Mat4:
        return 16;
    }
    return 0; // no other shape is ever read
}

[[nodiscard]] constexpr std::size_t ByteSize(ComponentType type)
{
    switch (type) {
    case ComponentType::Byte:
    case ComponentType::UnsignedByte:
        return 1;
    case ComponentType::Short:
    case ComponentType::UnsignedShort:
        return 2;
    case ComponentType::UnsignedInt:
    case ComponentType::Float:
        return 4;
    }
    return 4;
}

/// The types that indices may have.
[[nodiscard]] constexpr bool IsUnsigned(ComponentType type)
{
    return type == ComponentType::UnsignedByte || type == ComponentType::UnsignedShort ||
           type == ComponentType::UnsignedInt;
}

} // namespace tq4x::gltf
