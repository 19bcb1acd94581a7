#include "pipeline/ToolHandOff.h"

#include "pipeline/ExportOptions.h"
#include "pipeline/MessageLog.h"
#include "support/Golden.h"
#include "support/MessageRecorder.h"
#include "support/PlatformGuard.h"
#include "support/TemporaryFolder.h"

#include <windows.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <fstream>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;
using test::MessageRecorder;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* StarterName = "BrellStudioStarter.exe";

fs::path OwnFile()
{
    std::array<wchar_t, 1024> file{};
    GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
    return file.data();
}

/// A copy of this program under the starter's name is a starter: it notes what it was told and ends with the
/// code that stands beside it.
class PlayStarter
{
public:
    PlayStarter()
    {
        const fs::path file = OwnFile();
        if (file.filename() != StarterName)
            return;
        std::ofstream said(file.parent_path() / "said", std::ios::binary);
        for (int i = 1; i < __argc; ++i)
            said << __argv[i] << '|';
        said.close();
        int code = 0;
        std::ifstream(file.parent_path() / "code") >> code;
        std::_Exit(code);
    }
};

const PlayStarter playStarter;

/// A tool installation whose starter is really started.
class HandOffWindows : public testing::Test
{
protected:
    HandOffWindows()
    {
        Options.OutputFileName = "house";
        Options.OutputFolder = "C:\\out";
    }

    /// Installs the tool in a folder of this name, with a starter that ends with this code.
    void Install(const std::string& name, int code)
    {
        MessageRecorder::Messages().clear();
        Root = (m_folder / name).string();
        fs::create_directories(Starter().parent_path());
        fs::copy_file(OwnFile(), Starter(), fs::copy_options::overwrite_existing);
        std::ofstream(Starter().parent_path() / "code") << code;
        m_guard.SetEnvironment({{"TQ4X_FORPENNON_ROOT", Root}});
    }

    fs::path Starter() const { return fs::path(Root) / "tools/BrellStudioStarter" / StarterName; }

    std::string Said() const
    {
        const fs::path file = Starter().parent_path() / "said";
        return fs::exists(file) ? test::ReadWholeFile(file) : "nothing";
    }

    ExportOptions Options;
    std::string Root;

private:
    TemporaryFolder m_folder;
    test::PlatformGuard m_guard;
    MessageRecorder m_recorder;
};

TEST_F(HandOffWindows, ARealStarterGetsWhatItIsTold)
{
    for (const char* name : {"root", "to ol (1) & co", "a^b!c;d,e=f'g", "100% sure"}) {
        SCOPED_TRACE(name);
        Install(name, 0);
        EXPECT_TRUE(RunOptimization(Options));
        EXPECT_EQ(Said(), "-daemon|");
        EXPECT_TRUE(ShowInViewer(Options, {}));
        EXPECT_EQ(Said(), Root + "/tools/BrellStudio/DccTemporary/Startup.py|");
        EXPECT_THAT(MessageRecorder::Messages(), IsEmpty());
    }
}

TEST_F(HandOffWindows, ARealStarterThatFails)
{
    Install("root", 5);
    EXPECT_TRUE(RunOptimization(Options));
    EXPECT_FALSE(ShowInViewer(Options, {}));
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("W Optimization failed", "E Failed to start BrellStudio"));
}

TEST_F(HandOffWindows, AStarterThatIsNoProgram)
{
    Install("root", 0);
    std::ofstream(Starter()) << "no program";
    EXPECT_TRUE(RunOptimization(Options));
    EXPECT_FALSE(ShowInViewer(Options, {}));
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("W Optimization failed", "E Failed to start BrellStudio"));
}

TEST_F(HandOffWindows, RootsThatACommandLineCannotHold)
{
    for (const char* name : {"a`b", "a$b", "a%TEMP%b", "%a%"}) {
        SCOPED_TRACE(name);
        Install(name, 0);
        EXPECT_FALSE(RunOptimization(Options));
        EXPECT_FALSE(ShowInViewer(Options, {}));
        EXPECT_EQ(Said(), "nothing");
        EXPECT_FALSE(fs::exists(Root + "/tools/BrellStudio"));
        EXPECT_THAT(MessageRecorder::Messages(),
                    ElementsAre("E BrellStudio cannot be found(" + Root +
                                    "/tools/BrellStudioStarter/BrellStudioStarter.exe)",
                                "E Can't open file(" + Root + "/tools/BrellStudio/DccTemporary/Startup.py)"));
    }
}

} // namespace
} // namespace tq4x
