#include "scene/NarrowText.h"

namespace XSI
{

std::wstring WideFromNarrow(std::string_view text)
{
    return WideFromUtf8(text);
}

std::string NarrowFromWide(std::wstring_view text)
{
    return Utf8FromWide(text);
}

} // namespace XSI
