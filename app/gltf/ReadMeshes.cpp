#include <algorithm>
#include <array>
#include <string>

#include "gltf/ReadRecords.h"

namespace tq4x::gltf
{
namespace
{

constexpr std::size_t ModeCount = 7;

std::size_t AccessorOf(const JsonPlace& attributes, const std::string& name, const Document& document)
{
    return attributes.Require(name).IndexInto(document.Accessors.size(), "accessor");
}

std::vector<Attribute> ReadAttributes(const JsonPlace& place, const Document& document)
{
    const JsonObject* const members = place.Value().Object();
    if (members == nullptr) {
        place.Fail("This must be an object.");
    }
    std::vector<Attribute> attributes;
    for (const JsonMember& member : *members) {
        attributes.push_back({member.Key, AccessorOf(place, member.Key, document)});
    }
    return attributes;
}

// What the shape of an attribute's values must be, as a set of `AccessorShape` bits; attributes of other
// names may have any shape.
unsigned AllowedShapes(std::string_view name)
{
    constexpr auto Bit = [](AccessorShape shape) { return 1u << static_cast<unsigned>(shape); };

    struct Rule
    {
        std::string_view Prefix;
        unsigned Shapes;
    };

    static constexpr Rule Rules[] = {
        {"POSITION", Bit(AccessorShape::Vec3)},
        {"NORMAL", Bit(AccessorShape::Vec3)},
        {"TANGENT", Bit(AccessorShape::Vec4)},
        {"TEXCOORD_", Bit(AccessorShape::Vec2)},
        {"COLOR_", Bit(AccessorShape::Vec3) | Bit(AccessorShape::Vec4)},
        {"JOINTS_", Bit(AccessorShape::Vec4)},
        {"WEIGHTS_", Bit(AccessorShape::Vec4)},
    };
    const auto rule =
        std::ranges::find_if(Rules, [name](const Rule& entry) { return name.starts_with(entry.Prefix); });
    return rule == std::end(Rules) ? ~0u : rule->Shapes;
}

void CheckAttributes(const JsonPlace& place, const Primitive& primitive, const Document& document)
{
    if (primitive.Attributes.empty()) {
        return;
    }
    const std::uint64_t count = document.Accessors[primitive.Attributes.front().Accessor].Count;
    for (const Attribute& attribute : primitive.Attributes) {
        const Accessor& accessor = document.Accessors[attribute.Accessor];
        if ((AllowedShapes(attribute.Name) >> static_cast<unsigned>(accessor.Shape) & 1u) == 0) {
            place.Require(attribute.Name).Fail("The accessor's type does not suit this attribute.");
        }
        if (accessor.Count != count) {
            place.Require(attribute.Name)
                .Fail("This attribute has " + std::to_string(accessor.Count) +
                      " values, another one of the " + "primitive " + std::to_string(count) + ".");
        }
    }
}

void CheckIndices(const JsonPlace& place, const Accessor& accessor)
{
    if (accessor.Shape != AccessorShape::Scalar || !IsUnsigned(accessor.Type)) {
        place.Fail("Indices must be unsigned integers.");
    }
}

Primitive ReadPrimitive(const JsonPlace& place, const Document& document)
{
    Primitive primitive;
    const auto attributes = place.Require("attributes");
    primitive.Attributes = ReadAttributes(attributes, document);
    CheckAttributes(attributes, primitive, document);
    if (const auto indices = place.Find("indices")) {
        primitive.Indices = indices->IndexInto(document.Accessors.size(), "accessor");
        CheckIndices(*indices, document.Accessors[*primitive.Indices]);
    }
    primitive.Material = ReadIndex(place, "material", document.Materials.size(), "material");
    if (const auto mode = place.Find("mode")) {
        if (mode->Unsigned() >= ModeCount) {
            mode->Fail("There is no primitive mode " + std::to_string(mode->Unsigned()) + ".");
        }
        primitive.Mode = static_cast<PrimitiveMode>(mode->Unsigned());
    }
    primitive.TargetCount = ListSize(place, "targets");
    return primitive;
}

// One note for a mesh, however many of its primitives are left out.
void NoteUnread(const JsonPlace& place, const Mesh& mesh, Notes& notes)
{
    const std::string object = mesh.Name.empty() ? place.Pointer() : mesh.Name;
    const auto hasTargets = [](const Primitive& primitive) { return primitive.TargetCount > 0; };
    const auto isNoTriangle = [](const Primitive& primitive) {
        return primitive.Mode < PrimitiveMode::Triangles;
    };
    if (std::ranges::any_of(mesh.Primitives, hasTargets)) {
        notes.push_back(
            {NoteSeverity::Warning, object, "Morph targets are not read; the mesh keeps its base shape."});
    }
    if (std::ranges::any_of(mesh.Primitives, isNoTriangle)) {
        notes.push_back({NoteSeverity::Warning, object, "Points and lines are left out."});
    }
}

} // namespace

void ReadMeshes(const JsonPlace& root, Document& document)
{
    ForEachItem(root, "meshes", [&](const JsonPlace& place) {
        Mesh& mesh = document.Meshes.emplace_back();
        mesh.Name = ReadText(place, "name");
        ForEachItem(place, "primitives", [&](const JsonPlace& primitive) {
            mesh.Primitives.push_back(ReadPrimitive(primitive, document));
        });
        mesh.Extras = ReadExtras(place);
        NoteUnread(place, mesh, document.Unread);
    });
}

} // namespace tq4x::gltf
