#pragma once

#include "pipeline/Platform.h"
#include "pipeline/TextHelpers.h"

#include <map>
#include <string>
#include <utility>

namespace tq4x::test
{

/// Puts the platform's slots and the code page back at the end of the scope.
class PlatformGuard
{
public:
    PlatformGuard() : m_platform(CurrentPlatform()), m_codePage(SystemCodePage()) {}

    PlatformGuard(const PlatformGuard&) = delete;
    PlatformGuard& operator=(const PlatformGuard&) = delete;

    ~PlatformGuard()
    {
        CurrentPlatform() = m_platform;
        SetSystemCodePage(m_codePage);
    }

    /// From now on the environment holds these variables and no others.
    void SetEnvironment(std::map<std::string, std::string> variables)
    {
        CurrentPlatform().Environment =
            [variables = std::move(variables)](const std::string& name) -> std::optional<std::string> {
            const auto found = variables.find(name);
            if (found == variables.end() || found->second.empty())
                return std::nullopt;
            return found->second;
        };
    }

    /// A fixed user, and the moment 2013-04-09T08:07:06 in a fixed format.
    void FixUserAndTime()
    {
        CurrentPlatform().UserName = [] { return std::string("ann"); };
        CurrentPlatform().Now = [] { return LocalTime{2013, 4, 9, 8, 7, 6}; };
        CurrentPlatform().TimeText = [](const LocalTime& time) { return DateText(time).substr(11); };
    }

private:
    Platform m_platform;
    unsigned m_codePage;
};

} // namespace tq4x::test
