#include "gltf/LegalHostName.h"

namespace tq4x::gltf
{

std::string LegalHostName(std::string_view name)
{
    constexpr std::string_view Refused = "&<>\"'`";
    std::string legal(name);
    for (char& c : legal) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7f || Refused.find(c) != std::string_view::npos) {
            c = '_';
        }
    }
    return legal;
}

} // namespace tq4x::gltf
