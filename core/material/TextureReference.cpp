#include "material/TextureReference.h"

#include "pipeline/XmlWriter.h"

namespace tq4x
{

void WriteTextureReference(XmlWriter& stream, int level, std::string_view textureName)
{
    const std::string name(textureName);
    const std::string text = "Textures[\"" + name + "\"]@file:Textures/" + name + ".qtex";
    stream.AtLevel(level, [&] { stream.Leaf("TextureReference", text); });
}

std::int32_t TexturePatternList::FindOrAdd(const std::string& textureName)
{
    const auto next = static_cast<std::int32_t>(m_names.size());
    const auto [place, isNew] = m_indices.try_emplace(textureName, next);
    if (isNew)
        m_names.push_back(textureName);
    return place->second;
}

void TexturePatternList::Clear()
{
    m_names.clear();
    m_indices.clear();
}

void TexturePatternList::WriteXml(XmlWriter& stream, int level) const
{
    const auto writePattern = [&](const std::string& name) {
        stream.Element("TexturePattern", [&] { WriteTextureReference(stream, stream.Level(), name); });
    };
    stream.AtLevel(level, [&] {
        stream.Element("TexturePatterns", [&] {
            for (const std::string& name : m_names)
                writePattern(name);
        });
    });
}

} // namespace tq4x
