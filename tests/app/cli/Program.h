#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "cli/Command.h"
#include "scene/Session.h"
#include "support/Golden.h"
#include "support/TemporaryFolder.h"
#include "support/Variables.h"

namespace tq4x::cli::test
{

/// What a run of the program left behind.
struct Outcome
{
    int Code = 0;
    std::string Out;
    std::string Err;
};

/// Runs the program inside the test, with streams that it writes to and, if wanted, a person who answers.
inline Outcome RunInside(const std::vector<std::string>& words, const std::string& answers = "",
                         bool isTerminal = false)
{
    XSI::Host::Session::Current().Reset();
    std::istringstream in(answers);
    std::ostringstream out;
    std::ostringstream err;
    Console console({in, out, err, isTerminal, isTerminal, false});
    const int code = RunProgram(words, console);
    XSI::Host::Session::Current().Reset();
    return {code, out.str(), err.str()};
}

/// A folder with a small scene "scene.gltf" in it; the user's data folder is inside too.
class ProgramTest : public testing::Test
{
protected:
    ProgramTest()
    {
        setenv("XDG_DATA_HOME", (Folder / "data").string().c_str(), 1);
        unsetenv("TQ4X_FORPENNON_ROOT");
        Write("scene.gltf", R"({"asset":{"version":"2.0"},"nodes":[{"name":"body","children":[1,2]},
            {"name":"left","children":[3]},{"name":"right","children":[4]},{"name":"hand"},{"name":"hand"}],
            "scenes":[{"nodes":[0]}]})");
    }

    ~ProgramTest() override
    {
        unsetenv("XDG_DATA_HOME");
        unsetenv("TQ4X_FORPENNON_ROOT");
    }

    void Write(const std::string& name, const std::string& text) const
    {
        std::ofstream(Folder / name, std::ios::binary) << text;
    }

    std::string Read(const std::string& name) const { return tq4x::test::ReadWholeFile(Folder / name); }

    std::string Path(const std::string& name) const { return (Folder / name).make_preferred().string(); }

    /// Makes an installation of the tool whose starter runs a command of the shell. The variable that names
    /// it is set until the end of the test.
    void InstallStarter(const std::string& command) const
    {
        const std::filesystem::path starter = Folder / "root/tools/BrellStudioStarter/BrellStudioStarter.exe";
        std::filesystem::create_directories(starter.parent_path());
        std::ofstream(starter) << "#!/bin/sh\n" << command << "\n";
        std::filesystem::permissions(starter, std::filesystem::perms::owner_all);
        setenv("TQ4X_FORPENNON_ROOT", Path("root").c_str(), 1);
    }

    /// Exports the scene with the tiny plug-in.
    Outcome Export(std::vector<std::string> more, const std::string& answers = "",
                   bool isTerminal = false) const
    {
        std::vector<std::string> words = {"export", Path("scene.gltf"), "--plugin", TQ4X_TINY_PLUGIN,
                                          "-o",     Path("out")};
        words.insert(words.end(), more.begin(), more.end());
        return RunInside(words, answers, isTerminal);
    }

    tq4x::test::TemporaryFolder Folder;
};

} // namespace tq4x::cli::test
