#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "app/cli/Program.h"
#include "glb/NodeMath.h"
#include "reader/glb/ReadGlb.h"

// Scenes through the exporter and back: what comes out is valid and stands where it stood.
namespace tq4x::cli::test
{
namespace
{

namespace fs = std::filesystem;

using reader::test::Glb;
using reader::test::Json;

const fs::path Samples = fs::path(TQ4X_SAMPLES) / "gltf";
const fs::path Lighthouse = fs::path(TQ4X_SOURCE) / "examples/lighthouse/lighthouse.glb";

class ExportToGltfTest : public ProgramTest
{
protected:
    // The plug-in asks for date and author once in a process.
    ExportToGltfTest() { setenv("SOURCE_DATE_EPOCH", "0", 1); }

    ~ExportToGltfTest() override { unsetenv("SOURCE_DATE_EPOCH"); }

    /// Exports a scene with all kinds of files and turns these into "NAME.glb".
    Outcome ThereAndBack(const fs::path& scene) const
    {
        const std::string name = scene.stem().string();
        const Outcome exported = RunInside({"export",
                                            scene.string(),
                                            "-o",
                                            Path(name),
                                            "-n",
                                            name,
                                            "--plugin",
                                            TQ4X_WHOLE_PLUGIN,
                                            "--author",
                                            "tester",
                                            "--fit-textures",
                                            "--set",
                                            "OutputQskla:true",
                                            "--set",
                                            "OutputQmata:true",
                                            "--set",
                                            "OutputQmdla:true",
                                            "--set",
                                            "OutputQcam:true",
                                            "--set",
                                            "OutputQlgt:true",
                                            "--set",
                                            "OutputQenv:true"});
        EXPECT_EQ(exported.Code, Done) << scene << "\n" << exported.Err;
        std::vector<std::string> words = {"to-gltf", "-o", Path(name + ".glb")};
        for (const char* const kind : {".qmdl", ".qskla", ".qmata", ".qmdla", ".qcam", ".qlgt", ".qenv"}) {
            words.push_back(Path(name + "/" + name + kind));
        }
        return RunInside(words);
    }

    /// Holds all files that were made against the validator, in one process.
    void Validate(const std::vector<std::string>& names) const
    {
        std::string command = "\"" TQ4X_SOURCE "/tools/validate-gltf\"";
        for (const std::string& name : names) {
            command += " \"" + Path(name + ".glb") + "\"";
        }
        const int status = std::system((command + " > \"" + Path("report") + "\"").c_str());
        constexpr int NoValidator = 2;
        if (WEXITSTATUS(status) == NoValidator) {
            GTEST_SKIP() << "NOT RUN: the validator is absent; tools/setup test gets it";
        }
        EXPECT_EQ(status, 0) << Read("report");
    }

    Glb Result(const std::string& name) const { return reader::test::ParseGlb(Read(name + ".glb")); }
};

/// All scenes of the samples, in the order of their names.
std::vector<fs::path> SampleScenes()
{
    std::vector<fs::path> scenes;
    for (const auto& entry : fs::recursive_directory_iterator(Samples)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".glb" || extension == ".gltf") {
            scenes.push_back(entry.path());
        }
    }
    std::ranges::sort(scenes);
    return scenes;
}

TEST_F(ExportToGltfTest, TheLighthouseIsValid)
{
    const Outcome outcome = ThereAndBack(Lighthouse);
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    const Glb glb = Result("lighthouse");
    for (const char* const array : {"meshes", "materials", "images", "skins", "animations", "cameras"}) {
        EXPECT_TRUE(glb.Root.contains(array)) << array;
    }
    EXPECT_EQ(glb.Root.at("extensions").at("KHR_lights_punctual").at("lights").size(), 3U);
    Validate({"lighthouse"});
}

/// Files by hand that have what no scene here has: all kinds of cameras and lights, moving colours.
TEST_F(ExportToGltfTest, TheHouseIsValid)
{
    std::vector<std::string> words = {"to-gltf", "-o", Path("house.glb")};
    for (const char* const kind : {"qmdl", "qskla", "qmata", "qmdla", "qcam", "qlgt", "qenv"}) {
        words.push_back(TQ4X_TEST_DATA "/reader/house." + std::string(kind));
    }
    EXPECT_EQ(RunInside(words).Code, Done);
    Validate({"house"});
}

TEST_F(ExportToGltfTest, EverySampleIsValid)
{
    if (!fs::exists(Samples)) {
        GTEST_SKIP() << "NOT RUN: the sample scenes are absent; they are looked for in " << Samples;
    }
    std::vector<std::string> names;
    for (const fs::path& scene : SampleScenes()) {
        const Outcome outcome = ThereAndBack(scene);
        if (scene.stem() == "ToyCar") { // more vertices in a shape than its indices can number
            EXPECT_EQ(outcome.Code, BadInput);
            EXPECT_THAT(outcome.Err, testing::HasSubstr("TQ-INDEX-SIZE: "));
            continue;
        }
        EXPECT_EQ(outcome.Code, Done) << scene << "\n" << outcome.Err;
        names.push_back(scene.stem().string());
    }
    EXPECT_GT(names.size(), 10U);
    Validate(names);
}

struct Box
{
    std::array<double, 3> Low = {1e30, 1e30, 1e30};
    std::array<double, 3> High = {-1e30, -1e30, -1e30};

    void Add(const std::array<double, 3>& point)
    {
        for (std::size_t i = 0; i < 3; ++i) {
            Low[i] = std::min(Low[i], point[i]);
            High[i] = std::max(High[i], point[i]);
        }
    }
};

std::array<double, 3> Moved(const reader::Matrix& m, const std::array<double, 3>& p)
{
    std::array<double, 3> place{};
    for (std::size_t i = 0; i < 3; ++i) {
        place[i] = m[i] * p[0] + m[4 + i] * p[1] + m[8 + i] * p[2] + m[12 + i];
    }
    return place;
}

reader::Matrix LocalMatrix(const Json& node)
{
    if (node.contains("matrix")) {
        return node.at("matrix").get<reader::Matrix>();
    }
    const auto t = node.value("translation", std::array<double, 3>{0, 0, 0});
    const auto s = node.value("scale", std::array<double, 3>{1, 1, 1});
    const auto [x, y, z, w] = node.value("rotation", std::array<double, 4>{0, 0, 0, 1});
    return {s[0] * (1 - 2 * (y * y + z * z)),
            s[0] * 2 * (x * y + z * w),
            s[0] * 2 * (x * z - y * w),
            0,
            s[1] * 2 * (x * y - z * w),
            s[1] * (1 - 2 * (x * x + z * z)),
            s[1] * 2 * (y * z + x * w),
            0,
            s[2] * 2 * (x * z + y * w),
            s[2] * 2 * (y * z - x * w),
            s[2] * (1 - 2 * (x * x + y * y)),
            0,
            t[0],
            t[1],
            t[2],
            1};
}

/// Where every node of a scene stands at rest.
std::vector<reader::Matrix> WorldMatrices(const Json& root)
{
    const Json& nodes = root.at("nodes");
    std::vector<reader::Matrix> world(nodes.size(), reader::IdentityMatrix);
    std::vector<std::pair<std::size_t, reader::Matrix>> waiting;
    for (const Json& node : root.at("scenes").at(0).at("nodes")) {
        waiting.emplace_back(node.get<std::size_t>(), reader::IdentityMatrix);
    }
    while (!waiting.empty()) {
        const auto [node, parent] = waiting.back();
        waiting.pop_back();
        world[node] = reader::Multiply(parent, LocalMatrix(nodes.at(node)));
        for (const Json& child : nodes.at(node).value("children", Json::array())) {
            waiting.emplace_back(child.get<std::size_t>(), world[node]);
        }
    }
    return world;
}

/// Adds the corners of a primitive's bounds.
void AddCorners(const Json& root, const Json& primitive, const reader::Matrix& world, Box& box)
{
    const Json& positions =
        root.at("accessors").at(primitive.at("attributes").at("POSITION").get<std::size_t>());
    for (unsigned corner = 0; corner < 8; ++corner) {
        std::array<double, 3> point{};
        for (std::size_t i = 0; i < 3; ++i) {
            point[i] = positions.at((corner >> i & 1U) != 0 ? "max" : "min").at(i);
        }
        box.Add(Moved(world, point));
    }
}

/// Around everything that a scene shows. Skinned meshes of a source are taken in their bind pose.
Box SourceBox(const Json& root)
{
    Box box;
    const std::vector<reader::Matrix> world = WorldMatrices(root);
    for (std::size_t i = 0; i < world.size(); ++i) {
        const Json& node = root.at("nodes").at(i);
        if (node.contains("mesh")) {
            for (const Json& primitive :
                 root.at("meshes").at(node.at("mesh").get<std::size_t>()).at("primitives")) {
                AddCorners(root, primitive, node.contains("skin") ? reader::IdentityMatrix : world[i], box);
            }
        }
    }
    return box;
}

/// Adds the vertices of a skinned primitive where the nodes at rest put them.
void AddSkinned(const Glb& glb, const Json& primitive, const Json& skin,
                const std::vector<reader::Matrix>& world, Box& box)
{
    const Json& attributes = primitive.at("attributes");
    const std::vector<double> positions = glb.Numbers(attributes.at("POSITION"));
    const std::vector<double> joints = glb.Numbers(attributes.at("JOINTS_0"));
    const std::vector<double> weights = glb.Numbers(attributes.at("WEIGHTS_0"));
    const std::vector<double> inverses = skin.contains("inverseBindMatrices")
                                             ? glb.Numbers(skin.at("inverseBindMatrices"))
                                             : std::vector<double>();
    for (std::size_t i = 0; i < positions.size() / 3; ++i) {
        std::array<double, 3> place{};
        for (std::size_t k = 0; k < 4; ++k) {
            const auto joint = static_cast<std::size_t>(joints[4 * i + k]);
            reader::Matrix inverse = reader::IdentityMatrix;
            if (!inverses.empty()) {
                std::copy_n(inverses.begin() + static_cast<std::ptrdiff_t>(16 * joint), 16, inverse.begin());
            }
            const std::size_t node = skin.at("joints").at(joint);
            const auto moved = Moved(reader::Multiply(world[node], inverse),
                                     {positions[3 * i], positions[3 * i + 1], positions[3 * i + 2]});
            for (std::size_t axis = 0; axis < 3; ++axis) {
                place[axis] += weights[4 * i + k] * moved[axis];
            }
        }
        box.Add(place);
    }
}

Box ResultBox(const Glb& glb)
{
    Box box;
    const std::vector<reader::Matrix> world = WorldMatrices(glb.Root);
    for (std::size_t i = 0; i < world.size(); ++i) {
        const Json& node = glb.Root.at("nodes").at(i);
        if (!node.contains("mesh")) {
            continue;
        }
        for (const Json& primitive :
             glb.Root.at("meshes").at(node.at("mesh").get<std::size_t>()).at("primitives")) {
            if (node.contains("skin")) {
                const Json& skin = glb.Root.at("skins").at(node.at("skin").get<std::size_t>());
                AddSkinned(glb, primitive, skin, world, box);
            } else {
                AddCorners(glb.Root, primitive, world[i], box);
            }
        }
    }
    return box;
}

Json SourceJson(const fs::path& scene)
{
    const std::string text = tq4x::test::ReadWholeFile(scene);
    return scene.extension() == ".glb" ? Json::parse(text.substr(20, reader::test::WordAt(text, 12)))
                                       : Json::parse(text);
}

TEST_F(ExportToGltfTest, MeshesStandWhereTheyStood)
{
    if (!fs::exists(Samples)) {
        GTEST_SKIP() << "NOT RUN: the sample scenes are absent; they are looked for in " << Samples;
    }
    const char* const scenes[] = {
        "CesiumMan/CesiumMan.glb",                 // skinned, many palettes
        "Fox/Fox.glb",                             // skinned
        "NegativeScaleTest/NegativeScaleTest.glb", // mirrored nodes
        "OrientationTest/OrientationTest.glb",     // turned nodes
        "VertexColorTest/VertexColorTest.glb",     // no node moves
        "Cameras/Cameras.gltf",                    // a turned mesh
    };
    for (const char* const scene : scenes) {
        const Outcome outcome = ThereAndBack(Samples / scene);
        ASSERT_EQ(outcome.Code, Done) << scene << "\n" << outcome.Err;
        const Box before = SourceBox(SourceJson(Samples / scene));
        const Box after = ResultBox(Result(fs::path(scene).stem().string()));
        for (std::size_t i = 0; i < 3; ++i) {
            // Positions may be stored in steps of a 65534th of their range, printed with six digits.
            const double size = before.High[i] - before.Low[i] + std::abs(before.High[i]);
            EXPECT_NEAR(after.Low[i], before.Low[i], 1e-4 * size + 1e-4) << scene << " axis " << i;
            EXPECT_NEAR(after.High[i], before.High[i], 1e-4 * size + 1e-4) << scene << " axis " << i;
        }
    }
}

} // namespace
} // namespace tq4x::cli::test
