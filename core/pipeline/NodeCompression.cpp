#include "pipeline/NodeCompression.h"

#include <array>

namespace tq4x
{

bool IsToolPostProcessingRequested(const ExportOptions& options)
{
    return options.CompressNode != 0 || options.CompressMaterial || options.OptimizePrimitive ||
           options.ConvertToModel;
}

std::string_view NodeCompressionKeyword(std::uint32_t compressNode)
{
    constexpr std::array<std::string_view, 5> keywords{"", "CullLeafBone", "CullUninfluentialBone",
                                                       "UniteCompressibleBone", "UniteAllBone"};
    return compressNode < keywords.size() ? keywords[compressNode] : std::string_view{};
}

} // namespace tq4x
