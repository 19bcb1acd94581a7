#pragma once

#include "support/TemporaryFolder.h"

#if __has_include("CheckFiles.h")
#include "CheckFiles.h"
#define TQ4X_TESTS_READ_BACK
#endif

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tq4x::test
{

#ifdef TQ4X_TESTS_READ_BACK

/// Holds all written files below a folder against the grammar of their kind and against each other. A test
/// that breaks them on purpose names the codes of what is found then. A folder without files is well.
inline void ExpectWellWritten(const std::filesystem::path& folder,
                              const std::vector<std::string_view>& broken = {})
{
    const reader::CheckResult result = reader::CheckFiles(std::vector{folder});
    if (result.FileCount == 0)
        return;
    for (const reader::Finding& finding : result.Findings)
        if (finding.Level == reader::Severity::Error &&
            std::ranges::find(broken, finding.Code) == broken.end())
            ADD_FAILURE() << finding.File << ":" << finding.Line << ": " << finding.Code << " "
                          << finding.Text;
}

#else

/// A build without the reader can't read back what was written.
inline void ExpectWellWritten(const std::filesystem::path&, const std::vector<std::string_view>& = {}) {}

#endif

/// A folder whose files are checked when it goes.
class WrittenFolder : public TemporaryFolder
{
public:
    explicit WrittenFolder(std::vector<std::string_view> broken = {}) : m_broken(std::move(broken)) {}

    ~WrittenFolder() { ExpectWellWritten(Path(), m_broken); }

    /// Files are broken on purpose from here on.
    void Break(std::string_view code) { m_broken.push_back(code); }

private:
    std::vector<std::string_view> m_broken;
};

} // namespace tq4x::test
