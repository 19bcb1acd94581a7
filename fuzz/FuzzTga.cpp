#include "material/AlphaKind.h"
#include "material/ReadTga.h"
#include "material/TextureImage.h"
#include "material/TextureSize.h"
#include "pipeline/XmlWriter.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

using namespace tq4x;

namespace
{

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

/// What holds for every file, sound or not.
void CheckRecord(const TextureImage& image, const LogResult& result, std::size_t fileSize)
{
    Require((result.Status == 0) == result.Message.empty());
    Require(image.MipmapSize >= 1 && image.MipmapSize <= MaximumMipmapSize);
    Require(image.TextureDataSize == static_cast<std::int32_t>(image.TextureData.size()));
    Require(image.Pixels.empty() ||
            image.Pixels.size() == static_cast<std::size_t>(image.FileWidth) * image.FileHeight * 4);
    // A packet of two bytes makes 128 pixels of four bytes, and nothing is denser.
    Require(image.Pixels.size() <= fileSize * 256);
    Require(!image.HasAdditionalInfo || image.TextureData.size() < fileSize);
}

/// A texture without failure can be written, and a second conversion gives the same data.
void CheckTexture(TextureImage& image)
{
    Require(image.TextureData.size() >= TextureByteCount(image));
    XmlWriter stream;
    Require(image.WriteXml(stream, 3).Status == 0);
    Require(!stream.Text().empty());
    if (image.HasAdditionalInfo) {
        Require(image.Pixels.empty());
        Require(image.AlphaKind == AlphaKindOfData(image.Format, image.TextureData));
        Require(image.Convert(image.Usage, true).Status == 1);
        return;
    }
    const std::vector<std::uint8_t> data = image.TextureData;
    Require(image.Convert(image.Usage, true).Status == 0);
    Require(image.TextureData == data);
}

} // namespace

/// The first byte chooses the usage, the others are the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    TextureImage image;
    image.Path = "fuzz.tga";
    const auto usage = static_cast<TextureUsage>(data[0] % 3);
    const LogResult result = ReadTga(image, {data + 1, size - 1}, usage, true);
    CheckRecord(image, result, size - 1);
    if (result.Status == 0)
        CheckTexture(image);
    return 0;
}
