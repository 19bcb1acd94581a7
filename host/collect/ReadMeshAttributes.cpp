#include "collect/ReadMeshAttributes.h"
#include "export/Each.h"

#include "pipeline/MessageLog.h"

#include <xsi_clusterproperty.h>
#include <xsi_doublearray.h>
#include <xsi_floatarray.h>

#include <algorithm>
#include <string_view>

namespace tq4x
{
namespace
{

constexpr std::string_view UserAttributePrefix = "tq4xUser";

ReadResult GiveUp(const std::string& what, const std::string& name)
{
    PrintMessage("Can't get vertex " + what + "(" + name + ").", Severity::Error);
    return ReadResult::GivenUp;
}

ReadResult GiveUpInternally(const std::string& name)
{
    ReportMessage(MessageCode::InternalError, name);
    return ReadResult::GivenUp;
}

ReadResult ReadPositions(const XSI::CGeometryAccessor& accessor, const std::string& name,
                         std::vector<Vector3>& positions)
{
    XSI::CDoubleArray values;
    if (!accessor.GetVertexPositions(values).Succeeded())
        return GiveUp("position", name);
    if (values.GetCount() % 3 != 0)
        return GiveUpInternally(name);
    positions.reserve(static_cast<std::size_t>(values.GetCount() / 3));
    for (LONG i = 0; i < values.GetCount(); i += 3)
        positions.push_back({static_cast<float>(values[i]), static_cast<float>(values[i + 1]),
                             static_cast<float>(values[i + 2])});
    return ReadResult::Done;
}

/// The first user property's values in the place of the base, but for nodes that it leaves unset.
void ApplyUserNormals(const XSI::CGeometryAccessor& accessor, std::vector<Vector3>& normals)
{
    const XSI::CRefArray properties = accessor.GetUserNormals();
    XSI::CFloatArray values;
    if (properties.GetCount() == 0 || !XSI::ClusterProperty(properties[0]).GetValues(values).Succeeded())
        return;
    if (static_cast<std::size_t>(values.GetCount()) != normals.size() * 3)
        return;
    for (std::size_t node = 0; node < normals.size(); ++node) {
        const auto first = static_cast<LONG>(node * 3);
        const Vector3 normal{values[first], values[first + 1], values[first + 2]};
        if (normal != Vector3{})
            normals[node] = normal;
    }
}

ReadResult ReadNormals(const XSI::CGeometryAccessor& accessor, const std::string& name,
                       std::vector<Vector3>& normals)
{
    XSI::CFloatArray values;
    if (!accessor.GetNodeNormals(values).Succeeded())
        return GiveUp("color", name); // normals and colours share their message
    if (values.GetCount() != accessor.GetNodeCount() * 3)
        return GiveUpInternally(name);
    normals.reserve(static_cast<std::size_t>(accessor.GetNodeCount()));
    for (LONG i = 0; i < values.GetCount(); i += 3)
        normals.push_back({values[i], values[i + 1], values[i + 2]});
    ApplyUserNormals(accessor, normals);
    if (std::find(normals.begin(), normals.end(), Vector3{}) != normals.end())
        ReportMessage(MessageCode::ZeroNormal, name);
    return ReadResult::Done;
}

/// The slot that a property of this name fills, if it is one of the user's attributes.
std::optional<std::size_t> UserAttributeNumber(std::string_view name)
{
    if (!name.starts_with(UserAttributePrefix) || name.size() == UserAttributePrefix.size())
        return std::nullopt;
    const char digit = name[UserAttributePrefix.size()];
    if (digit < '0' || digit > '2')
        return std::nullopt;
    return static_cast<std::size_t>(digit - '0');
}

bool IsColor(std::string_view name)
{
    return !name.starts_with("Tangents") && !name.starts_with("XSI_UserNormals") &&
           !UserAttributeNumber(name);
}

/// What follows the last "_" of a name; nothing without one.
std::optional<std::string_view> LastPiece(std::string_view name)
{
    const std::size_t place = name.rfind('_');
    if (place == std::string_view::npos)
        return std::nullopt;
    return name.substr(place + 1);
}

/// Four floats per node. False if they can't be read; `isComplete` tells whether there is one for each node.
bool ReadVectors(const XSI::CRef& property, LONG nodeCount, std::vector<Vector4>& vectors, bool& isComplete)
{
    XSI::CFloatArray values;
    if (!XSI::ClusterProperty(property).GetValues(values).Succeeded())
        return false;
    isComplete = values.GetCount() == nodeCount * 4;
    if (!isComplete)
        return true;
    vectors.reserve(static_cast<std::size_t>(nodeCount));
    for (LONG i = 0; i < values.GetCount(); i += 4)
        vectors.push_back({values[i], values[i + 1], values[i + 2], values[i + 3]});
    return true;
}

ReadResult ReadColors(const XSI::CGeometryAccessor& accessor, const std::string& name, bool invertAlpha,
                      MeshAttributes& attributes)
{
    std::map<std::string, XSI::CRef> candidates;
    for (const XSI::CRef& property : Each(accessor.GetVertexColors())) {
        const std::string propertyName = XSI::SIObject(property).GetName().GetAsciiString();
        if (IsColor(propertyName))
            candidates.try_emplace(propertyName, property);
    }
    if (candidates.empty())
        return ReadResult::Done;
    const auto& [colorName, property] = *candidates.begin();
    attributes.ColorName = colorName;
    attributes.ColorDimension = LastPiece(colorName) == "rgb" ? 3 : 4;
    bool isComplete = false;
    if (!ReadVectors(property, accessor.GetNodeCount(), attributes.Colors, isComplete))
        return GiveUp("color", name);
    if (!isComplete)
        return GiveUpInternally(name);
    if (invertAlpha)
        for (Vector4& color : attributes.Colors)
            color.W = 1.0f - color.W;
    return ReadResult::Done;
}

/// Dimension and storage from the end of the name: "_3f" is three components stored as floats.
void ReadUserAttributeForm(UserAttribute& attribute)
{
    std::string_view form = LastPiece(attribute.Name).value_or("");
    if (!form.empty() && form.front() >= '1' && form.front() <= '4') {
        attribute.Dimension = form.front() - '0';
        form.remove_prefix(1);
    }
    if (form.starts_with('f'))
        attribute.Mode = QuantizedMode::Float;
    else if (form.starts_with('s'))
        attribute.Mode = QuantizedMode::Short;
}

ReadResult ReadUserAttributes(const XSI::CGeometryAccessor& accessor, const std::string& name,
                              MeshAttributes& attributes)
{
    for (const XSI::CRef& property : Each(accessor.GetVertexColors())) {
        UserAttribute attribute;
        attribute.Name = XSI::SIObject(property).GetName().GetAsciiString();
        const std::optional<std::size_t> number = UserAttributeNumber(attribute.Name);
        if (!number)
            continue;
        std::optional<UserAttribute>& place = attributes.UserAttributes[*number];
        if (place) {
            ReportMessage(MessageCode::SameUserAttribute, place->Name + ": " + attribute.Name);
            return ReadResult::GivenUp;
        }
        ReadUserAttributeForm(attribute);
        bool isComplete = false;
        if (!ReadVectors(property, accessor.GetNodeCount(), attribute.Values, isComplete))
            return GiveUp("user data", name);
        if (!isComplete)
            return GiveUpInternally(name);
        place = std::move(attribute);
    }
    return ReadResult::Done;
}

ReadResult ReadCoordinates(const XSI::CGeometryAccessor& accessor, const std::string& name,
                           MeshAttributes& attributes)
{
    const LONG nodeCount = accessor.GetNodeCount();
    for (const XSI::CRef& reference : Each(accessor.GetUVs())) {
        const XSI::ClusterProperty property(reference);
        XSI::CFloatArray values;
        if (!property.GetValues(values).Succeeded())
            return GiveUp("UV", name);
        const LONG width = property.GetValueSize(); // components behind the second are not taken
        if (width < 2 || values.GetCount() != nodeCount * width)
            return GiveUpInternally(name);
        CoordinateSet set;
        set.Record = ReadUvRecord(reference);
        set.Values.reserve(static_cast<std::size_t>(nodeCount));
        for (LONG i = 0; i < values.GetCount(); i += width)
            set.Values.push_back({values[i], values[i + 1]});
        attributes.CoordinateSets.try_emplace(property.GetName().GetAsciiString(), std::move(set));
    }
    return ReadResult::Done;
}

} // namespace

ReadResult ReadMeshAttributes(const XSI::CGeometryAccessor& accessor, const std::string& name,
                              bool invertColorAlpha, MeshAttributes& attributes)
{
    const bool isDone = ReadPositions(accessor, name, attributes.Positions) == ReadResult::Done &&
                        ReadNormals(accessor, name, attributes.Normals) == ReadResult::Done &&
                        ReadColors(accessor, name, invertColorAlpha, attributes) == ReadResult::Done &&
                        ReadUserAttributes(accessor, name, attributes) == ReadResult::Done &&
                        ReadCoordinates(accessor, name, attributes) == ReadResult::Done;
    return isDone ? ReadResult::Done : ReadResult::GivenUp;
}

} // namespace tq4x
