#include "gltf/OpenDocument.h"

#include <algorithm>
#include <charconv>
#include <new>

#include "gltf/Container.h"
#include "gltf/ReadFile.h"
#include "gltf/ReadRecords.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

std::string PlaceOf(std::string_view list, std::size_t index)
{
    return "/" + std::string(list) + "/" + std::to_string(index);
}

Bytes LoadBuffer(const Buffer& buffer, const AssetFolders& folders, const std::string& place)
{
    if (IsDataUri(buffer.Uri)) {
        return DecodeDataUri(buffer.Uri, place + "/uri");
    }
    FileContent content = ReadFile(ResolveUri(buffer.Uri, folders, place + "/uri"));
    if (!content.Error.empty()) {
        throw SceneError(place + "/uri", content.Error);
    }
    return std::move(content.Data);
}

// `binary` is the binary chunk; it is the first buffer if that one has no address.
void LoadBuffers(Document& document, std::optional<Bytes> binary, const AssetFolders& folders)
{
    for (std::size_t i = 0; i < document.Buffers.size(); ++i) {
        Buffer& buffer = document.Buffers[i];
        const std::string place = PlaceOf("buffers", i);
        if (!buffer.Uri.empty()) {
            buffer.Data = LoadBuffer(buffer, folders, place);
        } else if (i == 0 && binary) {
            buffer.Data = *std::move(binary);
        } else if (buffer.ByteLength > 0) {
            throw SceneError(place, "The buffer has no data.");
        }
        if (buffer.Data.size() < buffer.ByteLength) {
            throw SceneError(place, "The buffer should have " + std::to_string(buffer.ByteLength) +
                                        " bytes; its data has " + std::to_string(buffer.Data.size()) + ".");
        }
        buffer.Data.resize(buffer.ByteLength);
    }
}

void ResolveImages(Document& document, const AssetFolders& folders)
{
    for (std::size_t i = 0; i < document.Images.size(); ++i) {
        Image& image = document.Images[i];
        const std::string place = PlaceOf("images", i) + "/uri";
        if (IsDataUri(image.Uri)) {
            image.Data = DecodeDataUri(image.Uri, place);
            image.Uri.clear();
        } else if (!image.Uri.empty()) {
            image.File = ResolveUri(image.Uri, folders, place);
        }
    }
}

// Moves the binary chunk to the front of the file's bytes, so that it is never held twice.
std::optional<Bytes> TakeBinary(Bytes file, const Container& container)
{
    if (!container.Binary) {
        return std::nullopt;
    }
    const auto start = container.Binary->data() - file.data();
    const std::size_t length = container.Binary->size();
    file.erase(file.begin(), file.begin() + start);
    file.resize(length);
    return file;
}

Document ReadDocument(Bytes file, const AssetFolders& folders, JsonValue& json)
{
    Notes notes;
    const Container container = SplitContainer(file, notes);
    json = ParseJson(container.Json);
    Document document = ReadRecords(json);
    document.Unread.insert(document.Unread.begin(), notes.begin(), notes.end());
    LoadBuffers(document, TakeBinary(std::move(file), container), folders);
    ResolveImages(document, folders);
    return document;
}

const JsonValue* FindItem(const JsonValue& json, std::string_view list, std::size_t index)
{
    const JsonValue* const found = json.Find(list);
    const JsonArray* const items = found == nullptr ? nullptr : found->Array();
    return items == nullptr || index >= items->size() ? nullptr : &(*items)[index];
}

std::string NameOf(const JsonValue* item)
{
    const JsonValue* const name = item == nullptr ? nullptr : item->Find("name");
    return name == nullptr || name->String() == nullptr ? std::string() : *name->String();
}

bool HasChild(const JsonValue& node, std::size_t child)
{
    const JsonValue* const found = node.Find("children");
    const JsonArray* const children = found == nullptr ? nullptr : found->Array();
    return children != nullptr &&
           std::ranges::find(*children, JsonValue{static_cast<std::int64_t>(child)}) != children->end();
}

// Names from the root down to a node, "node3" for one without. Works on the bare JSON, since the records may
// be what is wrong: so it stops after a few levels, or where it comes round to the node again.
std::string NamesOfNode(const JsonValue& json, std::size_t node)
{
    constexpr int MaxLevels = 8;
    const JsonArray& nodes = *json.Find("nodes")->Array();
    std::string path;
    for (std::size_t current = node, level = 0; level < MaxLevels; ++level) {
        const std::string name = NameOf(&nodes[current]);
        path.insert(0, (name.empty() ? "node" + std::to_string(current) : name) + (path.empty() ? "" : "/"));
        const auto parent =
            std::ranges::find_if(nodes, [current](const JsonValue& item) { return HasChild(item, current); });
        current = static_cast<std::size_t>(parent - nodes.begin());
        if (parent == nodes.end() || current == node) {
            break;
        }
    }
    return path;
}

// The name of the record that a place like "/meshes/3/primitives/0" lies in, a path of names for nodes; empty
// if there is none.
std::string NameOfPlace(const JsonValue& json, std::string_view place)
{
    const std::size_t slash = place.find('/', 1);
    if (slash == std::string_view::npos) {
        return {};
    }
    std::size_t index = 0;
    const auto digits = std::from_chars(place.data() + slash + 1, place.data() + place.size(), index);
    const std::string_view list = place.substr(1, slash - 1);
    const JsonValue* const item = FindItem(json, list, index);
    if (digits.ec != std::errc() || item == nullptr) {
        return {};
    }
    return list == "nodes" ? NamesOfNode(json, index) : NameOf(item);
}

std::string Describe(const SceneError& error, const JsonValue& json)
{
    if (error.Place.empty()) {
        return error.Text;
    }
    const std::string name = NameOfPlace(json, error.Place);
    return error.Place + (name.empty() ? "" : " (" + name + ")") + ": " + error.Text;
}

} // namespace

OpenedDocument OpenDocument(Bytes file, const AssetFolders& folders)
{
    JsonValue json;
    try {
        return {ReadDocument(std::move(file), folders, json), ""};
    } catch (const SceneError& error) {
        return {std::nullopt, Describe(error, json)};
    } catch (const std::filesystem::filesystem_error& error) {
        return {std::nullopt, error.code().message() + ": " + error.path1().string()};
    } catch (const std::bad_alloc&) {
        return {std::nullopt, "There is not enough memory for this scene."};
    }
}

OpenedDocument OpenDocument(const std::filesystem::path& file, const OpenOptions& options)
{
    FileContent content = ReadFile(file);
    if (!content.Error.empty()) {
        return {std::nullopt, content.Error};
    }
    return OpenDocument(std::move(content.Data), {file.parent_path(), options.AssetRoot});
}

} // namespace tq4x::gltf
