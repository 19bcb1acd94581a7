#include "material/TextureImage.h"
#include "material/TextureSet.h"
#include "pipeline/Envelope.h"
#include "pipeline/MessageLog.h"
#include "pipeline/PathText.h"
#include "pipeline/XmlWriter.h"

#include <utility>

namespace tq4x
{
namespace
{

TextureUsage UsageOf(const TextureEntry& entry)
{
    return entry.IsNormalMap ? TextureUsage::NormalMap : TextureUsage::Color;
}

/// A failed load stays a failure, even where pixels are left that could be converted.
LogResult LoadAndConvert(TextureImage& image, const std::string& path, TextureUsage usage)
{
    LogResult loaded = image.Load(path, usage, true);
    if (!image.TextureData.empty())
        return loaded;
    LogResult converted = image.Convert(usage, true);
    return loaded.Status != 0 ? std::move(loaded) : std::move(converted);
}

/// Writes the document of a texture that has its data. False if the file can't be opened.
bool WriteTextureFile(const std::string& path, const TextureImage& image, const FrameRecord& record)
{
    return WriteFrameFile(path, record, EditDataPlace::BeforeContent, {}, [&](XmlWriter& stream) {
        stream.Element("Textures", [&] { static_cast<void>(image.WriteXml(stream, stream.Level())); });
    });
}

} // namespace

bool TextureSet::WriteFiles(const std::string& folder) const
{
    for (const auto& [path, entry] : Entries) {
        TextureImage own;
        TextureImage& image = entry.Image != nullptr ? *entry.Image : own;
        const LogResult result = entry.Image != nullptr ? image.Convert(UsageOf(entry), true)
                                                        : LoadAndConvert(image, path, UsageOf(entry));
        if (result.Status != 0) {
            if (!ReportedPaths.contains(path))
                PrintMessage(result.Message + " (" + path + ").", Severity::Error);
            continue;
        }
        const bool isWritten = WriteTextureFile(AppendPath(folder, entry.Name + ".qtex"), image, MetaData);
        image.TextureData = {}; // a long sequence would hold the data of all its files
        image.TextureDataSize = 0;
        if (!isWritten)
            return false;
    }
    return true;
}

} // namespace tq4x
