#include "material/TextureSet.h"

#include "pipeline/MessageLog.h"
#include "pipeline/PathText.h"
#include "pipeline/TextHelpers.h"

namespace tq4x
{

std::string TextureSet::Add(const std::string& path, bool isNormalMap, TextureImage* image)
{
    const std::string baseName = FileStem(path);
    std::string name = LegalName(baseName);
    if (Entries.contains(path))
        return name;
    if (name != baseName)
        ReportMessage(MessageCode::TextureNameChanged, baseName + " -> " + name);
    if (!m_names.insert(name).second) {
        ReportMessage(MessageCode::SameTextureName, baseName);
        return name;
    }
    Entries.emplace(path, TextureEntry{image, isNormalMap, name});
    return name;
}

} // namespace tq4x
