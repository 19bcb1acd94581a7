#pragma once

#include <functional>
#include <string>

namespace tq4x
{

class XmlWriter;

/// Host and version that the files name, and the tool name made of them.
inline constexpr const char* HostName = "Softimage 2013";
inline constexpr const char* ToolVersion = "0.5.3";

/// "TQ4X_ForPennonExport for Softimage 2013"
std::string ToolNameText();

/// The creation record of a file. One record serves all files of an export.
struct FrameRecord
{
    std::string Author; ///< name of the logged-on user
    std::string Date;   ///< local time, "2013-04-09T08:07:06"
    std::string Source; ///< file name of the scene, without its folder
    std::string ToolName;
    std::string ToolVersion;
};

/// The record for an export that began at `date`: author from the platform, this tool's name and version.
FrameRecord MakeFrameRecord(const std::string& date, const std::string& source);

/// Where the edit block with the creation record stands.
enum class EditDataPlace
{
    InsideContent, ///< first child of `GraphicsContentQtr`: all kinds but the texture file
    BeforeContent, ///< child of the root, before `GraphicsContentQtr`: the texture file
};

/// Writes a part of a document. An empty function writes nothing.
using XmlSection = std::function<void(XmlWriter&)>;

/// Writes a whole document: declaration, root, content element, edit block, with `editData` behind `MetaData`
/// and `sections` behind the edit block, both at level 2. Nothing is escaped, as everywhere in attributes.
void WriteFrame(XmlWriter& stream, const FrameRecord& record, EditDataPlace place, const XmlSection& editData,
                const XmlSection& sections);

/// The edit block as text, for writers that keep it: lines of level 1 to 4 with their ends.
std::string EditDataText(const FrameRecord& record);

/// Writes a document to a file. False, with code 2 and the path, if the file can't be opened. What fails
/// later is told by an error but counts as written; the old file then stays as it was.
[[nodiscard]] bool WriteFrameFile(const std::string& path, const FrameRecord& record, EditDataPlace place,
                                  const XmlSection& editData, const XmlSection& sections);

} // namespace tq4x
