#include "pipeline/Platform.h"
#include "support/ExportRun.h"

namespace tq4x::test
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A folder for the tool installation, with a starter that does nothing, for the time of a test.
class ToolInstallation
{
public:
    ToolInstallation()
    {
        std::filesystem::create_directories(m_root / "tools/BrellStudioStarter");
        std::ofstream(m_root / "tools/BrellStudioStarter/BrellStudioStarter.exe") << "starter";
        m_former = CurrentPlatform();
        CurrentPlatform().Environment = [root = m_root.Path().string()](const std::string& name) {
            return name == "TQ4X_FORPENNON_ROOT" ? std::optional(root) : std::nullopt;
        };
        CurrentPlatform().RunCommand = [this](const std::string& command) {
            Commands.push_back(command);
            return 0;
        };
    }

    ToolInstallation(const ToolInstallation&) = delete;
    ToolInstallation& operator=(const ToolInstallation&) = delete;

    ~ToolInstallation() { CurrentPlatform() = m_former; }

    const std::filesystem::path& Root() const { return m_root.Path(); }

    std::vector<std::string> Commands;

private:
    TemporaryFolder m_root;
    Platform m_former;
};

TEST(ExportDriver, WritesAModelOfOneMesh)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    SceneMaterial red = scene.Material("red");
    scene.Mesh("plate").Square(red);
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(run.Messages(), IsEmpty());
    EXPECT_THAT(run.File("out.qmdl"), HasSubstr("<Bone Name=\"plate\" ParentBoneName=\"\""));
    EXPECT_THAT(run.File("out.qmdl"), HasSubstr("<MaterialQtr Name=\"red\""));
}

} // namespace
} // namespace tq4x::test
