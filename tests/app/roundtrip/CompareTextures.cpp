#include "Compare.h"
#include "Deviations.h"

#include <xsi_imageclip2.h>

#include <algorithm>
#include <set>

namespace tq4x::test
{
namespace
{

using Bytes = std::vector<std::uint8_t>;

/// Bits that a format keeps of R, G, B and A. Grey stands in all three colours.
struct FormatRow
{
    const char* Name;
    std::array<int, 4> Bits;
};

constexpr FormatRow Formats[] = {{"Rgb565", {5, 6, 5, 0}},
                                 {"Rgba4", {4, 4, 4, 4}},
                                 {"L8", {8, 8, 8, 0}},
                                 {"La8", {8, 8, 8, 8}},
                                 {"Hilo8", {8, 8, 0, 0}}};

/// The host's pixels: high bytes, the top row first.
SourcePicture PictureOf(const XSI::Image& image)
{
    SourcePicture picture;
    picture.Width = static_cast<int>(image.GetResX());
    picture.Height = static_cast<int>(image.GetResY());
    const auto size = static_cast<std::size_t>(image.GetChannelSize());
    const auto row = static_cast<std::size_t>(picture.Width) * 4;
    const auto* bytes = static_cast<const std::uint8_t*>(image.GetPixelArray());
    for (auto y = static_cast<std::size_t>(picture.Height); y-- > 0;)
        for (std::size_t i = 0; i < row; ++i) {
            const std::uint8_t* channel = bytes + (y * row + i) * size;
            picture.Pixels.push_back(channel[size - 1]); // low bytes come first
            picture.HasAlpha |= i % 4 == 3 && !std::all_of(channel, channel + size,
                                                           [](std::uint8_t byte) { return byte == 255; });
        }
    return picture;
}

/// A cross, four faces wide and three high.
bool IsCross(const SourcePicture& picture)
{
    const int side = picture.Width / 4;
    return picture.Width % 4 == 0 && picture.Height % 3 == 0 && side == picture.Height / 3 && side >= 8 &&
           (side & (side - 1)) == 0;
}

/// The pixels of the faces: +X, -X, +Y, -Y, +Z, -Z of a cross.
std::vector<Bytes> FacesOf(const SourcePicture& picture)
{
    if (!IsCross(picture))
        return {picture.Pixels};
    constexpr int places[6][2] = {{2, 1}, {0, 1}, {1, 0}, {1, 2}, {1, 1}, {3, 1}};
    const int side = picture.Width / 4;
    std::vector<Bytes> faces;
    for (const auto& [column, row] : places) {
        Bytes face;
        for (int y = 0; y < side; ++y) {
            const auto first =
                picture.Pixels.begin() + ((row * side + y) * picture.Width + column * side) * 4;
            face.insert(face.end(), first, first + side * 4);
        }
        faces.push_back(std::move(face));
    }
    return faces;
}

std::string WantedFormat(const SourcePicture& picture, const std::vector<Bytes>& faces, bool isNormalMap)
{
    if (isNormalMap)
        return "Hilo8";
    bool isGrey = true, isOpaque = true;
    for (const Bytes& face : faces)
        for (std::size_t i = 0; i + 3 < face.size(); i += 4) {
            isGrey &= face[i] == face[i + 1] && face[i] == face[i + 2];
            isOpaque &= face[i + 3] == 255;
        }
    const bool hasAlpha = picture.HasAlpha && !isOpaque;
    return isGrey ? (hasAlpha ? "La8" : "L8") : (hasAlpha ? "Rgba4" : "Rgb565");
}

/// The kept bits must be the same, and full and nothing stay what they are.
void ComparePixels(const Bytes& written, const Bytes& source, const FormatRow& format,
                   const std::string& place)
{
    static Deviation& lost = DeviationOf("pixel");
    static Deviation& kept = DeviationOf("pixel bits kept");
    CheckEqual(kept, written.size(), source.size(), place + ", count");
    std::array<int, 4> worst = {};
    std::size_t wrong = 0;
    for (std::size_t i = 0; i < std::min(written.size(), source.size()); ++i) {
        const int bits = format.Bits[i % 4];
        if (bits == 0)
            continue;
        worst[i % 4] = std::max(worst[i % 4], std::abs(written[i] - source[i]));
        wrong += written[i] >> (8 - bits) != source[i] >> (8 - bits) ? 1 : 0;
    }
    CheckEqual(kept, wrong, 0u, place);
    for (std::size_t channel = 0; channel < 4; ++channel)
        Check(lost, worst[channel], (1 << (8 - format.Bits[channel])) - 1, place);
}

void CompareEncoded(const reader::Texture& texture, const SourcePicture& picture, const std::string& place)
{
    static Deviation& words = DeviationOf("texture form");
    CheckEqual(words, texture.Format, picture.Format, place + ", format");
    CheckEqual(words, texture.MipmapSize, picture.LevelCount, place + ", levels");
    Bytes all;
    for (const reader::TextureFace& face : texture.Faces)
        for (const reader::TextureLevel& level : face.Levels)
            all.insert(all.end(), level.Data.begin(), level.Data.end());
    CheckEqual(words, all, picture.Encoded, place + ", data");
}

void CompareTexture(const reader::Texture& texture, const SourcePicture& picture, bool isNormalMap,
                    const std::string& place)
{
    static Deviation& words = DeviationOf("texture form");
    if (!picture.Encoded.empty())
        return CompareEncoded(texture, picture, place);
    const std::vector<Bytes> faces = FacesOf(picture);
    const std::string format = WantedFormat(picture, faces, isNormalMap);
    CheckEqual(words, texture.Format, format, place + ", format");
    CheckEqual(words, texture.Width, faces.size() == 6 ? picture.Width / 4 : picture.Width,
               place + ", width");
    CheckEqual(words, texture.Height, faces.size() == 6 ? picture.Height / 3 : picture.Height,
               place + ", height");
    if (!CheckEqual(words, texture.Faces.size(), faces.size(), place + ", faces"))
        return;
    const auto row = std::ranges::find(Formats, format, &FormatRow::Name);
    for (std::size_t i = 0; i < faces.size(); ++i)
        if (CheckEqual(words, texture.Faces[i].Levels.size(), 1u, place + ", levels"))
            ComparePixels(reader::DecodeLevel(texture.Format, texture.Faces[i].Levels[0]), faces[i], *row,
                          place);
}

void CompareFile(const RoundTrip& trip, const HostStage& stage, const std::string& picture)
{
    static Deviation& words = DeviationOf("texture form");
    const std::filesystem::path file =
        trip.Written.Folder / "Textures" / (LegalName(BaseName(picture)) + ".qtex");
    reader::FindingList findings(file.string());
    const std::optional<reader::Document> document = reader::ReadDocument(file, findings);
    const bool isRead = document && document->Texture && !findings.HasErrors();
    if (!CheckEqual(words, isRead, true, picture))
        return;
    CheckEqual(words, document->Texture->Path, picture, picture + ", path");
    const auto known = trip.Pictures.find(picture);
    CompareTexture(*document->Texture,
                   known != trip.Pictures.end() ? known->second
                                                : PictureOf(stage.Texture.GetImageClip().GetImage()),
                   stage.IsNormalMap, picture);
}

} // namespace

void CompareTextures(const RoundTrip& trip)
{
    std::set<std::string> compared; // the first use of a picture decides how it is taken
    for (const HostMaterial& material : trip.Host.Materials)
        for (const HostStage& stage : material.Stages)
            for (const auto& [frame, picture] : stage.Pictures)
                if (compared.insert(picture).second)
                    CompareFile(trip, stage, picture);
}

} // namespace tq4x::test
