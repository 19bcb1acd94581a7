#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/Console.h"
#include "cli/ExportRequest.h"
#include "cli/WrittenFiles.h"
#include "gltf/JsonValue.h"

namespace tq4x::cli
{

/// The report of an export as JSON: scene, settings, exit code, files, messages. It holds no time and no
/// duration, so that equal exports have equal reports.
[[nodiscard]] std::string FormatReport(const ExportRequest& request, int exitCode,
                                       const std::vector<WrittenFiles::File>& files,
                                       const std::vector<Message>& messages);

/// Messages as the report lists them.
[[nodiscard]] gltf::JsonValue MessagesAsJson(const std::vector<Message>& messages);

/// A dependency file as make and ninja read it: the written files, a colon, and what they were made from.
[[nodiscard]] std::string FormatDependencies(const std::vector<WrittenFiles::File>& files,
                                             const std::vector<std::filesystem::path>& inputs);

} // namespace tq4x::cli
