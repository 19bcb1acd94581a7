// Narrow text of this program is UTF-8. The standard library makes UTF-8 of paths, but it makes paths of
// narrow text by the C locale of the run-time, which knows no UTF-8. The linker puts this function in the
// place of the one that converts a character (--wrap).

#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <string_view>

#include "scene/NarrowText.h"

namespace
{

constexpr wchar_t NoCharacter = L'\xfffd';

std::size_t LengthOf(unsigned char lead)
{
    return lead < 0xc0 ? 1 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
}

bool IsSurrogate(wchar_t c)
{
    return c >= 0xd800 && c < 0xe000;
}

} // namespace

// A character of four bytes is two wide ones: the first comes with three of its bytes, the second with the
// last. Meanwhile the state holds the second.
extern "C" std::size_t __wrap_mbrtowc(wchar_t* into, const char* text, std::size_t size,
                                      std::mbstate_t* state)
{
    if (text == nullptr || size == 0) {
        return text == nullptr ? 0 : static_cast<std::size_t>(-2);
    }
    wchar_t ignored = 0;
    wchar_t& character = into != nullptr ? *into : ignored;
    if (state != nullptr && *state != 0) {
        character = static_cast<wchar_t>(*state);
        *state = 0;
        return 1;
    }
    const std::size_t length = LengthOf(static_cast<unsigned char>(*text));
    const std::wstring wide =
        length <= size ? XSI::WideFromUtf8(std::string_view(text, length)) : std::wstring(1, NoCharacter);
    const bool isPair = length == 4 && wide.size() == 2 && state != nullptr;
    const bool isOne = wide.size() == 1 && !IsSurrogate(wide[0]) && length <= size;
    if (isPair) {
        character = wide[0];
        *state = wide[1];
        return 3;
    }
    character = isOne ? wide[0] : NoCharacter;
    return isOne ? (character == L'\0' ? 0 : length) : 1;
}
