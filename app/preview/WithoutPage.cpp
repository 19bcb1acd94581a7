// The page of an export, in a build that has none.

#include "preview/MakePage.h"

namespace tq4x::preview
{

bool HasPage()
{
    return false;
}

std::string MakePage(const PageRequest&, std::span<const cli::WrittenFiles::File>,
                     std::span<const cli::Message>)
{
    return {};
}

} // namespace tq4x::preview
