#include "glb/AddTextures.h"

#include <cmath>

#include "glb/EncodePng.h"

namespace tq4x::reader
{
namespace
{

// The numbers that glTF has for these things.
constexpr int Nearest = 9728;
constexpr int Linear = 9729;
constexpr int NearestMipmapNearest = 9984;
constexpr int LinearMipmapNearest = 9985;
constexpr int LinearMipmapLinear = 9987;
constexpr int ClampToEdge = 33071;
constexpr int MirroredRepeat = 33648;
constexpr int Repeat = 10497;

int MinFilterOf(const std::string& word)
{
    return word == "Nearest"                ? Nearest
           : word == "Linear"               ? Linear
           : word == "NearestMipmapNearest" ? NearestMipmapNearest
           : word == "LinearMipmapNearest"  ? LinearMipmapNearest
                                            : LinearMipmapLinear;
}

/// There is no border colour in glTF; its edge is what comes nearest.
int WrapOf(const std::string& word)
{
    return word == "Repeat" ? Repeat : word == "MirroredRepeat" ? MirroredRepeat : ClampToEdge;
}

/// No console shows as many; memory would go beyond what the file itself takes.
constexpr std::size_t MostPixels = std::size_t{1} << 26;

struct Picture
{
    std::size_t Width = 0;
    std::size_t Height = 0;
    std::vector<std::uint8_t> Pixels; ///< R, G, B, A
};

/// A grey chequer board, which nobody takes for a picture of the scene.
Picture MakePattern()
{
    constexpr std::size_t Side = 8;
    Picture pattern{Side, Side, {}};
    for (std::size_t i = 0; i < Side * Side; ++i) {
        const bool isDark = (i % Side / 2 + i / Side / 2) % 2 == 0;
        const std::uint8_t grey = isDark ? 96 : 160;
        pattern.Pixels.insert(pattern.Pixels.end(), {grey, grey, grey, 255});
    }
    return pattern;
}

/// Two channels say where a normal points; the third is what is left to a length of 1.
void CompleteNormals(Picture& picture)
{
    for (std::size_t i = 0; i + 3 < picture.Pixels.size(); i += 4) {
        const double x = picture.Pixels[i] / 127.5 - 1;
        const double y = picture.Pixels[i + 1] / 127.5 - 1;
        const double z = std::sqrt(std::max(0.0, 1 - x * x - y * y));
        picture.Pixels[i + 2] = static_cast<std::uint8_t>(std::lround((z + 1) * 127.5));
    }
}

} // namespace

int TextureConversion::Add(const TextureMapper& mapper, ImageUse use)
{
    if (!m_textures.contains(mapper.Texture.Name)) {
        return -1;
    }
    const auto [image, isNew] = m_images.try_emplace({mapper.Texture.Name, use}, -1);
    if (isNew) {
        image->second = AddImage(mapper.Texture.Name, use);
    }
    if (image->second < 0) {
        return -1;
    }
    if (mapper.WrapS == "ClampToBorder" || mapper.WrapT == "ClampToBorder") {
        m_scene.Warnings.push_back("\"" + mapper.Texture.Name + "\": a border colour has no place in glTF.");
    }
    const int sampler = AddSampler(mapper);
    const auto [texture, isFirst] = m_added.try_emplace({image->second, sampler}, -1);
    if (isFirst) {
        texture->second = m_scene.Writer.Add("textures", {{"sampler", sampler}, {"source", image->second}});
    }
    return texture->second;
}

int TextureConversion::AddImage(const std::string& name, ImageUse use)
{
    const Texture& texture = m_textures.find(name)->second;
    if (texture.IsCube || texture.Faces.empty() || texture.Faces[0].Levels.empty()) {
        m_scene.Warnings.push_back("\"" + name + "\": cube textures have no place in glTF.");
        return -1;
    }
    const TextureLevel& level = texture.Faces[0].Levels[0];
    if (level.Width * level.Height > MostPixels) {
        m_scene.Warnings.push_back("\"" + name + "\": the picture is too large.");
        return -1;
    }
    Picture picture{level.Width, level.Height, DecodeLevel(texture.Format, level)};
    if (picture.Pixels.empty()) {
        m_scene.Warnings.push_back("\"" + name + "\": pictures of the format " + texture.Format +
                                   " can't be shown; a pattern stands in its place.");
        picture = MakePattern();
    } else if (use == ImageUse::Normal && texture.Format == "Hilo8") {
        CompleteNormals(picture);
    }
    const std::string png = EncodePng(picture.Width, picture.Height, picture.Pixels);
    if (png.empty()) {
        m_scene.Warnings.push_back("\"" + name + "\": the picture can't be stored.");
        return -1;
    }
    const int view = m_scene.Writer.AddBytes(png);
    return m_scene.Writer.Add("images", {{"name", name}, {"mimeType", "image/png"}, {"bufferView", view}});
}

int TextureConversion::AddSampler(const TextureMapper& mapper)
{
    const std::array<int, 4> key = {mapper.MagFilter == "Nearest" ? Nearest : Linear,
                                    MinFilterOf(mapper.MinFilter), WrapOf(mapper.WrapS),
                                    WrapOf(mapper.WrapT)};
    const auto [sampler, isNew] = m_samplers.try_emplace(key, -1);
    if (isNew) {
        sampler->second = m_scene.Writer.Add(
            "samplers", {{"magFilter", key[0]}, {"minFilter", key[1]}, {"wrapS", key[2]}, {"wrapT", key[3]}});
    }
    return sampler->second;
}

} // namespace tq4x::reader
