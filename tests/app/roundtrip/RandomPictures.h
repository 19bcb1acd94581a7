#pragma once

#include "Compare.h"
#include "RandomDraw.h"

#include <xsi_imageclip2.h>

#include <filesystem>
#include <vector>

namespace tq4x::test
{

/// Clips of random pixels: opaque, cut out and translucent, grey and coloured, of one and two bytes a
/// channel, crosses of six faces, files that the exporter reads itself, among these some that a texture tool
/// has encoded with several levels. The pixels of files are entered in `pictures`.
std::vector<XSI::ImageClip2> DrawPictures(RandomDraw& draw, const std::filesystem::path& folder,
                                          SourcePictures& pictures);

/// Makes file sequences of some clips, all of them shown within the frames `first` to `last`.
void MakeSequences(RandomDraw& draw, const std::vector<XSI::ImageClip2>& clips,
                   const std::filesystem::path& folder, int first, int last, SourcePictures& pictures);

} // namespace tq4x::test
