#pragma once

#include "pipeline/Envelope.h"

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
    FrameRecord MetaData; ///< written into each texture file
    /// Source paths about whose failure the log already has a line; `WriteFiles` adds none.
    std::unordered_set<std::string> ReportedPaths;

    /// The legal name of the texture at `path`, which joins the set unless it is there or another path has
    /// the same name already; then the first entry stays as it is. A changed name and a clash are reported,
    /// at each call. `image` must live until the files are written.
    std::string Add(const std::string& path, bool isNormalMap, TextureImage* image);

    /// Writes a texture file for each entry, in order of path, into an existing folder. Images are converted
    /// now, entries without one are loaded now. An entry whose texture can't be made writes no file and says
    /// so as an error. False, with code 2, at the first file that can't be opened; the rest is not written.
    [[nodiscard]] bool WriteFiles(const std::string& folder) const;

private:
    std::unordered_set<std::string> m_names; ///< of the entries
};

} // namespace tq4x
