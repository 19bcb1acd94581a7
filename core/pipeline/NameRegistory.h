#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace tq4x
{

/// Makes exported names unique. Names compare exactly, case counts.
class NameRegistory
{
public:
    /// The first use of a name returns it unchanged, the use after it with "_1" behind it, then "_2" and so
    /// on. The name with the suffix is not reserved: an object that really bears it gets it unchanged, and
    /// the two are equal. Files of existing projects rely on these names.
    std::string GetUniqueName(const std::string& name);

private:
    std::map<std::string, std::int32_t> m_counters;
};

} // namespace tq4x
