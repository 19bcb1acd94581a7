#include "gltf/JsonPlace.h"

#include <cmath>

#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

// As JSON pointers want it, since keys of `extensions` and attributes are free text.
std::string EscapeKey(std::string_view key)
{
    std::string escaped;
    for (const char c : key) {
        if (c == '~' || c == '/') {
            escaped += c == '~' ? "~0" : "~1";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

} // namespace

void JsonPlace::Fail(const std::string& text) const
{
    throw SceneError(m_pointer, text);
}

std::optional<JsonPlace> JsonPlace::Find(std::string_view key) const
{
    if (m_value->Object() == nullptr) {
        Fail("This must be an object.");
    }
    const JsonValue* const found = m_value->Find(key);
    return found == nullptr ? std::nullopt
                            : std::optional(JsonPlace(*found, m_pointer + '/' + EscapeKey(key)));
}

JsonPlace JsonPlace::Require(std::string_view key) const
{
    auto found = Find(key);
    if (!found) {
        Fail("The member \"" + std::string(key) + "\" is missing.");
    }
    return *std::move(found);
}

std::size_t JsonPlace::Size() const
{
    const JsonArray* const items = m_value->Array();
    if (items == nullptr) {
        Fail("This must be an array.");
    }
    return items->size();
}

JsonPlace JsonPlace::At(std::size_t index) const
{
    return {m_value->Array()->at(index), m_pointer + '/' + std::to_string(index)};
}

bool JsonPlace::Bool() const
{
    const bool* const value = std::get_if<bool>(&m_value->Content);
    if (value == nullptr) {
        Fail("This must be true or false.");
    }
    return *value;
}

double JsonPlace::Number() const
{
    if (const auto* const whole = std::get_if<std::int64_t>(&m_value->Content)) {
        return static_cast<double>(*whole);
    }
    const double* const value = std::get_if<double>(&m_value->Content);
    if (value == nullptr) {
        Fail("This must be a number.");
    }
    return *value;
}

const std::string& JsonPlace::Text() const
{
    const std::string* const text = m_value->String();
    if (text == nullptr) {
        Fail("This must be a text.");
    }
    return *text;
}

std::uint64_t JsonPlace::Unsigned() const
{
    constexpr double Limit = 9007199254740992.0; // doubles hold every whole number up to here
    const double number = Number();
    if (!(number >= 0.0 && number <= Limit) || number != std::floor(number)) {
        Fail("This must be a whole number from 0 on.");
    }
    return static_cast<std::uint64_t>(number);
}

std::size_t JsonPlace::IndexInto(std::size_t count, std::string_view what) const
{
    const std::uint64_t index = Unsigned();
    if (index >= count) {
        Fail("There is no " + std::string(what) + " " + std::to_string(index) + "; the file has " +
             std::to_string(count) + ".");
    }
    return static_cast<std::size_t>(index);
}

void JsonPlace::Numbers(std::span<double> into) const
{
    if (Size() != into.size()) {
        Fail("This must hold " + std::to_string(into.size()) + " numbers.");
    }
    for (std::size_t i = 0; i < into.size(); ++i) {
        into[i] = At(i).Number();
    }
}

std::string ReadText(const JsonPlace& object, std::string_view key)
{
    const auto found = object.Find(key);
    return found ? found->Text() : std::string();
}

double ReadNumber(const JsonPlace& object, std::string_view key, double absent)
{
    const auto found = object.Find(key);
    return found ? found->Number() : absent;
}

bool ReadBool(const JsonPlace& object, std::string_view key, bool absent)
{
    const auto found = object.Find(key);
    return found ? found->Bool() : absent;
}

std::uint64_t ReadUnsigned(const JsonPlace& object, std::string_view key, std::uint64_t absent)
{
    const auto found = object.Find(key);
    return found ? found->Unsigned() : absent;
}

std::optional<std::size_t> ReadIndex(const JsonPlace& object, std::string_view key, std::size_t count,
                                     std::string_view what)
{
    const auto found = object.Find(key);
    return found ? std::optional(found->IndexInto(count, what)) : std::nullopt;
}

void ReadNumbers(const JsonPlace& object, std::string_view key, std::span<double> into)
{
    if (const auto found = object.Find(key)) {
        found->Numbers(into);
    }
}

JsonValue ReadExtras(const JsonPlace& object)
{
    const auto found = object.Find("extras");
    return found ? found->Value() : JsonValue{};
}

std::optional<JsonPlace> FindExtension(const JsonPlace& object, std::string_view name)
{
    const auto extensions = object.Find("extensions");
    return extensions ? extensions->Find(name) : std::nullopt;
}

} // namespace tq4x::gltf
