#pragma once

#include <xsi_ref.h>
#include <xsi_string.h>

#include <cstddef>
#include <map>

namespace tq4x
{

struct ExportContext;
class ExportTexture;

/// The stages that a material may have, the normal map among them: as many as the console has texture units.
inline constexpr std::size_t MostTextureStages = 3;

/// One texture of a material: its pictures by frame and the coordinate set that it lies on.
struct TextureStage
{
    XSI::CString Name; ///< the host texture's name
    std::map<float, ExportTexture*>
        Frames;                  ///< host frames; a single picture stands at 0; empty: nothing was found
    XSI::CString TextureSpaceId; ///< name of the coordinate set
    bool IsNormalMap = false;
};

/// Makes the stage of a host texture with the collectors of its pictures: a single image, a numbered file
/// sequence, or the list of a script file (.scr). Pictures of a window are those of its frames from the first
/// up to but not including the last.
TextureStage MakeTextureStage(ExportContext& context, const XSI::CRef& texture, bool isNormalMap);

} // namespace tq4x
