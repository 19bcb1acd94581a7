#include "pipeline/ExportOptions.h"

#include "support/MessageRecorder.h"

#include <new>

namespace
{
bool g_refuseMemory = false;
}

// Stands in for a system that is out of memory, for callers that ask without exceptions.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return g_refuseMemory ? nullptr : ::operator new(size);
}

namespace tq4x
{
namespace
{

using testing::ElementsAre;

ExportOptions Load(std::vector<std::string> texts)
{
    ExportOptions options;
    options.LoadFromArguments({"name", "folder", std::move(texts)});
    return options;
}

TEST(ExportOptions, Defaults)
{
    const ExportOptions options;
    EXPECT_EQ(options.OutputFileName, "");
    EXPECT_EQ(options.OutputFolder, "");
    EXPECT_EQ(options.ExportTarget, 0u);
    EXPECT_FALSE(options.MergeQmdl);
    EXPECT_EQ(options.MergeQmdlPath, "");
    EXPECT_FALSE(options.AlwaysOverwrite);
    EXPECT_FALSE(options.UseBrellStudio);
    EXPECT_EQ(options.Magnify, 1.0f);
    EXPECT_EQ(options.FrameRange, 0u);
    EXPECT_EQ(options.StartFrame, 1);
    EXPECT_EQ(options.EndFrame, 9999);
    EXPECT_TRUE(options.OutputQmdl);
    EXPECT_TRUE(options.OutputQtex);
    EXPECT_FALSE(options.OutputQskla || options.OutputQmata || options.OutputQlgt || options.OutputQcam ||
                 options.OutputQmdla || options.OutputQenv);
    EXPECT_EQ(options.CompressNode, 0u);
    EXPECT_FALSE(options.CompressMaterial);
    EXPECT_TRUE(options.OptimizePrimitive);
    EXPECT_FALSE(options.ConvertToModel);
    EXPECT_EQ(options.QuantizePos, 0u);
    EXPECT_EQ(options.QuantizeNrm, 0u);
    EXPECT_EQ(options.QuantizeTex, 0u);
    EXPECT_EQ(options.AdjustSkinning, 0u);
    EXPECT_EQ(options.MeshVisibilityMode, 0u);
    EXPECT_FALSE(options.NonUniformScale);
    EXPECT_EQ(options.MaxReservedUniformRegisters, 0);
    EXPECT_EQ(options.FramePrecision, 1.0f);
    EXPECT_TRUE(options.LoopAnim);
    EXPECT_FALSE(options.FrameFormat);
    EXPECT_EQ(options.TranslateQuantizeQuality, 9);
    EXPECT_EQ(options.RotateQuantizeQuality, 9);
    EXPECT_EQ(options.ScaleQuantizeQuality, 9);
    EXPECT_EQ(options.ToleranceTranslate, 0.01f);
    EXPECT_EQ(options.ToleranceRotate, 0.1f);
    EXPECT_EQ(options.ToleranceScale, 0.1f);
    EXPECT_EQ(options.ToleranceTexTranslate, 0.01f);
    EXPECT_EQ(options.ToleranceTexRotate, 0.1f);
    EXPECT_EQ(options.ToleranceTexScale, 0.1f);
    EXPECT_EQ(options.ToleranceColor, 0.001f);
    EXPECT_TRUE(options.SoftimageInvertVertexColorAlpha);
    EXPECT_FALSE(options.SoftimageIgnoreAmbientTexture);
}

TEST(ExportOptions, LiveRecord)
{
    DestroyOptions();
    EXPECT_EQ(LiveOptions(), nullptr);
    EXPECT_EQ(CurrentOptions(), ExportOptions{});
    ExportOptions* options = CreateOptions();
    ASSERT_NE(options, nullptr);
    options->Magnify = 2.0f;
    EXPECT_EQ(LiveOptions(), options);
    EXPECT_EQ(CurrentOptions().Magnify, 2.0f);
    ASSERT_NE(CreateOptions(), nullptr);
    EXPECT_EQ(CurrentOptions().Magnify, 1.0f);
    DestroyOptions();
    EXPECT_EQ(LiveOptions(), nullptr);
    EXPECT_EQ(CurrentOptions().Magnify, 1.0f);
}

TEST(ExportOptions, NoMemoryForTheRecordIsAnError)
{
    const test::MessageRecorder recorder;
    ASSERT_NE(CreateOptions(), nullptr);
    g_refuseMemory = true;
    EXPECT_EQ(CreateOptions(), nullptr);
    g_refuseMemory = false;
    EXPECT_EQ(LiveOptions(), nullptr);
    EXPECT_THAT(test::MessageRecorder::Messages(), ElementsAre("E Internal Error"));
}

TEST(ExportOptions, NameAndFolderAreArgumentsOfTheirOwn)
{
    const ExportOptions options = Load({"OutputFileName:x", "OutputFolder:y"});
    EXPECT_EQ(options.OutputFileName, "name");
    EXPECT_EQ(options.OutputFolder, "folder");
    EXPECT_EQ(Load({}).OutputQmdl, true);
}

/// One text, and what it changes in a record with the defaults.
struct ArgumentCase
{
    const char* Text;
    void (*Change)(ExportOptions&);
};

using O = ExportOptions;

const ArgumentCase ArgumentCases[] = {
    {"ExportTarget:All", [](O& o) { o.ExportTarget = 0; }},
    {"ExportTarget:Selection", [](O& o) { o.ExportTarget = 1; }},
    {"ExportTarget:all", [](O& o) { o.ExportTarget = 1; }},
    {"et:", [](O& o) { o.ExportTarget = 1; }},
    {"mc:true", [](O& o) { o.MergeQmdl = true; }},
    {"MergeQmdl:True", [](O&) {}},
    {"MergeQmdl:1", [](O&) {}},
    {"MergeQmdlPath:C:\\a:b.qmdl", [](O& o) { o.MergeQmdlPath = "C:\\a:b.qmdl"; }},
    {"mcp:x", [](O& o) { o.MergeQmdlPath = "x"; }},
    {"AlwaysOverwrite:true", [](O& o) { o.AlwaysOverwrite = true; }},
    {"AlwaysOverwrite:false", [](O& o) { o.AlwaysOverwrite = true; }},
    {"AlwaysOverwrite:", [](O& o) { o.AlwaysOverwrite = true; }},
    {"AlwaysOverwrite", [](O& o) { o.AlwaysOverwrite = true; }},
    {"ao", [](O& o) { o.AlwaysOverwrite = true; }},
    {"OutputMode:BrellStudio", [](O& o) { o.UseBrellStudio = true; }},
    {"OutputMode:File", [](O&) {}},
    {"OutputMode:true", [](O&) {}},
    {"Magnify:2.5", [](O& o) { o.Magnify = 2.5f; }},
    {"mgf:x", [](O& o) { o.Magnify = 0.0f; }},
    {"Magnify", [](O& o) { o.Magnify = 0.0f; }},
    {"Magnify:1e99", [](O& o) { o.Magnify = 3.4028235e38f; }},
    {"SelectAnimationFrame:Range", [](O& o) { o.FrameRange = 2; }},
    {"FrameRange:Playback", [](O& o) { o.FrameRange = 1; }},
    {"saf:range", [](O& o) { o.FrameRange = 0; }},
    {"AnimationStartFrame:-5", [](O& o) { o.StartFrame = -5; }},
    {"StartFrame:7.9", [](O& o) { o.StartFrame = 7; }},
    {"asf:9999999999", [](O& o) { o.StartFrame = 2147483647; }},
    {"AnimationEndFrame:50", [](O& o) { o.EndFrame = 50; }},
    {"EndFrame:50", [](O& o) { o.EndFrame = 50; }},
    {"aef:50", [](O& o) { o.EndFrame = 50; }},
    {"ModelExport:false", [](O& o) { o.OutputQmdl = false; }},
    {"me", [](O& o) { o.OutputQmdl = false; }},
    {"OutputQmdl:", [](O& o) { o.OutputQmdl = false; }},
    {"TextureExport:false", [](O& o) { o.OutputQtex = false; }},
    {"te:no", [](O& o) { o.OutputQtex = false; }},
    {"AnimationExport:true", [](O& o) { o.OutputQskla = true; }},
    {"ae:true", [](O& o) { o.OutputQskla = true; }},
    {"MaterialAnimationExport:true", [](O& o) { o.OutputQmata = true; }},
    {"mae:true", [](O& o) { o.OutputQmata = true; }},
    {"LightExport:true", [](O& o) { o.OutputQlgt = true; }},
    {"le:true", [](O& o) { o.OutputQlgt = true; }},
    {"CameraExport:true", [](O& o) { o.OutputQcam = true; }},
    {"ce:true", [](O& o) { o.OutputQcam = true; }},
    {"ModelAnimationExport:true", [](O& o) { o.OutputQmdla = true; }},
    {"OutputQmdla:true", [](O& o) { o.OutputQmdla = true; }},
    {"OutputQenv:true", [](O& o) { o.OutputQenv = true; }},
    {"ComressNode:3", [](O& o) { o.CompressNode = 3; }},
    {"ComressNode:UniteCompressible", [](O&) {}},
    {"NodeCompression:4", [](O& o) { o.CompressNode = 4; }},
    {"ncmp:1", [](O& o) { o.CompressNode = 1; }},
    {"NodeCompressMode:1", [](O&) {}},
    {"MaterialCompression:1", [](O& o) { o.CompressMaterial = true; }},
    {"ComressMaterial:-7", [](O& o) { o.CompressMaterial = true; }},
    {"mcmp:true", [](O&) {}},
    {"OptimizePrimitive:false", [](O& o) { o.OptimizePrimitive = false; }},
    {"op:", [](O& o) { o.OptimizePrimitive = false; }},
    {"ctm:true", [](O& o) { o.ConvertToModel = true; }},
    {"PositionQzType:Short", [](O& o) { o.QuantizePos = 1; }},
    {"QuantizePos:Byte", [](O& o) { o.QuantizePos = 3; }},
    {"pqzt:", [](O&) {}},
    {"QuantizePos:3", [](O&) {}},
    {"nqzt:Byte", [](O& o) { o.QuantizeNrm = 3; }},
    {"tcqzt:Short", [](O& o) { o.QuantizeTex = 1; }},
    {"AdjustSkinning:1", [](O& o) { o.AdjustSkinning = 1; }},
    {"MeshVisibilityMode:1", [](O& o) { o.MeshVisibilityMode = 1; }},
    {"NonUniformScale:true", [](O& o) { o.NonUniformScale = true; }},
    {"MaxReservedUniformRegisters:57", [](O& o) { o.MaxReservedUniformRegisters = 57; }},
    {"BakePrecision:0.5", [](O& o) { o.FramePrecision = 0.5f; }},
    {"FramePrecision:0.1", [](O& o) { o.FramePrecision = 0.1f; }},
    {"pb:0.2", [](O& o) { o.FramePrecision = 0.2f; }},
    {"la:false", [](O& o) { o.LoopAnim = false; }},
    {"ff:true", [](O& o) { o.FrameFormat = true; }},
    {"TranslateQuantizeQuality:1", [](O& o) { o.TranslateQuantizeQuality = 1; }},
    {"RotateQuantizeQuality:2", [](O& o) { o.RotateQuantizeQuality = 2; }},
    {"ScaleQuantizeQuality:3", [](O& o) { o.ScaleQuantizeQuality = 3; }},
    {"ntt:1", [](O& o) { o.ToleranceTranslate = 1.0f; }},
    {"nrt:2", [](O& o) { o.ToleranceRotate = 2.0f; }},
    {"nst:3", [](O& o) { o.ToleranceScale = 3.0f; }},
    {"TexTransTolerance:4", [](O& o) { o.ToleranceTexTranslate = 4.0f; }},
    {"TexRotTolerance:5", [](O& o) { o.ToleranceTexRotate = 5.0f; }},
    {"TexSclTolerance:6", [](O& o) { o.ToleranceTexScale = 6.0f; }},
    {"ColorTolerance:7", [](O& o) { o.ToleranceColor = 7.0f; }},
    {"ivca:false", [](O& o) { o.SoftimageInvertVertexColorAlpha = false; }},
    {"iat:true", [](O& o) { o.SoftimageIgnoreAmbientTexture = true; }},
    {"SoftimageIgnoreAmbientTexture:true", [](O&) {}},
    {"BakeAllAnim:false", [](O&) {}},
    {"BakeAllAnim:true", [](O&) {}},
    {"magnify:2", [](O&) {}},
    {" Magnify:2", [](O&) {}},
    {"Magnify :2", [](O&) {}},
    {"", [](O&) {}},
    {":", [](O&) {}},
    {":true", [](O&) {}},
    {"Unknown:1", [](O&) {}},
};

TEST(ExportOptions, KeyValueTexts)
{
    for (const ArgumentCase& row : ArgumentCases) {
        ExportOptions expected;
        expected.OutputFileName = "name";
        expected.OutputFolder = "folder";
        row.Change(expected);
        EXPECT_EQ(Load({row.Text}), expected) << row.Text;
    }
}

TEST(ExportOptions, LaterTextsReplaceEarlierOnes)
{
    EXPECT_EQ(Load({"Magnify:2", "mgf:3"}).Magnify, 3.0f);
}

} // namespace
} // namespace tq4x
