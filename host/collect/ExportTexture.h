#pragma once

#include "collect/ExportBase.h"
#include "material/TextureImage.h"

#include <xsi_image.h>
#include <xsi_string.h>

namespace tq4x
{

/// The collector of one picture: a TGA file, read by the core, or pixels of the host.
class ExportTexture : public ExportBase
{
public:
    /// The picture is what the clip shows at the frame `time`. It is asked for when pixels are wanted, since
    /// the host may have to read a file for it.
    ExportTexture(ExportContext& context, const XSI::CRef& clip, double time, const XSI::CString& fileName);

    CollectorKind GetKind() const override { return CollectorKind::Texture; }

    bool IsKindOf(CollectorKind kind) const override { return kind == CollectorKind::Texture; }

    /// Loads and checks the picture. Problems are messages; the export goes on.
    bool Export() override;

    /// The picture, or nullptr for a TGA file, which is loaded again when it is written.
    TextureImage* ImageForModel();

    XSI::CString FileName;
    TextureImage Image; ///< pixels of the host; empty for a TGA file

private:
    void Collect();
    void TestTga();
    void TakePixels();
    void CopyChannels(const XSI::Image& picture);
    void PrintError(const std::string& text);
    void PrintIfWritten(const std::string& text);

    double m_time = 0.0;
};

/// The collector of a file under a clip; made if there is none yet.
ExportTexture& FindOrCreateTexture(ExportContext& context, const XSI::CRef& clip, double time,
                                   const XSI::CString& fileName);

} // namespace tq4x
