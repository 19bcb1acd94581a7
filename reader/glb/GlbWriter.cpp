#include "glb/GlbWriter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <functional>
#include <limits>

namespace tq4x::reader
{
namespace
{

constexpr std::array<std::string_view, 17> TypeWords = {
    "", "SCALAR", "VEC2", "VEC3", "VEC4", "", "", "", "", "", "", "", "", "", "", "", "MAT4"};

// The numbers that glTF has for these things.
constexpr int ComponentUnsignedByte = 5121;
constexpr int ComponentUnsignedShort = 5123;
constexpr int ComponentUnsignedInt = 5125;
constexpr int ComponentFloat = 5126;
constexpr int TargetVertices = 34962;
constexpr int TargetIndices = 34963;

void AppendLittleEndian(std::string& bytes, std::uint32_t value, std::size_t size)
{
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }
}

/// JSON has no word for what single precision can't hold.
float Finite(float value)
{
    constexpr float Largest = std::numeric_limits<float>::max();
    return std::isnan(value) ? 0 : std::clamp(value, -Largest, Largest);
}

void Pad(std::string& bytes, char filling)
{
    bytes.resize((bytes.size() + 3) / 4 * 4, filling);
}

/// Smallest and largest number of each component. Exactly: a viewer may compare them with the numbers.
void AddBounds(Json& accessor, std::span<const float> values, std::size_t components)
{
    Json smallest = Json::array();
    Json largest = Json::array();
    for (std::size_t k = 0; k < components; ++k) {
        float low = Finite(values[k]);
        float high = low;
        for (std::size_t i = k; i < values.size(); i += components) {
            low = std::min(low, Finite(values[i]));
            high = std::max(high, Finite(values[i]));
        }
        smallest.push_back(static_cast<double>(low));
        largest.push_back(static_cast<double>(high));
    }
    accessor["min"] = std::move(smallest);
    accessor["max"] = std::move(largest);
}

} // namespace

double ShortNumber(float value)
{
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), Finite(value)).ptr;
    double number = 0;
    std::from_chars(text.data(), end, number);
    return number == 0 ? 0 : number; // no minus zero
}

GlbWriter::GlbWriter()
{
    m_root["asset"] = {{"version", "2.0"}, {"generator", "tq4x to-gltf"}};
}

int GlbWriter::Add(std::string_view array, Json element)
{
    Json& list = m_root[std::string(array)];
    list.push_back(std::move(element));
    return static_cast<int>(list.size() - 1);
}

Json& GlbWriter::At(std::string_view array, int index)
{
    return m_root.at(std::string(array)).at(static_cast<std::size_t>(index));
}

int GlbWriter::AddFloats(std::span<const float> values, std::size_t components, BufferUse use, bool hasBounds)
{
    std::string bytes;
    bytes.reserve(values.size() * sizeof(float));
    for (const float value : values) {
        AppendLittleEndian(bytes, std::bit_cast<std::uint32_t>(Finite(value)), sizeof(float));
    }
    Json accessor = {{"bufferView", 0},
                     {"componentType", ComponentFloat},
                     {"count", values.size() / components},
                     {"type", TypeWords.at(components)}};
    if (hasBounds) {
        AddBounds(accessor, values, components);
    }
    return AddAccessor(bytes, use, std::move(accessor));
}

int GlbWriter::AddIntegers(std::span<const std::uint32_t> values, std::size_t components, BufferUse use,
                           bool isByte)
{
    // The largest number of a type would mean the restart of a strip.
    const bool isShort = std::ranges::all_of(values, [](std::uint32_t value) { return value < 0xFFFF; });
    const std::size_t size = isByte ? 1 : isShort ? 2 : 4;
    std::string bytes;
    bytes.reserve(values.size() * size);
    for (const std::uint32_t value : values) {
        AppendLittleEndian(bytes, value, size);
    }
    const int type = isByte ? ComponentUnsignedByte : isShort ? ComponentUnsignedShort : ComponentUnsignedInt;
    return AddAccessor(bytes, use,
                       {{"bufferView", 0},
                        {"componentType", type},
                        {"count", values.size() / components},
                        {"type", TypeWords.at(components)}});
}

int GlbWriter::AddBytes(std::string_view bytes)
{
    return AddView(bytes, BufferUse::Data);
}

void GlbWriter::UseExtension(std::string_view name)
{
    Json& used = m_root["extensionsUsed"];
    if (std::ranges::find(used, Json(name)) == used.end()) {
        used.push_back(name);
    }
}

int GlbWriter::AddView(std::string_view bytes, BufferUse use)
{
    Json view = {{"buffer", 0}, {"byteOffset", m_buffer.size()}, {"byteLength", bytes.size()}};
    if (use != BufferUse::Data) {
        view["target"] = use == BufferUse::Vertices ? TargetVertices : TargetIndices;
    }
    m_buffer += bytes;
    Pad(m_buffer, '\0'); // every view begins at a multiple of four
    return Add("bufferViews", std::move(view));
}

bool GlbWriter::IsStored(const StoredNumbers& stored, std::string_view bytes, BufferUse use,
                         const Json& accessor) const
{
    if (stored.Use != use || std::string_view(m_buffer).substr(stored.Offset, stored.Size) != bytes) {
        return false;
    }
    const Json& known = m_root.at("accessors").at(static_cast<std::size_t>(stored.Accessor));
    return known.at("type") == accessor.at("type") &&
           known.at("componentType") == accessor.at("componentType") &&
           known.contains("min") == accessor.contains("min");
}

int GlbWriter::AddAccessor(std::string_view bytes, BufferUse use, Json accessor)
{
    const std::size_t hash = std::hash<std::string_view>()(bytes);
    const auto [first, last] = m_stored.equal_range(hash);
    for (auto known = first; known != last; ++known) {
        if (IsStored(known->second, bytes, use, accessor)) {
            return known->second.Accessor;
        }
    }
    const std::size_t offset = m_buffer.size();
    accessor["bufferView"] = AddView(bytes, use);
    const int index = Add("accessors", std::move(accessor));
    m_stored.insert({hash, {offset, bytes.size(), use, index}});
    return index;
}

std::string GlbWriter::Finish()
{
    if (!m_buffer.empty()) {
        m_root["buffers"] = Json::array({{{"byteLength", m_buffer.size()}}});
    }
    // Names of a damaged scene may be no UTF-8.
    std::string json = m_root.dump(-1, ' ', false, Json::error_handler_t::replace);
    Pad(json, ' ');
    constexpr std::size_t HeadSize = 12;
    constexpr std::size_t ChunkHeadSize = 8;
    const std::size_t size =
        HeadSize + ChunkHeadSize + json.size() + (m_buffer.empty() ? 0 : ChunkHeadSize + m_buffer.size());
    if (size > 0xFFFFFFFF) {
        return {};
    }
    std::string file = "glTF";
    file.reserve(size);
    AppendLittleEndian(file, 2, 4);
    AppendLittleEndian(file, static_cast<std::uint32_t>(size), 4);
    AppendLittleEndian(file, static_cast<std::uint32_t>(json.size()), 4);
    file += "JSON" + json;
    if (!m_buffer.empty()) {
        AppendLittleEndian(file, static_cast<std::uint32_t>(m_buffer.size()), 4);
        file += std::string_view("BIN\0", 4);
        file += m_buffer;
    }
    *this = GlbWriter();
    return file;
}

} // namespace tq4x::reader
