#include "cli/FindAuthor.h"

#include "pipeline/ReproduciblePlatform.h"

namespace tq4x::cli
{

std::string FindAuthor()
{
    return MakeReproducible(SystemPlatform()).UserName();
}

} // namespace tq4x::cli
