#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tq4x
{

/// Base64 text of bytes in the standard alphabet, padded with "=", in one unbroken line.
std::string EncodeBase64(const std::uint8_t* bytes, std::size_t size);

} // namespace tq4x
