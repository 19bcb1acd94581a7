#pragma once

#include <xsi_clip.h>
#include <xsi_image.h>

namespace XSI
{

/// A clip of pictures. Its parameter `SourceFileName` holds the file name or the pattern of a sequence.
class ImageClip2 : public Clip
{
public:
    ImageClip2() = default;

    ImageClip2(const CRef& ref) : Clip(ref.As(siImageClipID)) {}

    CString GetFileName() const;

    /// The picture that the clip shows at a frame; invalid if it can't be had.
    Image GetImage(double time = CurrentTime) const;
};

} // namespace XSI
