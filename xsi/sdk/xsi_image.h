#pragma once

#include <memory>
#include <utility>
#include <xsi_decl.h>

namespace XSI
{

struct ImageData;

/// A picture in memory. Rows run from the bottom to the top, the channels of a pixel lie side by side in the
/// order R, G, B, A. The handle keeps the pixels alive.
class Image
{
public:
    Image() = default;

    explicit Image(std::shared_ptr<const ImageData> data) : m_data(std::move(data)) {}

    bool IsValid() const { return m_data != nullptr; }

    LONG GetResX() const;
    LONG GetResY() const;
    LONG GetNumChannels() const;

    /// Bytes per channel: 1 and 2 unsigned integers, 4 floats.
    LONG GetChannelSize() const;

    /// The first byte of the bottom row; null for an invalid image. Valid as long as any handle on it.
    const void* GetPixelArray() const;

private:
    std::shared_ptr<const ImageData> m_data;
};

} // namespace XSI
