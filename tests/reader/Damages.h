#pragma once

#include <string>
#include <vector>

namespace tq4x::reader::test
{

/// A good document of tests/data/reader with one place changed, and all that must be found then: line,
/// severity, code, text.
struct Damage
{
    std::string Name;
    std::string File;
    std::string From;
    std::string To;
    std::vector<std::string> Findings;
};

[[nodiscard]] const std::vector<Damage>& AllDamages();

} // namespace tq4x::reader::test
