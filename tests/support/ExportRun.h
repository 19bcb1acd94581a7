#pragma once

#include "support/PluginCallbacks.h"
#include "support/SceneBuilder.h"
#include "support/TemporaryFolder.h"
#include "support/WrittenFiles.h"

#include <gtest/gtest.h>

#include <xsi_application.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace tq4x::test
{

/// The plug-in on a scene: runs its export command into a folder of its own and keeps what was said.
///
///     SceneBuilder scene;
///     scene.Null("body");
///     ExportRun run({"OutputQtex:false"});
///     EXPECT_TRUE(run.Succeeded());
///     EXPECT_THAT(run.File("out.qmdl"), HasSubstr("body"));
class ExportRun
{
public:
    struct NotYet
    {};

    /// Only the folder, for a test that puts something into it before the first run.
    explicit ExportRun(NotYet) { EnsurePlugin(); }

    /// The tool's optimisation is not asked for unless the options say so, so that no tool is needed.
    explicit ExportRun(const std::vector<std::string>& options = {}, const std::string& name = "out")
    {
        EnsurePlugin();
        Run(options, name);
    }

    /// Loads the plug-in unless it is there: for scenes that need its pages before they are exported.
    static void EnsurePlugin()
    {
        if (!LoadedPlugin().IsValid())
            LoadedPlugin() = LoadLinkedPlugin();
    }

    /// Runs the command again, over the files of the former run.
    void Run(const std::vector<std::string>& options, const std::string& name = "out")
    {
        XSI::CValueArray texts;
        texts.Add("OptimizePrimitive:false");
        for (const std::string& option : options)
            texts.Add(option.c_str());
        XSI::CValueArray arguments;
        arguments.Add(name.c_str());
        arguments.Add(m_folder.Path().string().c_str());
        arguments.Add(texts);
        XSI::CValue result;
        m_status = XSI::Application().ExecuteCommand("TQ4X_ForPennonExport", arguments, result);
        if (Succeeded())
            ExpectGoodFiles();
    }

    bool Succeeded() const { return m_status.Succeeded(); }

    const std::filesystem::path& Folder() const { return m_folder.Path(); }

    bool HasFile(const std::string& name) const { return std::filesystem::exists(m_folder / name); }

    std::string File(const std::string& name) const;

    /// True if a text stands in the file. Failing expectations stay readable, however long the file is.
    bool FileHolds(const std::string& name, const std::string& text) const
    {
        return File(name).find(text) != std::string::npos;
    }

    /// What the plug-in logged, as "E text", "W text" or "I text".
    std::vector<std::string> Messages() const
    {
        std::vector<std::string> messages;
        for (const XSI::Host::LogEntry& entry : SceneBuilder::Host().LogEntries) {
            const char* mark = entry.Severity == XSI::siErrorMsg     ? "E "
                               : entry.Severity == XSI::siWarningMsg ? "W "
                                                                     : "I ";
            messages.push_back(mark + entry.Text);
        }
        return messages;
    }

private:
    /// Whatever a test exports is read back and must be well, less the pictures that its scene may lack.
    void ExpectGoodFiles() const { ExpectWellWritten(m_folder.Path(), {"TQ-REF-TEXTURE"}); }

    static XSI::Plugin& LoadedPlugin()
    {
        static XSI::Plugin plugin;
        return plugin;
    }

    TemporaryFolder m_folder;
    XSI::CStatus m_status;
};

inline std::string ExportRun::File(const std::string& name) const
{
    std::ifstream stream(m_folder / name); // line ends as programs see them
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace tq4x::test
