#include "pipeline/TextHelpers.h"

#include <algorithm>

namespace tq4x
{
namespace
{

constexpr std::string_view Tabs = "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";

unsigned g_codePage = CodePageUtf8;

} // namespace

std::string_view Indent(int level)
{
    const int clamped = std::clamp(level, 0, static_cast<int>(Tabs.size()));
    return Tabs.substr(0, static_cast<std::size_t>(clamped));
}

std::string_view BoolText(bool flag)
{
    return flag ? "true" : "false";
}

unsigned SystemCodePage()
{
    return g_codePage;
}

void SetSystemCodePage(unsigned codePage)
{
    g_codePage = codePage;
}

std::string ToUtf8(std::string_view text)
{
    return std::string(text);
}

} // namespace tq4x
