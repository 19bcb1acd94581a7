#pragma once

#include "RandomDraw.h"

#include <xsi_imageclip2.h>
#include <xsi_material.h>

#include <string>
#include <vector>

namespace tq4x::test
{

/// The time line of a scene by chance.
struct TimeLine
{
    int First = 0;
    int Last = 0;
};

/// Materials of all shaders with random colours, flags, marks and textures, some of them moving. Their
/// textures take the coordinate sets that are named.
std::vector<XSI::Material> DrawMaterials(RandomDraw& draw, const std::vector<XSI::ImageClip2>& clips,
                                         const std::vector<std::string>& sets, const TimeLine& time);

} // namespace tq4x::test
