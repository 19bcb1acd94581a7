#include "geometry/ChooseQuantization.h"

#include "pipeline/NodeCompression.h"

namespace tq4x
{
namespace
{

QuantizedMode ModeOf(std::uint32_t option)
{
    switch (option) {
    case 1:
        return QuantizedMode::Short;
    case 3:
        return QuantizedMode::Byte;
    case 5:
        return QuantizedMode::Auto;
    default:
        return QuantizedMode::Float;
    }
}

} // namespace

StreamQuantization ChooseQuantization(const ExportOptions& options)
{
    if (IsToolPostProcessingRequested(options))
        return {};
    return {ModeOf(options.QuantizePos), ModeOf(options.QuantizeNrm), ModeOf(options.QuantizeTex)};
}

} // namespace tq4x
