#include "cli/ExportReport.h"

#include "cli/Version.h"
#include "gltf/JsonValue.h"

namespace tq4x::cli
{
namespace
{

using gltf::JsonArray;
using gltf::JsonObject;
using gltf::JsonValue;

JsonValue Text(std::string_view text)
{
    return {std::string(text)};
}

JsonValue Number(std::uint64_t number)
{
    return {static_cast<std::int64_t>(number)};
}

JsonValue FilesOf(const std::vector<WrittenFiles::File>& files)
{
    JsonArray list;
    for (const WrittenFiles::File& file : files) {
        list.push_back({JsonObject{{"path", Text(file.Path.string())}, {"size", Number(file.Size)}}});
    }
    return {std::move(list)};
}

JsonValue SettingsOf(const ExportRequest& request)
{
    JsonObject settings{{"name", Text(request.Name)}, {"folder", Text(request.Folder)}};
    if (request.SettingsFile) {
        settings.push_back({"file", Text(*request.SettingsFile)});
    }
    JsonArray texts;
    for (const std::string& text : request.KeyValues) {
        texts.push_back(Text(text));
    }
    settings.push_back({"arguments", {std::move(texts)}});
    return {std::move(settings)};
}

/// Blanks and the signs that mean something in such files get a backslash, a dollar sign is doubled.
std::string Escaped(const std::filesystem::path& path)
{
    // Forward slashes are none of these signs and known on every system; the colon of a drive stands as it
    // is.
    const std::string text = path.generic_string();
    const std::size_t drive = path.has_root_name() && text.size() > 1 && text[1] == ':' ? 2 : 0;
    std::string escaped = text.substr(0, drive);
    for (const char c : text.substr(drive)) {
        if (c == ' ' || c == '#' || c == ':' || c == '%' || c == '\\') {
            escaped += '\\';
        } else if (c == '$') {
            escaped += '$';
        }
        escaped += c;
    }
    return escaped;
}

} // namespace

gltf::JsonValue MessagesAsJson(const std::vector<Message>& messages)
{
    JsonArray list;
    for (const Message& message : messages) {
        list.push_back({JsonObject{{"severity", Text(WordOf(message.Kind))},
                                   {"object", Text(message.Object)},
                                   {"text", Text(message.Text)},
                                   {"count", Number(message.Count)}}});
    }
    return {std::move(list)};
}

std::string FormatReport(const ExportRequest& request, int exitCode,
                         const std::vector<WrittenFiles::File>& files, const std::vector<Message>& messages)
{
    const JsonValue report{JsonObject{{"program", Text(VersionLine)},
                                      {"scene", Text(request.Scene.string())},
                                      {"settings", SettingsOf(request)},
                                      {"exitCode", Number(static_cast<std::uint64_t>(exitCode))},
                                      {"files", FilesOf(files)},
                                      {"messages", MessagesAsJson(messages)}}};
    return gltf::FormatJson(report) + "\n";
}

std::string FormatDependencies(const std::vector<WrittenFiles::File>& files,
                               const std::vector<std::filesystem::path>& inputs)
{
    std::string text;
    for (const WrittenFiles::File& file : files) {
        text += (text.empty() ? "" : " ") + Escaped(file.Path);
    }
    text += ":";
    for (const std::filesystem::path& input : inputs) {
        text += " \\\n  " + Escaped(input);
    }
    return text + "\n";
}

} // namespace tq4x::cli
