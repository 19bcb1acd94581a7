#include <gtest/gtest.h>

#include "Program.h"

namespace tq4x::cli::test
{
namespace
{

constexpr const char* Refusal = "error: This build of tq4x can't read written files.\n";

TEST_F(ProgramTest, CommandsThatNeedTheReaderSaySo)
{
    Write("a.qmdl", "");
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"check", Path("a.qmdl"), "--json"},
          std::vector<std::string>{"to-gltf", Path("a.qmdl"), "-o", Path("a.glb")}}) {
        const Outcome outcome = RunInside(words);
        EXPECT_EQ(outcome.Code, WrongUsage) << words[0];
        EXPECT_EQ(outcome.Err, Refusal) << words[0];
        EXPECT_EQ(outcome.Out, "") << words[0];
    }
    EXPECT_EQ(RunInside({"help"}).Code, Done);
}

TEST_F(ProgramTest, InfoTellsOfScenesAlone)
{
    Write("a.QMDL", "");
    const Outcome outcome = RunInside({"info", Path("scene.gltf"), Path("a.QMDL")});
    EXPECT_EQ(outcome.Code, BadInput);
    EXPECT_EQ(outcome.Err, "error: " + Path("a.QMDL") + ": This build of tq4x can't read written files.\n");
    EXPECT_NE(outcome.Out.find("scene.gltf"), std::string::npos);
}

} // namespace
} // namespace tq4x::cli::test
