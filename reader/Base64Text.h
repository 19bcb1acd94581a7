#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tq4x::reader
{

/// The bytes of Base64 text of the standard alphabet, unbroken, padded with "=", with white space around it
/// alone. Nothing for any other text.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> DecodeBase64(std::string_view text);

/// Bytes as such text, in one unbroken line.
[[nodiscard]] std::string EncodeBase64(std::string_view bytes);

} // namespace tq4x::reader
