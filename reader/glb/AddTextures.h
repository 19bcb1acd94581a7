#pragma once

#include <array>
#include <map>
#include <string>
#include <utility>

#include "ReadMaterial.h"
#include "ReadTexture.h"
#include "glb/GlbScene.h"

namespace tq4x::reader
{

using TextureMap = std::map<std::string, Texture, std::less<>>; ///< by name

/// What an image is for. Two-channel normal maps get their third channel.
enum class ImageUse
{
    Surface,
    Normal,
};

/// Adds textures, with their samplers and images, when they are asked for; each once.
class TextureConversion
{
public:
    TextureConversion(const TextureMap& textures, GlbScene& scene) : m_textures(textures), m_scene(scene) {}

    /// The index of a mapper's texture; -1 for one that is not there or can't be used, which is told by a
    /// warning except for one that is not there. Block-compressed pictures are replaced by a pattern.
    int Add(const TextureMapper& mapper, ImageUse use);

private:
    int AddImage(const std::string& name, ImageUse use);
    int AddSampler(const TextureMapper& mapper);

    const TextureMap& m_textures;
    GlbScene& m_scene;
    std::map<std::pair<std::string, ImageUse>, int> m_images;
    std::map<std::array<int, 4>, int> m_samplers;
    std::map<std::pair<int, int>, int> m_added; ///< by image and sampler
};

} // namespace tq4x::reader
