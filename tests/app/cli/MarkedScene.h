#pragma once

#include "Program.h"
#include "support/Variables.h"

namespace tq4x::cli::test
{

/// A folder with "marked.gltf": a node "body" with a triangle of the material "red" and a child "arm". The
/// extras of body, arm and red may be given, as members of an object.
class MarkedSceneTest : public ProgramTest
{
protected:
    MarkedSceneTest()
    {
        setenv("SOURCE_DATE_EPOCH", "1000000000", 1);
        WriteScene("marked.gltf");
    }

    ~MarkedSceneTest() override { unsetenv("SOURCE_DATE_EPOCH"); }

    static std::string Extras(const std::string& members)
    {
        return members.empty() ? "" : R"(,"extras":{)" + members + "}";
    }

    void WriteScene(const std::string& name, const std::string& body = "", const std::string& arm = "",
                    const std::string& red = "") const
    {
        Write(name, R"({"asset":{"version":"2.0"},"scenes":[{"nodes":[0]}],"nodes":[)"
                    R"({"name":"body","mesh":0,"children":[1])" +
                        Extras(body) + R"(},{"name":"arm")" + Extras(arm) + R"(}],)" +
                        R"("materials":[{"name":"red")" + Extras(red) + R"(}],)" +
                        R"("meshes":[{"primitives":[{"attributes":{"POSITION":0},"material":0}]}],)"
                        R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3",)"
                        R"("min":[0,0,0],"max":[1,1,0]}],"bufferViews":[{"buffer":0,"byteLength":36}],)"
                        R"("buffers":[{"byteLength":36,"uri":"data:application/octet-stream;base64,)"
                        R"(AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}]})");
    }

    /// Runs a command with the whole plug-in.
    static Outcome Run(std::vector<std::string> words)
    {
        words.insert(words.end(), {"--plugin", TQ4X_WHOLE_PLUGIN});
        return RunInside(words);
    }

    Outcome Set(const std::string& on, const std::vector<std::string>& words) const
    {
        std::vector<std::string> all = {"set", Path("marked.gltf"), "--on", on};
        all.insert(all.end(), words.begin(), words.end());
        return Run(all);
    }

    /// The file that exports are compared by, and an option that makes them write it.
    struct ComparedFile
    {
        std::string Name = "model.qmdl";
        std::string Option = "OutputQmdl:true";
    } Compared;

    /// What an export of a scene writes into that file.
    std::string Model(const std::string& scene) const
    {
        const Outcome outcome = Run({"export", Path(scene), "-o", Path("out"), "-n", "model", "--overwrite",
                                     "--author", "ann", "--set", Compared.Option});
        EXPECT_EQ(outcome.Code, Done) << outcome.Err;
        return WithoutSource(Read("out/" + Compared.Name));
    }

    /// Files name the scene that they come from; apart from that they are to be equal.
    static std::string WithoutSource(const std::string& model)
    {
        std::string rest;
        std::istringstream lines(model);
        for (std::string line; std::getline(lines, line);) {
            if (line.find(".gltf") == std::string::npos) {
                rest += line + "\n";
            }
        }
        return rest;
    }
};

} // namespace tq4x::cli::test
