#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "glb/ConvertToGlb.h"
#include "reader/ReaderDocuments.h"

namespace tq4x::reader::test
{

using Json = nlohmann::ordered_json;

inline std::uint32_t WordAt(const std::string& bytes, std::size_t place)
{
    std::uint32_t word = 0;
    std::memcpy(&word, bytes.substr(place, 4).data(), sizeof(word));
    return word;
}

/// A binary glTF file taken apart; throws where its frame is wrong.
struct Glb
{
    Json Root;
    std::string Buffer;

    /// Everything that an accessor holds, row by row.
    [[nodiscard]] std::vector<double> Numbers(int index) const
    {
        const Json& accessor = Root.at("accessors").at(static_cast<std::size_t>(index));
        const Json& view = Root.at("bufferViews").at(accessor.at("bufferView").get<std::size_t>());
        const std::string type = accessor.at("type");
        const std::size_t components = type == "SCALAR" ? 1 : type == "MAT4" ? 16 : type.back() - '0';
        const int word = accessor.at("componentType");
        const std::size_t size = word == 5121 ? 1 : word == 5123 ? 2 : 4;
        const std::size_t count = accessor.at("count").get<std::size_t>() * components;
        EXPECT_EQ(view.at("byteLength").get<std::size_t>(), count * size);
        std::vector<double> numbers;
        for (std::size_t i = 0; i < count; ++i) {
            const std::string bytes =
                Buffer.substr(view.at("byteOffset").get<std::size_t>() + i * size, size) +
                std::string(4, '\0');
            float real = 0;
            std::memcpy(&real, bytes.data(), sizeof(real));
            numbers.push_back(word == 5126 ? static_cast<double>(real) : WordAt(bytes, 0));
        }
        return numbers;
    }

    /// The first element of a top-level array that has a name.
    [[nodiscard]] const Json& Named(const std::string& array, const std::string& name) const
    {
        for (const Json& element : Root.at(array)) {
            if (element.value("name", "") == name) {
                return element;
            }
        }
        throw std::invalid_argument("no " + name + " among " + array);
    }
};

inline Glb ParseGlb(const std::string& bytes)
{
    const auto require = [](bool isWell, const char* what) {
        if (!isWell) {
            throw std::runtime_error(what);
        }
    };
    require(bytes.size() >= 20 && bytes.starts_with("glTF") && WordAt(bytes, 4) == 2, "head");
    require(WordAt(bytes, 8) == bytes.size() && bytes.size() % 4 == 0, "length");
    const std::size_t json = WordAt(bytes, 12);
    require(json % 4 == 0 && bytes.substr(16, 4) == "JSON" && 20 + json <= bytes.size(), "JSON");
    Glb glb;
    glb.Root = Json::parse(bytes.substr(20, json));
    if (20 + json < bytes.size()) {
        require(bytes.substr(24 + json, 4) == std::string("BIN\0", 4), "BIN");
        require(WordAt(bytes, 20 + json) == bytes.size() - 28 - json, "length of BIN");
        glb.Buffer = bytes.substr(28 + json);
        require(glb.Root.at("buffers").at(0).at("byteLength") == glb.Buffer.size(), "byteLength");
    }
    return glb;
}

/// A conversion that must succeed.
struct Converted
{
    Glb File;
    std::vector<std::string> Warnings;
};

inline Converted Convert(const ExportedFiles& files, const GlbOptions& options = {})
{
    GlbResult result = ConvertToGlb(files, options);
    EXPECT_EQ(result.Error, "");
    return {ParseGlb(result.Glb), std::move(result.Warnings)};
}

/// Good files of tests/data/reader with their textures, to be changed.
inline ExportedFiles HouseFiles(const std::vector<std::string>& names)
{
    std::vector<std::filesystem::path> paths;
    for (const std::string& name : names) {
        paths.push_back(DocumentPath(name));
    }
    ExportedFiles files = ReadExport(paths);
    EXPECT_EQ(ToTexts(files.Findings), std::vector<std::string>());
    return files;
}

inline VertexStream MakeStream(const std::string& usage, std::size_t dimension, std::vector<float> values)
{
    VertexStream stream;
    stream.Usage = usage;
    stream.Dimension = dimension;
    stream.Values = std::move(values);
    return stream;
}

/// One triangle on one bone, "node", with no material: the smallest model that shows something.
inline ExportedFiles TriangleFiles()
{
    Model model;
    Bone bone;
    bone.Name = "node";
    model.Bones.Bones = {bone};
    Shape shape;
    shape.VertexCount = 3;
    shape.Streams = {MakeStream("Position", 3, {0, 0, 0, 1, 0, 0, 0, 1, 0})};
    shape.Sets = {{"None", {0}, {{"Triangles", true, {0, 1, 2}, 0}}, 0}};
    model.Shapes = {shape};
    Mesh mesh;
    mesh.NodeName = "node";
    mesh.Shape = 0;
    model.Meshes = {mesh};
    Document document;
    document.Model = model;
    ExportedFiles files;
    files.Files = {{"scene.qmdl", document}};
    return files;
}

inline Model& ModelOf(ExportedFiles& files)
{
    return *files.Files.at(0).Content.Model;
}

} // namespace tq4x::reader::test
