#include "cli/ReadSettings.h"

#include "gltf/ReadFile.h"
#include "pipeline/SettingsFile.h"

namespace tq4x::cli
{

SettingsContent ReadSettings(const std::string& path)
{
    SettingsContent settings;
    const gltf::FileContent content = gltf::ReadFile(path, MaxSettingsSize);
    if (!content.Error.empty()) {
        settings.Error = content.Error;
        return settings;
    }
    const std::string text(content.Data.begin(), content.Data.end());
    if (!ReadSettingsText(text, settings.Options)) {
        settings.Error = "The file " + path + " is no settings file.";
        return settings;
    }
    settings.Given = ReadSettingsKeys(text);
    return settings;
}

} // namespace tq4x::cli
