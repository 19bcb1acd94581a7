#include "gltf/PictureSource.h"

#include <algorithm>
#include <set>

#include "gltf/LegalHostName.h"
#include "gltf/ReadFile.h"

namespace tq4x::gltf
{
namespace
{

std::span<const std::uint8_t> EmbeddedBytes(const Document& document, const Image& image)
{
    if (!image.View) {
        return image.Data;
    }
    const BufferView& view = document.Views[*image.View];
    return std::span(document.Buffers[view.Buffer].Data).subspan(view.ByteOffset, view.ByteLength);
}

bool EndsWithNoCase(std::string_view text, std::string_view end)
{
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return text.size() >= end.size() &&
           std::ranges::equal(text.substr(text.size() - end.size()), end, {}, lower, lower);
}

/// The picture's own name without folders and extension; programs put whole paths there.
std::string StemOf(const Image& image, std::size_t index)
{
    const std::string name = LegalHostName(image.Name.substr(image.Name.find_last_of("/\\") + 1));
    for (const std::string_view extension : {".png", ".jpg", ".jpeg"}) {
        if (EndsWithNoCase(name, extension) && name.size() > extension.size()) {
            return name.substr(0, name.size() - extension.size());
        }
    }
    return name.empty() ? "image" + std::to_string(index) : name;
}

} // namespace

bool IsTgaFile(const Image& image)
{
    return !image.File.empty() && EndsWithNoCase(image.File.filename().string(), ".tga");
}

DecodedImage ReadPicture(const Document& document, std::size_t index)
{
    const Image& image = document.Images[index];
    if (image.File.empty()) {
        return DecodeImage(EmbeddedBytes(document, image));
    }
    const FileContent content = ReadFile(image.File);
    if (!content.Error.empty()) {
        return {{}, content.Error};
    }
    return DecodeImage(content.Data);
}

std::vector<std::string> NamePictures(const Document& document)
{
    std::vector<std::string> names;
    std::set<std::string> stems;
    for (std::size_t i = 0; i < document.Images.size(); ++i) {
        const Image& image = document.Images[i];
        if (!image.File.empty()) {
            names.push_back(image.File.string());
            continue;
        }
        const std::string stem = StemOf(image, i);
        std::string unique = stem;
        for (int number = 1; !stems.insert(unique).second; ++number) {
            unique = stem + "_" + std::to_string(number);
        }
        names.push_back(unique + (image.MimeType == "image/jpeg" ? ".jpg" : ".png"));
    }
    return names;
}

} // namespace tq4x::gltf
