#include <string>
#include <unordered_set>

#include <nlohmann/json.hpp> // slow to compile: this is the only file that includes it

#include "gltf/JsonValue.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

std::string DescribePosition(std::string_view text, std::size_t offset)
{
    std::size_t line = 1;
    std::size_t column = 1;
    for (const char c : text.substr(0, offset)) {
        line += c == '\n' ? 1 : 0;
        column = c == '\n' ? 1 : column + 1;
    }
    return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

// Builds our own values from the parser's events. Only the innermost open container ever grows, so the
// addresses of the containers around it stay as they are.
class ValueBuilder : public nlohmann::json_sax<nlohmann::json>
{
public:
    explicit ValueBuilder(std::string_view text) : m_text(text) {}

    JsonValue Root;

    bool null() override { return Put(nullptr); }

    bool boolean(bool value) override { return Put(value); }

    bool number_integer(std::int64_t value) override { return Put(value); }

    bool number_unsigned(std::uint64_t value) override
    {
        constexpr auto Largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
        return value <= Largest ? Put(static_cast<std::int64_t>(value)) : Put(static_cast<double>(value));
    }

    bool number_float(double value, const std::string&) override { return Put(value); }

    bool string(std::string& value) override { return Put(std::move(value)); }

    bool binary(nlohmann::json::binary_t&) override { return false; } // JSON text has none

    bool start_object(std::size_t) override
    {
        Open(JsonObject{});
        m_keys.emplace_back();
        return true;
    }

    bool key(std::string& name) override
    {
        if (!m_keys.back().insert(name).second) {
            throw SceneError("", "The JSON holds the key \"" + name + "\" twice in one object.");
        }
        std::get<JsonObject>(m_open.back()->Content).push_back({std::move(name), {}});
        return true;
    }

    bool end_object() override
    {
        m_open.pop_back();
        m_keys.pop_back();
        return true;
    }

    bool start_array(std::size_t) override
    {
        Open(JsonArray{});
        return true;
    }

    bool end_array() override
    {
        m_open.pop_back();
        return true;
    }

    bool parse_error(std::size_t position, const std::string&, const nlohmann::json::exception&) override
    {
        throw SceneError("", "The JSON is malformed at " +
                                 DescribePosition(m_text, position == 0 ? 0 : position - 1) + ".");
    }

private:
    JsonValue& Slot()
    {
        if (m_open.empty()) {
            return Root;
        }
        if (auto* const items = std::get_if<JsonArray>(&m_open.back()->Content)) {
            return items->emplace_back();
        }
        return std::get<JsonObject>(m_open.back()->Content).back().Value;
    }

    template<class T>
    bool Put(T&& value)
    {
        Slot().Content = std::forward<T>(value);
        return true;
    }

    template<class T>
    void Open(T&& container)
    {
        if (m_open.size() == MaxJsonDepth) {
            throw SceneError("",
                             "The JSON is nested deeper than " + std::to_string(MaxJsonDepth) + " levels.");
        }
        JsonValue& slot = Slot();
        slot.Content = std::forward<T>(container);
        m_open.push_back(&slot);
    }

    std::string_view m_text;
    std::vector<JsonValue*> m_open;
    std::vector<std::unordered_set<std::string>> m_keys; // one for each open object
};

} // namespace

JsonValue ParseJson(std::string_view text)
{
    ValueBuilder builder(text);
    nlohmann::json::sax_parse(text.begin(), text.end(), &builder);
    return std::move(builder.Root);
}

} // namespace tq4x::gltf
