#include "preview/MakePage.h"

#include "preview/CollectPreview.h"
#include "preview/EmbeddedPage.h"
#include "preview/FormatPreview.h"

namespace tq4x::preview
{

bool HasPage()
{
    return true;
}

std::string MakePage(const PageRequest& request, std::span<const cli::WrittenFiles::File> files,
                     std::span<const cli::Message> messages)
{
    PreviewData data;
    data.Program = request.Program;
    data.Name = request.Name;
    data.Scene = request.Scene;
    data.Folder = request.Folder;
    data.ExitCode = request.ExitCode;
    data.FramesPerSecond = request.FramesPerSecond;
    data.Messages.assign(messages.begin(), messages.end());
    CollectPreview(data, files);
    return FillPreviewPage(EmbeddedPage().front().Text, data);
}

} // namespace tq4x::preview
