#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

#include "gltf/AccessorReader.h"
#include "gltf/MeshParts.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

constexpr std::string_view UserAttribute = "_TQ4XUSER";

/// The normal of a triangle without area: any will do, but it must be one.
constexpr std::array<float, 3> AnyNormal = {0.0f, 0.0f, 1.0f};

using Corner = std::array<double, 3>;

Corner PositionAt(const MeshContent& content, std::size_t vertex)
{
    const double* const p = &content.Positions[3 * vertex];
    return {p[0], p[1], p[2]};
}

std::array<float, 3> FlatNormal(const Corner& a, const Corner& b, const Corner& c)
{
    const Corner u = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const Corner v = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
    const Corner n = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
    const double length = std::hypot(n[0], n[1], n[2]);
    if (!(length > 0.0) || !std::isfinite(length)) {
        return AnyNormal;
    }
    return {static_cast<float>(n[0] / length), static_cast<float>(n[1] / length),
            static_cast<float>(n[2] / length)};
}

void AppendFlatNormals(const MeshPart& part, MeshContent& content)
{
    for (std::size_t i = 0; i < part.Vertices.size(); i += 3) {
        const std::size_t first = part.FirstVertex + i;
        const auto normal = FlatNormal(PositionAt(content, first), PositionAt(content, first + 1),
                                       PositionAt(content, first + 2));
        for (int corner = 0; corner < 3; ++corner) {
            content.Normals.insert(content.Normals.end(), normal.begin(), normal.end());
        }
    }
}

/// Numbers that are none can't stand in any file; they become `replacement`.
float Finite(float value, float replacement)
{
    return std::isfinite(value) ? value : replacement;
}

/// All names of attributes with a prefix, in the order of their text, over all parts.
std::set<std::string> NamesWith(std::string_view prefix, const std::vector<MeshPart>& parts)
{
    std::set<std::string> names;
    for (const MeshPart& part : parts) {
        for (const Attribute& attribute : part.Source->Attributes) {
            if (attribute.Name.starts_with(prefix)) {
                names.insert(attribute.Name);
            }
        }
    }
    return names;
}

/// Most components that an attribute has in any part.
std::size_t MostComponents(const Document& document, const std::vector<MeshPart>& parts,
                           const std::string& name)
{
    std::size_t most = 0;
    for (const MeshPart& part : parts) {
        if (const Index accessor = part.Source->Find(name)) {
            most = std::max(most, ComponentCount(document.Accessors[*accessor].Shape));
        }
    }
    return most;
}

/// Appends a part's colours as four channels with the alpha turned round, white where it has none.
void AppendColors(const Document& document, const MeshPart& part, const std::string& name,
                  std::vector<float>& into)
{
    const Index accessor = part.Source->Find(name);
    const PartValues colors = accessor ? ReadPartValues(document, part, *accessor) : PartValues();
    for (std::size_t i = 0; i < part.Vertices.size(); ++i) {
        for (std::size_t channel = 0; channel < 4; ++channel) {
            const bool isThere = channel < colors.Components;
            const float value = isThere ? Finite(colors.Values[i * colors.Components + channel], 1.0f) : 1.0f;
            into.push_back(channel == 3 ? 1.0f - value : value);
        }
    }
}

void AppendCoordinates(const Document& document, const MeshPart& part, const std::string& name,
                       std::vector<float>& into)
{
    const Index accessor = part.Source->Find(name);
    const PartValues values = accessor ? ReadPartValues(document, part, *accessor) : PartValues();
    for (std::size_t i = 0; i < part.Vertices.size(); ++i) {
        const float u = accessor ? Finite(values.Values[2 * i], 0.0f) : 0.0f;
        const float v = accessor ? Finite(values.Values[2 * i + 1], 0.0f) : 0.0f;
        into.insert(into.end(), {u, 1.0f - v});
    }
}

/// The mode letter that asks the exporter for a stream of the kind that the file has.
char ModeLetter(ComponentType type)
{
    switch (type) {
    case ComponentType::Byte:
    case ComponentType::UnsignedByte:
        return 'b';
    case ComponentType::Short:
    case ComponentType::UnsignedShort:
        return 's';
    case ComponentType::UnsignedInt:
    case ComponentType::Float:
        return 'f';
    }
    return 'f';
}

/// "tq4xUser0_3f": slot, components and mode.
std::string UserName(const Document& document, const std::vector<MeshPart>& parts,
                     const std::string& attribute, std::size_t components)
{
    for (const MeshPart& part : parts) {
        if (const Index accessor = part.Source->Find(attribute)) {
            return "tq4xUser" + attribute.substr(UserAttribute.size()) + "_" + std::to_string(components) +
                   ModeLetter(document.Accessors[*accessor].Type);
        }
    }
    return {};
}

void AppendUserValues(const Document& document, const MeshPart& part, const std::string& name,
                      std::vector<float>& into)
{
    const Index accessor = part.Source->Find(name);
    const PartValues values = accessor ? ReadPartValues(document, part, *accessor) : PartValues();
    for (std::size_t i = 0; i < part.Vertices.size(); ++i) {
        for (std::size_t k = 0; k < 4; ++k) {
            into.push_back(k < values.Components ? Finite(values.Values[i * values.Components + k], 0.0f)
                                                 : 0.0f);
        }
    }
}

/// The attribute that each coordinate set of the mesh comes from: those that its materials ask for, and the
/// plain sets of all TEXCOORD_n.
std::map<std::string, std::string> SourcesOfSets(const std::vector<MeshPart>& parts,
                                                 const CoordinateSets& sets)
{
    std::map<std::string, std::string> sources;
    const std::set<std::string> attributes = NamesWith("TEXCOORD_", parts);
    for (const std::string& attribute : attributes) {
        sources[attribute] = attribute;
    }
    for (const MeshPart& part : parts) {
        for (const Index set :
             part.Source->Material ? sets.OfMaterial[*part.Source->Material] : std::array<Index, 2>()) {
            const std::string attribute =
                set ? "TEXCOORD_" + std::to_string(sets.Sets[*set].Attribute) : std::string();
            if (attributes.contains(attribute)) {
                sources[sets.Sets[*set].Name] = attribute;
            }
        }
    }
    return sources;
}

} // namespace

PartValues ReadPartValues(const Document& document, const MeshPart& part, std::size_t accessor)
{
    return {ComponentCount(document.Accessors[accessor].Shape),
            ReadFloatsAt(document, accessor, part.Vertices)};
}

void AppendPositions(const Document& document, const MeshPart& part, MeshContent& content)
{
    const PartValues positions = ReadPartValues(document, part, *part.Source->Find("POSITION"));
    for (std::size_t i = 0; i < positions.Values.size(); ++i) {
        if (!std::isfinite(positions.Values[i])) {
            throw SceneError(part.Place + "/attributes/POSITION",
                             "Vertex " + std::to_string(part.Vertices[i / 3]) + " is not at a finite place.");
        }
    }
    content.Positions.insert(content.Positions.end(), positions.Values.begin(), positions.Values.end());
}

void AppendNormals(const Document& document, const MeshPart& part, const std::string& meshName,
                   MeshContent& content, Notes& notes)
{
    const Index accessor = part.Source->Find("NORMAL");
    if (!accessor) {
        AppendFlatNormals(part, content);
        return;
    }
    const PartValues normals = ReadPartValues(document, part, *accessor);
    std::size_t badCount = 0;
    for (std::size_t i = 0; i < normals.Values.size(); i += 3) {
        const auto first = normals.Values.begin() + static_cast<std::ptrdiff_t>(i);
        const bool isFinite = std::all_of(first, first + 3, [](float x) { return std::isfinite(x); });
        badCount += isFinite ? 0 : 1;
        for (std::size_t k = 0; k < 3; ++k) {
            content.Normals.push_back(isFinite ? normals.Values[i + k] : AnyNormal[k]);
        }
    }
    if (badCount > 0) {
        notes.push_back({NoteSeverity::Warning, meshName,
                         std::to_string(badCount) + " normals are no numbers and were replaced."});
    }
}

void FillColors(const Document& document, const std::vector<MeshPart>& parts, MeshContent& content)
{
    for (const std::string& attribute : NamesWith("COLOR_", parts)) {
        VertexValues colors;
        colors.Name = MostComponents(document, parts, attribute) == 3 ? attribute + "_rgb" : attribute;
        for (const MeshPart& part : parts) {
            AppendColors(document, part, attribute, colors.Values);
        }
        content.Colors.push_back(std::move(colors));
    }
}

void FillCoordinates(const Document& document, const std::vector<MeshPart>& parts, const CoordinateSets& sets,
                     MeshContent& content)
{
    for (const auto& [name, attribute] : SourcesOfSets(parts, sets)) {
        VertexValues coordinates{name, 2, {}};
        for (const MeshPart& part : parts) {
            AppendCoordinates(document, part, attribute, coordinates.Values);
        }
        content.Coordinates.push_back(std::move(coordinates));
    }
}

void FillUserValues(const Document& document, const std::vector<MeshPart>& parts, MeshContent& content)
{
    for (const std::string& attribute : NamesWith(UserAttribute, parts)) {
        const std::string slot = attribute.substr(UserAttribute.size());
        const std::size_t components = MostComponents(document, parts, attribute);
        if (slot.size() != 1 || slot[0] < '0' || slot[0] > '2' || components > 4) {
            continue;
        }
        VertexValues values;
        values.Name = UserName(document, parts, attribute, components);
        for (const MeshPart& part : parts) {
            AppendUserValues(document, part, attribute, values.Values);
        }
        content.UserValues.push_back(std::move(values));
    }
}

} // namespace tq4x::gltf
