#include "pipeline/Envelope.h"

#include "pipeline/XmlWriter.h"
#include "support/Golden.h"
#include "support/MessageRecorder.h"
#include "support/PlatformGuard.h"
#include "support/TemporaryFolder.h"
#include "support/WrittenFiles.h"

namespace tq4x
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const FrameRecord Record = {"ann", "2013-04-09T08:07:06", "house.scn",
                            "TQ4X_ForPennonExport for Softimage 2013", "0.5.3"};

std::string FrameText(const FrameRecord& record, EditDataPlace place, const XmlSection& editData = {},
                      const XmlSection& sections = {})
{
    XmlWriter stream;
    WriteFrame(stream, record, place, editData, sections);
    return stream.Text();
}

TEST(Envelope, FrameWithoutSectionsIsWhole)
{
    test::ExpectGolden(FrameText(Record, EditDataPlace::InsideContent), "core/pipeline/empty-frame.xml");
}

TEST(Envelope, EditBlockOfATextureFileStandsBeforeTheContent)
{
    test::ExpectGolden(FrameText(Record, EditDataPlace::BeforeContent),
                       "core/pipeline/empty-texture-frame.xml");
}

TEST(Envelope, EditBlockAsTextIsThatOfTheFrame)
{
    const std::string frame = FrameText(Record, EditDataPlace::BeforeContent);
    EXPECT_THAT(frame, HasSubstr("<VendaralWareIntermediateFile>\n" + EditDataText(Record) +
                                 "\t<GraphicsContentQtr"));
}

TEST(Envelope, SectionsStandBehindTheEditBlockAtLevelTwo)
{
    const std::string text = FrameText(
        Record, EditDataPlace::InsideContent, [](XmlWriter& stream) { stream.Empty("Summary"); },
        [](XmlWriter& stream) { stream.Empty("Models"); });
    EXPECT_THAT(text, HasSubstr("\t\t</MetaData>\n\t\t<Summary/>\n\t</EditData>\n\t\t<Models/>\n"
                                "\t</GraphicsContentQtr>\n"));
}

TEST(Envelope, NothingIsEscaped)
{
    FrameRecord record = Record;
    record.Author = "a&b<c>\"d\"";
    record.Source = "x&y.scn";
    EXPECT_THAT(FrameText(record, EditDataPlace::InsideContent),
                HasSubstr("<Create Author=\"a&b<c>\"d\"\" Date=\"2013-04-09T08:07:06\" Source=\"x&y.scn\">"));
}

TEST(Envelope, NamesOfTheCodePageBecomeUtf8)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageShiftJis);
    FrameRecord record = Record;
    record.Author = "\x95\x5C";
    EXPECT_THAT(FrameText(record, EditDataPlace::InsideContent), HasSubstr("Author=\"\xE8\xA1\xA8\""));
}

TEST(Envelope, RecordNamesUserAndTool)
{
    test::PlatformGuard guard;
    guard.FixUserAndTime();
    const FrameRecord record = MakeFrameRecord("d", "s");
    EXPECT_EQ(record.Author, "ann");
    EXPECT_EQ(record.Date, "d");
    EXPECT_EQ(record.Source, "s");
    EXPECT_EQ(record.ToolName, "TQ4X_ForPennonExport for Softimage 2013");
    EXPECT_EQ(record.ToolVersion, "0.5.3");
}

TEST(Envelope, FileHoldsTheFrame)
{
    const test::WrittenFolder folder;
    const test::MessageRecorder recorder;
    const std::string path = (folder / "a.b.qenv").string();
    EXPECT_TRUE(WriteFrameFile(path, Record, EditDataPlace::InsideContent, {}, {}));
    EXPECT_EQ(test::ReadWholeFile(path), FrameText(Record, EditDataPlace::InsideContent));
    EXPECT_THAT(test::MessageRecorder::Messages(), IsEmpty());
}

TEST(Envelope, FileThatCannotBeOpenedIsReportedWithItsPath)
{
    const test::TemporaryFolder folder;
    const test::MessageRecorder recorder;
    const std::string path = (folder / "missing/a.qenv").string();
    EXPECT_FALSE(WriteFrameFile(path, Record, EditDataPlace::InsideContent, {}, {}));
    EXPECT_THAT(test::MessageRecorder::Messages(), ElementsAre("E Can't open file(" + path + ")"));
}

TEST(Envelope, WhatFailsAfterOpeningIsTold)
{
    const test::TemporaryFolder folder;
    const test::MessageRecorder recorder;
    const std::string path = (folder / "a.qenv").string();
    const XmlSection takePlace = [&](XmlWriter&) { std::filesystem::create_directory(path); };
    EXPECT_TRUE(WriteFrameFile(path, Record, EditDataPlace::InsideContent, {}, takePlace));
    EXPECT_TRUE(std::filesystem::is_directory(path));
    EXPECT_THAT(test::MessageRecorder::Messages(), ElementsAre("E Can't write file(" + path + ")."));
}

} // namespace
} // namespace tq4x
