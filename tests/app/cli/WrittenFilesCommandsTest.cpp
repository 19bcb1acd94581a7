#include <gmock/gmock.h>

#include "Program.h"

namespace tq4x::cli::test
{
namespace
{

using testing::HasSubstr;

/// A folder with copies of good written files.
class WrittenFilesCommands : public ProgramTest
{
protected:
    WrittenFilesCommands()
    {
        std::filesystem::copy(std::filesystem::path(TQ4X_TEST_DATA) / "reader", Folder.Path(),
                              std::filesystem::copy_options::recursive);
    }

    void Replace(const std::string& name, const std::string& from, const std::string& to) const
    {
        std::string text = Read(name);
        const std::size_t at = text.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        Write(name, text.replace(at, from.size(), to));
    }
};

TEST_F(WrittenFilesCommands, CheckOfGoodFiles)
{
    const Outcome outcome = RunInside({"check", Folder.Path().string()});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_EQ(outcome.Out, "9 files: 0 errors, 0 warnings.\n");
    EXPECT_EQ(outcome.Err, "");
}

TEST_F(WrittenFilesCommands, CheckOfAFileWithErrors)
{
    Replace("house.qcam", "Fovy=\"0.927295\"", "Fovy=\"0\"");
    Replace("house.qcam", "CameraAnimationData Name=\"aim\"", "CameraAnimationData Name=\"pan\"");
    const Outcome outcome = RunInside({"check", Path("house.qcam"), Path("house.qlgt")});
    EXPECT_EQ(outcome.Code, Failed);
    const std::string error = Path("house.qcam") + ":12: error TQ-REF-CAMERA: There is no camera \"pan\".\n";
    EXPECT_EQ(outcome.Out,
              Path("house.qcam") +
                  ":50: warning TQ-CAMERA: Camera \"aim\": the field of view is not between 0 and half a "
                  "turn.\n" +
                  error + "2 files: 1 error, 1 warning.\n");
    const Outcome quiet = RunInside({"check", "-q", Path("house.qcam")});
    EXPECT_EQ(quiet.Code, Failed);
    EXPECT_EQ(quiet.Out, "");
    EXPECT_EQ(quiet.Err,
              "error: " + Path("house.qcam") + ":12: TQ-REF-CAMERA: There is no camera \"pan\".\n");
}

TEST_F(WrittenFilesCommands, CheckOfAFileWithWarnings)
{
    Replace("house.qcam", "Fovy=\"0.927295\"", "Fovy=\"0\"");
    EXPECT_EQ(RunInside({"check", Path("house.qcam")}).Code, Done);
}

TEST_F(WrittenFilesCommands, CheckOfUnreadableFiles)
{
    Write("house.qcam", "<\x1B[2J>");
    const Outcome outcome = RunInside({"check", Path("none.qmdl"), Path("house.qcam")});
    EXPECT_EQ(outcome.Code, BadInput);
    EXPECT_EQ(outcome.Out, Path("none.qmdl") +
                               ": error TQ-READ: The file does not exist or is no regular file.\n" +
                               Path("house.qcam") +
                               ":1: error TQ-XML-FORM: Not well-formed: StartTag: invalid element name.\n"
                               "2 files: 2 errors, 0 warnings, 2 can't be read.\n");
}

TEST_F(WrittenFilesCommands, CheckAsJson)
{
    Replace("house.qcam", "CameraAnimationData Name=\"aim\"", "CameraAnimationData Name=\"pan\"");
    const Outcome outcome = RunInside({"check", "--json", Path("house.qcam")});
    EXPECT_EQ(outcome.Code, Failed);
    EXPECT_EQ(outcome.Out,
              "{\n  \"files\": 1,\n  \"unreadable\": 0,\n  \"errors\": 1,\n  \"warnings\": 0,\n"
              "  \"findings\": [\n    {\n      \"code\": \"TQ-REF-CAMERA\",\n"
              "      \"severity\": \"error\",\n      \"file\": \"" +
                  Path("house.qcam") +
                  "\",\n      \"line\": 12,\n      \"text\": \"There is no camera \\\"pan\\\".\"\n"
                  "    }\n  ]\n}\n");
}

TEST_F(WrittenFilesCommands, InfoOfEveryKind)
{
    const struct
    {
        std::string File;
        std::vector<std::string> Rows;
    } cases[] = {
        {"house.qmdl",
         {"kind             qmdl\n", "source           house.scn\n", "bones            4\n",
          "meshes           2\n", "shapes           2\n", "vertices         9\n", "triangles        5\n",
          "primitiveSets    3\n", "largestPalette   2\n", "boneCapacity     20\n",
          "streams          BoneIndex Ubyte, BoneWeight Ubyte, Color Ubyte, Normal constant, Position Float, "
          "Position Short, TextureCoordinate0 Ubyte\n",
          "materials        2\n", "lookupTables     1\n", "textures         Tiles\n",
          "magnify          2\n"}},
        {"Textures/Tiles.qtex",
         {"format           L8\n", "width            8\n", "height           8\n", "levels           2\n",
          "bytes            80\n", "path             pictures/Tiles.tga\n", "faces            1\n"}},
        {"Textures/Sky.qtex", {"format           L4\n", "faces            6\n", "bytes            192\n"}},
        {"house.qskla",
         {"frames           20\n", "loopMode         Loop\n", "members          1\n", "curves           3\n",
          "keys             6\n", "bones            4\n", "startFrame       5\n", "endFrame         25\n"}},
        {"house.qmata", {"members          4\n", "texturePatterns  2\n", "loopMode         OneTime\n"}},
        {"house.qmdla", {"members          1\n", "keys             3\n"}},
        {"house.qcam", {"cameras          3\n", "clip0.name       aim\n", "clip0.frames     20\n"}},
        {"house.qlgt",
         {"lights           4\n", "clip1.name       AmbientLight.LightAnimation\n", "lookupTables     1\n"}},
        {"house.qenv", {"cameras          3\n", "lights           4\n"}},
    };

    for (const auto& entry : cases) {
        const Outcome outcome = RunInside({"info", Path(entry.File)});
        EXPECT_EQ(outcome.Code, Done) << outcome.Err;
        for (const std::string& row : entry.Rows) {
            EXPECT_THAT(outcome.Out, HasSubstr("\n  " + row));
        }
    }
}

TEST_F(WrittenFilesCommands, InfoAsJson)
{
    const Outcome outcome = RunInside({"info", "--json", Path("Textures/Tiles.qtex"), Path("scene.gltf")});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_THAT(outcome.Out, HasSubstr("\"format\": \"L8\",\n    \"width\": 8"));
    EXPECT_THAT(outcome.Out, HasSubstr("\"nodes\": 5"));
}

TEST_F(WrittenFilesCommands, InfoOfDamagedFiles)
{
    Replace("house.qmdl", "<PositionOffset X=\"0\"", "<PositionOffset X=\"nan\"");
    const Outcome outcome = RunInside({"info", Path("house.qmdl"), Path("none.qtex")});
    EXPECT_EQ(outcome.Code, BadInput);
    EXPECT_EQ(outcome.Out, "");
    EXPECT_THAT(outcome.Err,
                HasSubstr(Path("house.qmdl") +
                          ": line 119: \"nan\" is no finite number in the form of the files (X of "
                          "PositionOffset).\n"));
    EXPECT_THAT(outcome.Err,
                HasSubstr(Path("none.qtex") + ": The file does not exist or is no regular file.\n"));
}

} // namespace
} // namespace tq4x::cli::test
