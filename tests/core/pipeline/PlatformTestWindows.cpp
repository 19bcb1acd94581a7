#include "pipeline/Platform.h"

#include "pipeline/FileAccess.h"
#include "pipeline/OutputFile.h"
#include "pipeline/TextHelpers.h"
#include "support/Golden.h"
#include "support/PlatformGuard.h"
#include "support/TemporaryFolder.h"

#include <windows.h>

#include <fstream>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;
using test::TemporaryFolder;

TEST(PlatformWindows, VariablesComeInTheCodePage)
{
    const test::PlatformGuard guard;
    const auto read = SystemPlatform().Environment;
    ASSERT_NE(SetEnvironmentVariableW(L"TQ4X_TEST_\u8868", L"C:\\\u706F\u53F0\\\u00DF"), 0);
    SetSystemCodePage(CodePageUtf8);
    EXPECT_EQ(read("TQ4X_TEST_\xE8\xA1\xA8"), "C:\\\xE7\x81\xAF\xE5\x8F\xB0\\\xC3\x9F");
    SetSystemCodePage(CodePageShiftJis);
    EXPECT_EQ(read("TQ4X_TEST_\x95\x5C"), "C:\\\x93\x94\x91\xE4\\?");
    SetEnvironmentVariableW(L"TQ4X_TEST_\u8868", L"");
    EXPECT_EQ(read("TQ4X_TEST_\x95\x5C"), std::nullopt) << "empty";
    SetEnvironmentVariableW(L"TQ4X_TEST_\u8868", nullptr);
    EXPECT_EQ(read("TQ4X_TEST_\x95\x5C"), std::nullopt) << "not set";
}

TEST(PlatformWindows, UserAndTimeAreTheSystems)
{
    std::wstring user(257, L'\0');
    DWORD size = static_cast<DWORD>(user.size());
    ASSERT_NE(GetUserNameW(user.data(), &size), 0);
    EXPECT_EQ(SystemPlatform().UserName(), PathOfFile(user.c_str()));
    SYSTEMTIME before{}, after{};
    GetLocalTime(&before);
    const std::string now = DateText(SystemPlatform().Now());
    GetLocalTime(&after);
    const auto text = [](const SYSTEMTIME& time) {
        return DateText({time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond});
    };
    EXPECT_LE(text(before), now);
    EXPECT_GE(text(after), now);
}

TEST(PlatformWindows, CommandsRunInTheShell)
{
    const TemporaryFolder folder;
    const std::string path = (folder / "said (1).txt").string();
    EXPECT_EQ(SystemPlatform().RunCommand("echo a  b> \"" + path + "\""), 0);
    EXPECT_EQ(test::ReadWholeFile(path), "a  b\n");
    EXPECT_EQ(SystemPlatform().RunCommand("exit 7"), 7);
    EXPECT_NE(SystemPlatform().RunCommand("\"" + (folder / "missing").string() + "\" 2>NUL"), 0);
}

/// Goes into a folder until the end of the scope.
class FolderVisit
{
public:
    explicit FolderVisit(const fs::path& folder) : m_former(fs::current_path()) { fs::current_path(folder); }

    FolderVisit(const FolderVisit&) = delete;
    FolderVisit& operator=(const FolderVisit&) = delete;

    ~FolderVisit() { fs::current_path(m_former); }

private:
    fs::path m_former;
};

TEST(PlatformWindows, ACommandThatCannotBeStartedIsToldOnStandardError)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "cmd.exe") << "no program"; // the system looks into the current folder first
    const FolderVisit visit(folder.Path());
    testing::internal::CaptureStderr();
    const int exitCode = SystemPlatform().RunCommand("\"C:\\a b.exe\" -daemon");
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(exitCode, 1);
    EXPECT_EQ(said, "Error: My exec process create: cmd.exe /c \"\"C:\\a b.exe\" -daemon\"\n");
}

TEST(PlatformWindows, ACopyReplacesAReadOnlyFileAndMayBeReplacedItself)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "a") << "new";
    std::ofstream(folder / "b") << "old";
    for (const char* const name : {"a", "b"})
        ASSERT_NE(SetFileAttributesW((folder / name).c_str(), FILE_ATTRIBUTE_READONLY), 0);
    EXPECT_TRUE(SystemPlatform().CopyOver((folder / "a").string(), (folder / "b").string()));
    EXPECT_EQ(test::ReadWholeFile(folder / "b"), "new");
    EXPECT_EQ(GetFileAttributesW((folder / "b").c_str()) & FILE_ATTRIBUTE_READONLY, 0u);
    EXPECT_NE(GetFileAttributesW((folder / "a").c_str()) & FILE_ATTRIBUTE_READONLY, 0u);
    SetFileAttributesW((folder / "a").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(PlatformWindows, AFailedCopyLeavesNothingBehind)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "a") << "new";
    fs::create_directory(folder / "b");
    EXPECT_FALSE(SystemPlatform().CopyOver((folder / "a").string(), (folder / "b").string())) << "a folder";
    EXPECT_FALSE(SystemPlatform().CopyOver((folder / "missing").string(), (folder / "c").string()));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 2);
}

TEST(PlatformWindows, LongPaths)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageUtf8);
    const TemporaryFolder folder;
    std::string deep = folder.Path().string();
    for (int i = 0; i < 4; ++i)
        deep += "\\" + std::string(100, 'n');
    ASSERT_GT(deep.size(), 400u);
    EXPECT_TRUE(EnsureFolder(deep + "/x"));
    OutputFile file;
    ASSERT_TRUE(file.Open(deep + "/x/../text"));
    file.Write("line\n");
    ASSERT_TRUE(file.Commit());
    EXPECT_TRUE(PathExists(deep + "\\text"));
    EXPECT_EQ(ReadFileText(deep + "/text", 100), "line\r\n");
    EXPECT_TRUE(SystemPlatform().CopyOver(deep + "\\text", deep + "\\copy"));
    EXPECT_EQ(ReadFileText(deep + "\\copy", 100), "line\r\n");
}

TEST(PlatformWindows, ShortPathsInALongFolder)
{
    const TemporaryFolder folder;
    const fs::path deep = folder / std::string(220 - folder.Path().string().size(), 'n');
    fs::create_directory(deep);
    const FolderVisit visit(deep);
    EXPECT_EQ(FilePath("a").wstring(), L"a");
    const std::string name = std::string(60, 'm') + "/b";
    EXPECT_EQ(FilePath(name).wstring(), L"\\\\?\\" + deep.wstring() + L"\\" + std::wstring(60, 'm') + L"\\b");
    EXPECT_TRUE(EnsureFolder(name));
    EXPECT_TRUE(PathExists(name));
    std::ofstream(deep / "file") << "text";
    EXPECT_TRUE(SystemPlatform().CopyOver("file", name + "/copy"));
    EXPECT_EQ(ReadFileText(name + "/copy", 100), "text");
}

TEST(PlatformWindows, NamesBeyondTheCodePage)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageUtf8);
    const TemporaryFolder folder;
    for (const char* const name : {"Stra\xc3\x9f"
                                   "e (1)",
                                   "\xe7\x81\xaf\xe5\x8f\xb0", "\xf0\x9f\x97\xbc tower"}) {
        const std::string path = folder.Path().string() + "\\" + name;
        EXPECT_TRUE(EnsureFolder(path)) << name;
        OutputFile file;
        ASSERT_TRUE(file.Open(path + "/" + name + ".qmdl")) << name;
        file.Write("x");
        EXPECT_TRUE(file.Commit()) << name;
        EXPECT_TRUE(fs::exists(fs::u8path(path + "/" + name + ".qmdl"))) << name;
    }
}

TEST(PlatformWindows, NamesInADoubleByteCodePage)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageShiftJis);
    const TemporaryFolder folder;
    // The second byte of the first character is a backslash.
    const std::string name = "\x95\x5C\x8E\xA6";
    EXPECT_TRUE(EnsureFolder(folder.Path().string() + "\\" + name));
    EXPECT_TRUE(fs::is_directory(folder.Path() / L"\u8868\u793A"));
    EXPECT_EQ(PathOfFile(fs::directory_iterator(folder.Path())->path().filename()), name);
    EXPECT_EQ(PathOfFile(L"C:\\\u00DF.scn"), "C:\\?.scn") << "a character that the code page does not have";
}

TEST(PlatformWindows, NamesOfDevicesCannotBeWritten)
{
    const TemporaryFolder folder;
    for (const char* const name : {"CON", "nul", "aux.qmdl", "COM1.qmdl", "LPT1"}) {
        OutputFile file;
        const bool isOpen = file.Open((folder.Path() / name).string());
        if (isOpen)
            file.Write("x");
        EXPECT_FALSE(isOpen && file.Commit()) << name;
    }
    EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(PlatformWindows, LinesEndAsInTextFiles)
{
    const TemporaryFolder folder;
    const std::string path = (folder / "a").string();
    OutputFile text, binary;
    ASSERT_TRUE(text.Open(path));
    text.Write("one\ntwo\n");
    ASSERT_TRUE(text.Commit());
    EXPECT_EQ(ReadFileText(path, 100), "one\r\ntwo\r\n");
    ASSERT_TRUE(binary.OpenBinary(folder / "a"));
    binary.Write("one\n");
    ASSERT_TRUE(binary.Commit());
    EXPECT_EQ(ReadFileText(path, 100), "one\n");
}

TEST(PlatformWindows, DrivesAndShares)
{
    EXPECT_TRUE(PathExists("C:\\"));
    EXPECT_FALSE(PathExists("Q:\\nothing"));
    EXPECT_FALSE(SystemPlatform().MakeFolder("Q:\\nothing\\at\\all"));
    EXPECT_EQ(FilePath("\\\\server\\share\\" + std::string(300, 'x')).wstring().substr(0, 21),
              L"\\\\?\\UNC\\server\\share\\");
    EXPECT_EQ(FilePath("C:/a/../b/" + std::string(300, 'x')).wstring().substr(0, 9), L"\\\\?\\C:\\b\\");
}

} // namespace
} // namespace tq4x
