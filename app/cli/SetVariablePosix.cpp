#include <cstdlib>

#include "cli/SetVariable.h"

namespace tq4x::cli
{

void SetVariable(const std::string& name, const std::string& value)
{
    setenv(name.c_str(), value.c_str(), 1);
}

std::string ReadVariable(const std::string& name)
{
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? std::string() : value;
}

} // namespace tq4x::cli
