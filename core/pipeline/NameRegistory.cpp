#include "pipeline/NameRegistory.h"

namespace tq4x
{

std::string NameRegistory::GetUniqueName(const std::string& name)
{
    const auto [entry, isNew] = m_counters.try_emplace(name, 0);
    return isNew ? name : name + "_" + std::to_string(++entry->second);
}

} // namespace tq4x
