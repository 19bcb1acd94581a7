#include "cli/Arguments.h"

#include <algorithm>

#include "gltf/NearestWord.h"

namespace tq4x::cli
{
namespace
{

class Parser
{
public:
    Parser(std::span<const std::string> words, std::span<const OptionSpec> options)
        : m_words(words),
          m_options(options)
    {}

    ParsedArguments Run()
    {
        while (m_next < m_words.size() && m_result.Error.empty()) {
            const std::string& word = m_words[m_next++];
            if (m_isOnlyPositional || word == "-" || !word.starts_with('-')) {
                m_result.Content.Positionals.push_back(word);
            } else if (word == "--") {
                m_isOnlyPositional = true;
            } else if (word.starts_with("--")) {
                TakeLong(word);
            } else {
                TakeLetters(word);
            }
        }
        return std::move(m_result);
    }

private:
    void TakeLong(const std::string& word)
    {
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        const auto option = std::ranges::find(m_options, name, &OptionSpec::Name);
        if (option == m_options.end()) {
            FailUnknown(name);
        } else if (option->ValueName.empty() && equals != std::string::npos) {
            m_result.Error = "The option " + name + " takes no value.";
        } else if (option->ValueName.empty()) {
            Store(*option, "");
        } else if (equals != std::string::npos) {
            Store(*option, word.substr(equals + 1));
        } else {
            TakeValue(*option);
        }
    }

    /// "-q", "-qv", "-o DIR", "-oDIR".
    void TakeLetters(const std::string& word)
    {
        for (std::size_t i = 1; i < word.size() && m_result.Error.empty(); ++i) {
            const auto option = std::ranges::find(m_options, word[i], &OptionSpec::Letter);
            if (option == m_options.end()) {
                m_result.Error = std::string("The option -") + word[i] + " is unknown.";
            } else if (option->ValueName.empty()) {
                Store(*option, "");
            } else if (i + 1 < word.size()) {
                Store(*option, word.substr(i + 1));
                return;
            } else {
                TakeValue(*option);
            }
        }
    }

    void TakeValue(const OptionSpec& option)
    {
        if (m_next == m_words.size() || m_words[m_next].starts_with("--")) {
            m_result.Error = "The option " + std::string(option.Name) +
                             " needs a value: " + std::string(option.ValueName) + ".";
            return;
        }
        Store(option, m_words[m_next++]);
    }

    void Store(const OptionSpec& option, std::string value)
    {
        auto& values = m_result.Content.Options[std::string(option.Name)];
        const bool isSwitch = option.ValueName.empty();
        if (!values.empty() && !option.IsRepeatable && !isSwitch) {
            m_result.Error = "The option " + std::string(option.Name) + " stands twice.";
            return;
        }
        values.push_back(std::move(value));
    }

    void FailUnknown(const std::string& name)
    {
        std::vector<std::string_view> names;
        for (const OptionSpec& option : m_options) {
            names.push_back(option.Name);
        }
        const std::string_view nearest = FindNearestWord(name, names);
        m_result.Error = "The option " + name + " is unknown" +
                         (nearest.empty() ? "." : "; did you mean " + std::string(nearest) + "?");
    }

    std::span<const std::string> m_words;
    std::span<const OptionSpec> m_options;
    std::size_t m_next = 0;
    bool m_isOnlyPositional = false;
    ParsedArguments m_result;
};

} // namespace

std::optional<std::string> Arguments::Value(std::string_view option) const
{
    const auto found = Options.find(option);
    return found == Options.end() ? std::nullopt : std::optional(found->second.back());
}

std::vector<std::string> Arguments::Values(std::string_view option) const
{
    const auto found = Options.find(option);
    return found == Options.end() ? std::vector<std::string>() : found->second;
}

ParsedArguments ParseArguments(std::span<const std::string> words, std::span<const OptionSpec> options)
{
    return Parser(words, options).Run();
}

} // namespace tq4x::cli
