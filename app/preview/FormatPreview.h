#pragma once

#include <string>

#include "preview/PreviewData.h"

namespace tq4x::preview
{

/// The data as JSON, without the bytes of the scenes: these get ids, "scene-0" and so on. It may stand inside
/// an element of HTML: no "<" is in it.
[[nodiscard]] std::string FormatPreviewJson(const PreviewData& data);

/// The page: `page` with its gaps filled, @TITLE@, @DATA@ and @MODELS@, each of which it holds once.
[[nodiscard]] std::string FillPreviewPage(std::string_view page, const PreviewData& data);

} // namespace tq4x::preview
