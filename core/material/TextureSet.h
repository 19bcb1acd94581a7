#pragma once

#include <map>
#include <string>
#include <unordered_set>

namespace tq4x
{

struct TextureImage;

/// A texture file to be written.
struct TextureEntry
{
    TextureImage* Image = nullptr; ///< not owned; nothing: the path is loaded when the file is written
    bool IsNormalMap = false;
    std::string Name; ///< legal, unique in the set
};

/// The textures of an export by source path. Entries only grow.
struct TextureSet
{
    std::map<std::string, TextureEntry> Entries;
    std::string MetaData; ///< text block that is written into each texture file

    /// The legal name of the texture at `path`, which joins the set unless it is there or another path has
    /// the same name already; then the first entry stays as it is. A changed name and a clash are reported,
    /// at each call. `image` must live until the files are written.
    std::string Add(const std::string& path, bool isNormalMap, TextureImage* image);

private:
    std::unordered_set<std::string> m_names; ///< of the entries
};

} // namespace tq4x
