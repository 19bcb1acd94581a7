#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "MarkedScene.h"
#include "cli/FindObject.h"
#include "cli/PluginFile.h"
#include "gltf/JsonValue.h"
#include "gltf/OpenScene.h"
#include "scene/Text.h"
#include "support/Golden.h"
#include "support/PageDriver.h"
#include "support/Variables.h"

namespace tq4x::cli::test
{
namespace
{

using testing::HasSubstr;
using testing::Not;

using SetCommandTest = MarkedSceneTest;
using PagesCommandTest = MarkedSceneTest;

TEST_F(SetCommandTest, WritesTheValueIntoTheExtras)
{
    const Outcome outcome = Set("arm", {"TQ4X_ForPennonBillboardType=3", "TQ4X_ForPennonNoCompressNode=1"});
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    EXPECT_EQ(outcome.Out, "TQ4X_ForPennonBillboardType = 3\nTQ4X_ForPennonNoCompressNode = 1\n");
    WriteScene("expected.gltf", "", R"("TQ4X_ForPennonBillboardType":3,"TQ4X_ForPennonNoCompressNode":1)");
    EXPECT_EQ(Read("marked.gltf"), Read("expected.gltf")) << "and nothing else";
}

TEST_F(SetCommandTest, AValueThatIsThereAlreadyChangesNoByte)
{
    WriteScene("marked.gltf", R"( "mine" : [1.0] , "TQ4X_ForPennonCombineGroupUse" : true )");
    const std::string before = Read("marked.gltf");
    EXPECT_EQ(Set("body", {"TQ4X_ForPennonCombineGroupUse=true"}).Code, Done);
    EXPECT_EQ(Read("marked.gltf"), before);
}

TEST_F(SetCommandTest, WritesAnotherFileIfWanted)
{
    const std::string before = Read("marked.gltf");
    EXPECT_EQ(Set("body", {"TQ4X_ForPennonNoCompressNode=1", "-o", Path("other.gltf")}).Code, Done);
    EXPECT_EQ(Read("marked.gltf"), before);
    WriteScene("expected.gltf", R"("TQ4X_ForPennonNoCompressNode":1)");
    EXPECT_EQ(Read("other.gltf"), Read("expected.gltf"));
}

TEST_F(SetCommandTest, ReadsValuesByTheTypeOfTheirParameter)
{
    const struct
    {
        const char* On;
        const char* Word;
        const char* Member;
    } cases[] = {
        {"body", "TQ4X_ForPennonBillboardType=6", R"("TQ4X_ForPennonBillboardType":6)"},
        {"body", "TQ4X_ForPennonForceExportKeyTrans=true", R"("TQ4X_ForPennonForceExportKeyTrans":true)"},
        {"body", "TQ4X_ForPennonForceExportKeyScale=0", R"("TQ4X_ForPennonForceExportKeyScale":false)"},
        {"red", "TQ4X_ForPennonMatAttrBlendMode=-1", R"("TQ4X_ForPennonMatAttrBlendMode":-1)"},
        {"material:red", "TQ4X_ForPennonRenderPrioPriority=255", R"("TQ4X_ForPennonRenderPrioPriority":255)"},
        {"body/arm", "TQ4X_ForPennonCombineGroupValue=0", R"("TQ4X_ForPennonCombineGroupValue":0)"},
        {"node:body", "TQ4X_ForPennonMatAttrCullFace=3", R"("TQ4X_ForPennonMatAttrCullFace":3)"},
    };

    for (const auto& row : cases) {
        WriteScene("marked.gltf");
        const Outcome outcome = Set(row.On, {row.Word});
        EXPECT_EQ(outcome.Code, Done) << row.Word << outcome.Err;
        EXPECT_THAT(Read("marked.gltf"), HasSubstr(std::string(R"("extras":{)") + row.Member + "}"));
    }
}

TEST_F(SetCommandTest, RefusesWhatCantBeSetAndLeavesTheFile)
{
    const struct
    {
        const char* On;
        std::vector<std::string> Words;
        const char* Error;
    } cases[] = {
        {"body",
         {"TQ4X_ForPennonBillboardType=7"},
         "The value of TQ4X_ForPennonBillboardType must be from 0 to 6, not 7."},
        {"body",
         {"TQ4X_ForPennonBillboardType=-1"},
         "The value of TQ4X_ForPennonBillboardType must be from 0 to 6, not -1."},
        {"red",
         {"TQ4X_ForPennonRenderPrioPriority=0"},
         "The value of TQ4X_ForPennonRenderPrioPriority must be from 1 to 255, not 0."},
        {"body",
         {"TQ4X_ForPennonBillboardType=three"},
         "The value of TQ4X_ForPennonBillboardType must be a whole number, not \"three\"."},
        {"body",
         {"TQ4X_ForPennonBillboardType=3.5"},
         "The value of TQ4X_ForPennonBillboardType must be a whole number, not \"3.5\"."},
        {"body",
         {"TQ4X_ForPennonBillboardType="},
         "The value of TQ4X_ForPennonBillboardType must be a whole number, not \"\"."},
        {"body",
         {"TQ4X_ForPennonCombineGroupUse=yes"},
         "The value of TQ4X_ForPennonCombineGroupUse must be true or false, not \"yes\"."},
        {"body",
         {"TQ4X_ForPennonBilboardType=1"},
         "No page has the parameter \"TQ4X_ForPennonBilboardType\"; did you mean "
         "\"TQ4X_ForPennonBillboardType\"?"},
        {"body", {"x=1"}, "No page has the parameter \"x\"."},
        {"body",
         {"TQ4X_ForPennonNoCompressNode=1", "TQ4X_ForPennonBillboardType=9"},
         "The value of TQ4X_ForPennonBillboardType must be from 0 to 6, not 9."},
        {"body",
         {"TQ4X_ForPennonBillboardSelectList=x"},
         "The page works TQ4X_ForPennonBillboardSelectList itself; it can't be set."},
        {"body",
         {"TQ4X_ForPennonBillboardSearchButton=true"},
         "The page works TQ4X_ForPennonBillboardSearchButton itself; it can't be set."},
        {"body",
         {"TQ4X_ForPennonBillboardType"},
         "A parameter is set by PARAMETER=VALUE, not \"TQ4X_ForPennonBillboardType\"."},
        {"body", {}, "There is nothing to set: PARAMETER=VALUE or --user-data is missing."},
        {"arm",
         {"TQ4X_ForPennonMatAttrCullFace=1"},
         "The parameter TQ4X_ForPennonMatAttrCullFace belongs to materials; the object has none."},
        {"red",
         {"TQ4X_ForPennonBillboardType=1"},
         "The parameter TQ4X_ForPennonBillboardType belongs to objects, not to materials."},
        {"body",
         {"TQ4X_ForPennonUserDataParamNameList=x"},
         "User data is set by --user-data NAME:TYPE=VALUE, not by TQ4X_ForPennonUserDataParamNameList."},
        {"bodi",
         {"TQ4X_ForPennonBillboardType=1"},
         "The scene has no object or material \"bodi\"; did you mean \"body\"?"},
        {"material:body", {"TQ4X_ForPennonBillboardType=1"}, "The scene has no material \"body\"."},
        {"material:reb",
         {"TQ4X_ForPennonBillboardType=1"},
         "The scene has no material \"reb\"; did you mean \"red\"?"},
        {"node:red", {"TQ4X_ForPennonBillboardType=1"}, "The scene has no object \"red\"."},
        {"body",
         {"BillboardType=1"},
         "No page has the parameter \"BillboardType\"; did you mean \"TQ4X_ForPennonBillboardType\"?"},
        {"body",
         {"forceexportkeyscale=1"},
         "No page has the parameter \"forceexportkeyscale\"; did you mean "
         "\"TQ4X_ForPennonForceExportKeyScale\"?"},
        {"body", {"TQ4X_ForPennonX=1"}, "No page has the parameter \"TQ4X_ForPennonX\"."},
        {"body",
         {"TQ4X_ForPennonUserDataItemName=x"},
         "User data is set by --user-data NAME:TYPE=VALUE, not by TQ4X_ForPennonUserDataItemName."},
        {"body",
         {"TQ4X_ForPennonSearchYBillboard=true"},
         "The page works TQ4X_ForPennonSearchYBillboard itself; it can't be set."},
        {"body",
         {"TQ4X_ForPennonRenderPriorityListSelect=1"},
         "The page works TQ4X_ForPennonRenderPriorityListSelect itself; it can't be set."},
        {"body", {"TQ4X_ForPennonBillboardType=1", "-o", ""}, "The option --output must name a file."},
        {"body",
         {"TQ4X_ForPennonBillboardType=1", "-o", "other.glb"},
         "The scene is a .gltf file and stays one; --output must not end in .glb."},
        {"arm/body", {"TQ4X_ForPennonBillboardType=1"}, "The scene has no object or material \"arm/body\"."},
    };

    const std::string before = Read("marked.gltf");
    for (const auto& row : cases) {
        const Outcome outcome = Set(row.On, row.Words);
        EXPECT_EQ(outcome.Code, WrongUsage) << row.Error;
        EXPECT_EQ(outcome.Err, std::string("error: ") + row.Error + "\n");
        EXPECT_EQ(outcome.Out, "");
        EXPECT_EQ(Read("marked.gltf"), before) << row.Error;
    }
}

TEST_F(SetCommandTest, TellsObjectsOfOneNameApartByTheirPath)
{
    const auto run = [&](const std::string& on) {
        return Run({"set", Path("scene.gltf"), "--on", on, "TQ4X_ForPennonNoCompressNode=1"});
    };
    EXPECT_EQ(run("hand").Err, "error: The scene has 2 objects \"hand\"; name one by its path, like "
                               "\"body/left/hand\", or by its number, like node:#3.\n");
    EXPECT_EQ(run("right/hand").Code, Done);
    EXPECT_THAT(Read("scene.gltf"), HasSubstr(R"({"name":"hand"},{"name":"hand","extras":{)"));
    EXPECT_EQ(run("body/left/hand").Code, Done);
    EXPECT_EQ(run("y/left/hand").Code, WrongUsage);
}

TEST_F(SetCommandTest, TellsRecordsThatShareAllNamesApartByTheirNumber)
{
    const std::string scene =
        R"({"asset":{"version":"2.0"},"nodes":[{"name":"a"},{"name":"a"},{"name":"#0"},{}],)"
        R"("materials":[{"name":"m"},{"name":"m"},{}]})";

    const struct
    {
        const char* On;
        const char* Word;
        const char* Before; ///< what stands before the new extras
        const char* Error;
    } cases[] = {
        {"a", "BillboardType", nullptr,
         "The scene has 2 objects \"a\"; name one by its path, like \"a\", or by its number, like node:#0."},
        {"m", "MatAttrCullFace", nullptr,
         "The scene has 2 materials \"m\"; name one by its number, like material:#0."},
        {"node:#1", "BillboardType", R"({"name":"a"},{"name":"a",)", ""},
        {"node:#0", "BillboardType", R"({"name":"#0",)", ""},
        {"node3", "BillboardType", R"({"name":"#0"},{)", ""},
        {"material:#1", "MatAttrCullFace", R"({"name":"m"},{"name":"m",)", ""},
        {"material2", "MatAttrCullFace", R"({"name":"m"},{)", ""},
        {"node:#4", "BillboardType", nullptr, "The scene has no object \"#4\"; did you mean \"#0\"?"},
        {"material:#", "MatAttrCullFace", nullptr, "The scene has no material \"#\"."},
        {"material:#1x", "MatAttrCullFace", nullptr, "The scene has no material \"#1x\"."},
        {"#1", "BillboardType", nullptr, "The scene has no object or material \"#1\"; did you mean \"#0\"?"},
    };

    for (const auto& row : cases) {
        Write("marked.gltf", scene);
        const Outcome outcome = Set(row.On, {std::string("TQ4X_ForPennon") + row.Word + "=2"});
        const bool isRefused = row.Before == nullptr;
        EXPECT_EQ(outcome.Err, isRefused ? std::string("error: ") + row.Error + "\n" : "") << row.On;
        EXPECT_THAT(Read("marked.gltf"),
                    isRefused
                        ? testing::Eq(scene)
                        : testing::Matcher<std::string>(HasSubstr(std::string(row.Before) + R"("extras":{)")))
            << row.On;
    }
}

TEST_F(SetCommandTest, SetsUserData)
{
    EXPECT_EQ(Set("arm", {"--user-data", R"(speed:integer=1\n2)", "--user-data", "label:string=a=b:c"}).Code,
              Done);
    EXPECT_EQ(Set("arm", {"--user-data", "mass:float=0.5"}).Code, Done);
    EXPECT_EQ(Set("arm", {"--user-data", "speed:integer=7"}).Code, Done) << "replaced in its place";
    const Outcome pages = Run({"pages", Path("marked.gltf")});
    EXPECT_THAT(pages.Out, HasSubstr(R"(UserDataParamNameList = "speed\r\nlabel\r\nmass")"));
    EXPECT_THAT(pages.Out, HasSubstr(R"(UserDataParamTypeList = "Integer\r\nString\r\nFloat")"));
    EXPECT_THAT(pages.Out, HasSubstr(R"(UserDataParamValueList = "7\r\na=b:c\r\n0.5")"));
    EXPECT_THAT(pages.Out, Not(HasSubstr("UserDataParamList"))) << "the chosen row is no mark";
}

TEST_F(SetCommandTest, ReadsEscapesInUserData)
{
    const Outcome outcome = Set("arm", {"--user-data", R"(path:string=c:\\new\\\n\t\)"});
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    const gltf::JsonValue written = gltf::ParseJson(Read("marked.gltf"));
    const gltf::JsonValue& arm = (*written.Find("nodes")->Array())[1];
    EXPECT_EQ(*arm.Find("extras")->Find("TQ4X_ForPennonUserDataParamValueList")->String(),
              "c:\\new\\\r\\t\\");
}

TEST_F(SetCommandTest, AddsUserDataToThatOfTheMesh)
{
    std::string scene = Read("marked.gltf");
    const std::string mesh = R"("meshes":[{)";
    scene.insert(scene.find(mesh) + mesh.size(), R"("extras":{"TQ4X_ForPennonUserDataParamNameList":"a",)"
                                                 R"("TQ4X_ForPennonUserDataParamTypeList":"Integer",)"
                                                 R"("TQ4X_ForPennonUserDataParamValueList":"1"},)");
    Write("marked.gltf", scene);
    EXPECT_EQ(Set("body", {"--user-data", "b:string=text"}).Code, Done);
    EXPECT_THAT(Run({"pages", Path("marked.gltf")}).Out, HasSubstr(R"(UserDataParamNameList = "a\r\nb")"));
}

TEST_F(SetCommandTest, TellsAValueWhoseSwitchIsOff)
{
    const char* const group =
        "note: TQ4X_ForPennonCombineGroupValue counts only while TQ4X_ForPennonCombineGroupUse is true.\n";
    const char* const priority = "note: TQ4X_ForPennonRenderPrioPriority counts only while "
                                 "TQ4X_ForPennonRenderPrioUsePriority is true.\n";
    EXPECT_EQ(Set("arm", {"TQ4X_ForPennonCombineGroupValue=3"}).Err, group);
    EXPECT_EQ(Set("arm", {"TQ4X_ForPennonCombineGroupValue=3", "TQ4X_ForPennonCombineGroupUse=true"}).Err,
              "");
    EXPECT_EQ(Set("arm", {"TQ4X_ForPennonCombineGroupValue=4"}).Err, "") << "it is on in the scene";
    EXPECT_EQ(Set("red", {"TQ4X_ForPennonRenderPrioPriority=4"}).Err, priority);
    EXPECT_EQ(Set("red", {"TQ4X_ForPennonRenderPrioUsePriority=false"}).Err, "");
}

TEST_F(SetCommandTest, TellsFilesThatAnotherFolderLacks)
{
    std::string scene = Read("marked.gltf");
    const std::size_t start = scene.find("data:");
    scene.replace(start, scene.find('"', start) - start, "body.bin");
    Write("marked.gltf", scene);
    Write("body.bin", std::string(36, '\0'));
    std::filesystem::create_directory(Folder / "other");
    const std::string target = Path("other/marked.gltf");
    EXPECT_EQ(Set("body", {"TQ4X_ForPennonBillboardType=1", "-o", target}).Err,
              "warning: " + target +
                  ": The scene names files beside it, like \"body.bin\"; they were not copied.\n");
    EXPECT_EQ(Set("body", {"TQ4X_ForPennonBillboardType=1", "-o", Path("beside.gltf")}).Err, "");
    EXPECT_EQ(Set("body", {"TQ4X_ForPennonBillboardType=1"}).Err, "");
}

TEST_F(SetCommandTest, ABinarySceneStaysOne)
{
    const std::string json = R"({"asset":{"version":"2.0"},"nodes":[{"name":"body"}]})" + std::string(3, ' ');
    const auto number = [](std::size_t value) {
        return std::string{static_cast<char>(value), static_cast<char>(value >> 8), '\0', '\0'};
    };
    ASSERT_EQ(json.size() % 4, 0u);
    Write("scene.glb", "glTF" + number(2) + number(20 + json.size()) + number(json.size()) + "JSON" + json);
    const std::vector<std::string> words = {
        "set", Path("scene.glb"), "--on", "body", "-o", Path("out.gltf"), "TQ4X_ForPennonBillboardType=2"};
    EXPECT_EQ(Run(words).Err,
              "error: The scene is a .glb file and stays one; --output must not end in .gltf.\n");
    EXPECT_FALSE(std::filesystem::exists(Folder / "out.gltf"));
    EXPECT_EQ(Run({"set", Path("scene.glb"), "--on", "body", "TQ4X_ForPennonBillboardType=2"}).Code, Done);
    EXPECT_THAT(Run({"pages", Path("scene.glb")}).Out, HasSubstr("BillboardType = 2"));
}

TEST_F(SetCommandTest, RefusesUserDataInTheWordsOfThePage)
{
    const struct
    {
        const char* Item;
        const char* Error;
    } cases[] = {
        {"a b:integer=1", "Name is wrong (please use only [alphabetic/numeric character] [-] [_] [.])"},
        {":integer=1", "Name is empty."},
        {"n:integer=", "Number is empty."},
        {"n:integer=007", "Please input integer number."},
        {"n:float=x", "Please input float number."},
        {"n:string=", "String is empty."},
        {"n:string=<", "String is wrong (please don't use [<] [>] [&] ['] [double quote])"},
        {"n:string=>", "String is wrong (please don't use [<] [>] [&] ['] [double quote])"},
        {"n:string=&", "String is wrong (please don't use [<] [>] [&] ['] [double quote])"},
        {"n:string='", "String is wrong (please don't use [<] [>] [&] ['] [double quote])"},
        {"n:string=\"", "String is wrong (please don't use [<] [>] [&] ['] [double quote])"},
    };

    const std::string before = Read("marked.gltf");
    for (const auto& row : cases) {
        const Outcome outcome = Set("arm", {"--user-data", "good:integer=1", "--user-data", row.Item});
        EXPECT_EQ(outcome.Code, WrongUsage) << row.Item;
        EXPECT_EQ(outcome.Err, std::string("error: ") + row.Error +
                                   "\nnote: The page said so about --user-data \"" + row.Item +
                                   "\"; nothing was written.\n");
        EXPECT_EQ(outcome.Out, "");
        EXPECT_EQ(Read("marked.gltf"), before);
    }
}

TEST_F(SetCommandTest, RefusesUserDataThatIsNoItem)
{
    const struct
    {
        const char* Item;
        const char* Error;
    } cases[] = {
        {"n:word=x", "The type of user data must be string, integer or float, not \"word\"."},
        {"n=x", "User data must be NAME:TYPE=VALUE, not \"n=x\"."},
        {"n", "User data must be NAME:TYPE=VALUE, not \"n\"."},
    };

    const std::string before = Read("marked.gltf");
    for (const auto& row : cases) {
        const Outcome outcome = Set("arm", {"--user-data", row.Item});
        EXPECT_EQ(outcome.Code, WrongUsage) << row.Item;
        EXPECT_EQ(outcome.Err, std::string("error: ") + row.Error + "\n");
        EXPECT_EQ(Read("marked.gltf"), before);
    }
}

TEST_F(SetCommandTest, TellsFilesThatCantBeReadOrWritten)
{
    EXPECT_EQ(Run({"set", Path("missing.gltf"), "--on", "x", "y=1"}).Code, BadInput);
    Write("broken.gltf", "{");
    EXPECT_EQ(Run({"set", Path("broken.gltf"), "--on", "x", "y=1"}).Code, BadInput);
    WriteScene("marked.gltf");
    Write("list.gltf", R"({"asset":{"version":"2.0"},"nodes":[{"name":"x","extras":[]}]})");
    const Outcome list = Run({"set", Path("list.gltf"), "--on", "x", "TQ4X_ForPennonBillboardType=1"});
    EXPECT_EQ(list.Code, BadInput);
    EXPECT_THAT(list.Err, HasSubstr("/nodes/0: The extras are no object"));
    const std::string target = Path("no/folder/out.gltf");
    const Outcome outcome = Set("body", {"TQ4X_ForPennonBillboardType=1", "-o", target});
    EXPECT_EQ(outcome.Code, BadOutput);
    EXPECT_EQ(outcome.Err, "error: The file " + target + " can't be written.\n");
    EXPECT_EQ(Run({"set", Path("marked.gltf"), "y=1"}).Err,
              "error: The option --on must name what is to be marked.\n");
    EXPECT_EQ(RunInside({"set", Path("marked.gltf"), "--on", "body", "x=1", "--plugin", "/none.so"}).Code,
              NoPlugin);
}

TEST_F(PagesCommandTest, ListsObjectsThenMaterialsWithTheirPages)
{
    WriteScene("marked.gltf", R"("TQ4X_ForPennonBillboardType":2,"other":1)",
               R"("TQ4X_ForPennonCombineGroupUse":true)", R"("TQ4X_ForPennonRenderPrioPriority":9)");
    EXPECT_EQ(Run({"pages", Path("marked.gltf")}).Out, R"(object body
  TQ4X_ForPennonBillboardProp
    TQ4X_ForPennonBillboardType = 2
object body/arm
  TQ4X_ForPennonCombineGroupProp
    TQ4X_ForPennonCombineGroupUse = true
    TQ4X_ForPennonCombineGroupValue = 0
material red
  TQ4X_ForPennonRenderPriorityProp
    TQ4X_ForPennonRenderPrioUsePriority = false
    TQ4X_ForPennonRenderPrioPriority = 9
)");
}

TEST_F(PagesCommandTest, ASceneWithoutMarksHasNothingToList)
{
    const Outcome outcome = Run({"pages", Path("marked.gltf")});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_EQ(outcome.Out, "");
    EXPECT_EQ(outcome.Err,
              "note: Nothing in the scene is marked; \"tq4x pages\" alone lists the marks that there are.\n");
    EXPECT_EQ(Run({"pages", Path("missing.gltf")}).Code, BadInput);
    EXPECT_EQ(RunInside({"pages", Path("marked.gltf"), "--plugin", "/none.so"}).Code, NoPlugin);
}

TEST_F(PagesCommandTest, WithoutASceneListsTheMarksThatThereAre)
{
    const Outcome outcome = Run({"pages"});
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    tq4x::test::ExpectGolden(outcome.Out, "app/cli/marks.txt");
}

/// A mark that can be set in three ways: as a custom property in the scene, by the program, by a page.
struct Mark
{
    const char* Name;
    const char* On;
    const char* Callback;
    std::vector<std::pair<std::string, std::string>> Values; ///< parameter without prefix, JSON value
};

class ThreeWays : public MarkedSceneTest
{
protected:
    std::string ByExtras(const Mark& mark)
    {
        std::string members;
        for (const auto& [parameter, value] : mark.Values) {
            members +=
                (members.empty() ? "\"TQ4X_ForPennon" : ",\"TQ4X_ForPennon") + parameter + "\":" + value;
        }
        const std::string on = mark.On;
        WriteScene("extras.gltf", on == "body" ? members : "", on == "arm" ? members : "",
                   on == "red" ? members : "");
        return Model("extras.gltf");
    }

    std::string BySet(const Mark& mark)
    {
        WriteScene("marked.gltf");
        std::vector<std::string> words;
        for (const auto& [parameter, value] : mark.Values) {
            words.push_back("TQ4X_ForPennon" + parameter + "=" + value);
        }
        EXPECT_EQ(Set(mark.On, words).Code, Done) << mark.Name;
        return Model("marked.gltf");
    }

    /// Opens the unmarked scene in the host, marks by the page as a person would, and exports.
    std::string ByPage(const Mark& mark)
    {
        const auto change = [&](tq4x::test::PageDriver& page) {
            for (const auto& [parameter, value] : mark.Values) {
                page.Set(parameter, value.c_str());
            }
        };
        return ExportAfter(mark.On, mark.Callback, change);
    }

    template<class Change>
    std::string ExportAfter(const std::string& on, const char* callback, const Change& change)
    {
        WriteScene("plain.gltf");
        XSI::Host::Session::Current().Reset();
        EXPECT_EQ(LoadPluginFile(TQ4X_WHOLE_PLUGIN), "");
        EXPECT_EQ(gltf::OpenScene(Path("plain.gltf"), {}).Error, "");
        XSI::CRef selected = FindObject(on).Object;
        if (!selected.IsValid()) {
            selected.Set(XSI::Host::FromUtf8("DefaultLib." + on));
        }
        XSI::Application().GetSelection().Add(selected);
        tq4x::test::PageDriver page(callback);
        change(page);
        XSI::CValueArray options;
        options.Add("OptimizePrimitive:false");
        options.Add("AlwaysOverwrite");
        options.Add(XSI::Host::FromUtf8(Compared.Option));
        XSI::CValueArray arguments;
        arguments.Add("model");
        arguments.Add(XSI::Host::FromUtf8(Path("out")));
        arguments.Add(options);
        XSI::CValue result;
        setenv("TQ4X_AUTHOR", "ann", 1);
        XSI::Application().ExecuteCommand("TQ4X_ForPennonExport", arguments, result);
        XSI::Host::Session::Current().Reset();
        return WithoutSource(Read("out/" + Compared.Name));
    }
};

TEST_F(ThreeWays, HaveTheSameEffectOnTheModel)
{
    const Mark marks[] = {
        {"billboard", "arm", "OnTQ4XSetBillboardDialog", {{"BillboardType", "3"}}},
        {"no compress", "body", "OnTQ4XSetNoCompDialog", {{"NoCompressNode", "1"}}},
        {"combine group",
         "body",
         "OnTQ4XSetCombineGroupDialog",
         {{"CombineGroupUse", "true"}, {"CombineGroupValue", "9"}}},
        {"render priority",
         "red",
         "OnTQ4XSetRenderPriorityDialog",
         {{"RenderPrioUsePriority", "true"}, {"RenderPrioPriority", "7"}}},
        {"face culling", "red", "OnTQ4XSetMaterialAttrDialog", {{"MatAttrCullFace", "3"}}},
        {"blend mode", "red", "OnTQ4XSetMaterialAttrDialog", {{"MatAttrBlendMode", "2"}}},
        {"fragment lighting", "red", "OnTQ4XSetMaterialAttrDialog", {{"MatAttrFragmentLighting", "false"}}},
        {"vertex lighting", "red", "OnTQ4XSetMaterialAttrDialog", {{"MatAttrVertexLighting", "true"}}},
        {"no compress of a material", "red", "OnTQ4XSetMaterialAttrDialog", {{"MatAttrNoCompress", "1"}}},
    };
    const std::string unmarked = Model("marked.gltf");
    EXPECT_GT(unmarked.size(), 1000u);
    for (const Mark& mark : marks) {
        const std::string model = ByExtras(mark);
        EXPECT_NE(model, unmarked) << mark.Name;
        EXPECT_EQ(BySet(mark), model) << mark.Name;
        EXPECT_EQ(ByPage(mark), model) << mark.Name;
    }
}

TEST_F(ThreeWays, HaveTheSameEffectForUserData)
{
    WriteScene("extras.gltf", "",
               R"("TQ4X_ForPennonUserDataParamNameList":"speed\r\nlabel",)"
               R"("TQ4X_ForPennonUserDataParamTypeList":"Integer\r\nString",)"
               R"("TQ4X_ForPennonUserDataParamValueList":"1\r2\r\ntext")");
    const std::string model = Model("extras.gltf");
    EXPECT_THAT(model, HasSubstr("<Key>speed</Key>"));
    EXPECT_EQ(Set("arm", {"--user-data", R"(speed:integer=1\n2)", "--user-data", "label:string=text"}).Code,
              Done);
    EXPECT_EQ(Model("marked.gltf"), model);
    const auto add = [](tq4x::test::PageDriver& page, const char* name, int type, const char* value) {
        XSI::Host::Session::Current().Fill.PageOpened = [=](XSI::Host::PropertyPage& opened) {
            tq4x::test::PageDriver(opened)
                .Set("UserDataItemName", name)
                .Set("UserDataItemType", type)
                .Set("UserDataItemValue", value);
        };
        page.Press("UserDataButtonAdd");
    };
    EXPECT_EQ(ExportAfter("arm", "OnTQ4XSetUserDataDialog",
                          [&](tq4x::test::PageDriver& page) {
                              add(page, "speed", 1, "1\n2");
                              page.Set("UserDataParamList", 1);
                              add(page, "label", 0, "text");
                          }),
              model);
}

/// Forced keys show in the animation file: a node that rests gets curves.
TEST_F(ThreeWays, HaveTheSameEffectForForcedKeys)
{
    Compared = {"model.qskla", "OutputQskla:true"};
    const std::string plain = Model("marked.gltf");
    for (const char* parameter : {"ForceExportKeyTrans", "ForceExportKeyRotate", "ForceExportKeyScale"}) {
        const Mark mark{parameter, "arm", "OnTQ4XSetForceExportKeyDialog", {{parameter, "true"}}};
        const std::string forced = ByExtras(mark);
        EXPECT_NE(forced, plain) << parameter;
        EXPECT_EQ(BySet(mark), forced) << parameter;
        EXPECT_EQ(ByPage(mark), forced) << parameter;
    }
}

} // namespace
} // namespace tq4x::cli::test
