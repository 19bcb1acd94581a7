#include "pipeline/Envelope.h"

#include "pipeline/OutputFile.h"
#include "pipeline/Platform.h"
#include "pipeline/XmlWriter.h"

namespace tq4x
{
namespace
{

void Run(const XmlSection& section, XmlWriter& stream)
{
    if (section)
        section(stream);
}

void WriteCreate(XmlWriter& stream, const FrameRecord& record)
{
    const XmlAttributes attributes = {
        {"Author", record.Author}, {"Date", record.Date}, {"Source", record.Source}};
    stream.Element("Create", attributes, [&] {
        stream.Empty("ToolDescriptions", {{"Name", record.ToolName}, {"Version", record.ToolVersion}});
    });
}

/// The block stands at level 1 in both places, although its first parent does too.
void WriteEditData(XmlWriter& stream, const FrameRecord& record, const XmlSection& editData)
{
    stream.AtLevel(1, [&] {
        stream.Element("EditData", [&] {
            stream.Element("MetaData", [&] { WriteCreate(stream, record); });
            Run(editData, stream);
        });
    });
}

} // namespace

std::string ToolNameText()
{
    return std::string("TQ4X_ForPennonExport for ") + HostName;
}

FrameRecord MakeFrameRecord(const std::string& date, const std::string& source)
{
    return {CurrentPlatform().UserName(), date, source, ToolNameText(), ToolVersion};
}

void WriteFrame(XmlWriter& stream, const FrameRecord& record, EditDataPlace place, const XmlSection& editData,
                const XmlSection& sections)
{
    stream.Line(R"(<?xml version="1.0" encoding="utf-8"?>)");
    stream.Element("VendaralWareIntermediateFile", [&] {
        if (place == EditDataPlace::BeforeContent)
            WriteEditData(stream, record, editData);
        stream.Element("GraphicsContentQtr", {{"Namespace", ""}, {"Version", "1.2.0"}}, [&] {
            if (place == EditDataPlace::InsideContent)
                WriteEditData(stream, record, editData);
            Run(sections, stream);
        });
    });
}

std::string EditDataText(const FrameRecord& record)
{
    XmlWriter stream;
    WriteEditData(stream, record, {});
    return stream.Text();
}

bool WriteFrameFile(const std::string& path, const FrameRecord& record, EditDataPlace place,
                    const XmlSection& editData, const XmlSection& sections)
{
    OutputFile file;
    if (!OpenOutput(file, path))
        return false;
    {
        XmlWriter stream(file);
        WriteFrame(stream, record, place, editData, sections);
    }
    CommitOutput(file);
    return true;
}

} // namespace tq4x
