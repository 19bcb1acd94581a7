#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tq4x
{

class XmlWriter;

/// Writes `TextureReference`: the name of a texture, and the path of its file as seen from the model.
void WriteTextureReference(XmlWriter& stream, int level, std::string_view textureName);

/// Distinct texture names of the pattern animations of one file, in the order of their first use.
class TexturePatternList
{
public:
    /// Index of the name, which is appended if it is new.
    std::int32_t FindOrAdd(const std::string& textureName);

    void Clear();

    const std::vector<std::string>& Names() const { return m_names; }

    /// `TexturePatterns`, empty or not.
    void WriteXml(XmlWriter& stream, int level) const;

private:
    std::vector<std::string> m_names;
    std::unordered_map<std::string, std::int32_t> m_indices;
};

} // namespace tq4x
