#include "gltf/JsonValue.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tq4x::gltf
{
namespace
{

/// The letter of the short escape of a character; 0 if it has none.
char EscapeLetter(char c)
{
    switch (c) {
    case '"':
    case '\\':
        return c;
    case '\n':
        return 'n';
    case '\r':
        return 'r';
    case '\t':
        return 't';
    default:
        return '\0';
    }
}

void AppendEscaped(std::string& out, std::string_view text)
{
    static constexpr char Digits[] = "0123456789abcdef";
    out += '"';
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (const char letter = EscapeLetter(c); letter != '\0') {
            out += '\\';
            out += letter;
        } else if (byte < 0x20) {
            out += "\\u00";
            out += Digits[byte >> 4];
            out += Digits[byte & 15];
        } else {
            out += c;
        }
    }
    out += '"';
}

void AppendNumber(std::string& out, double value)
{
    if (!std::isfinite(value)) {
        out += "null";
        return;
    }
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    out.append(digits, end);
}

// Recursion is bounded: values are made by the parser (`MaxJsonDepth`) or by reports of a few levels.
struct Formatter
{
    std::string& Out;
    std::size_t Level = 0;

    void NewLine() const { Out.append(1, '\n').append(2 * Level, ' '); }

    void operator()(std::nullptr_t) const { Out += "null"; }

    void operator()(bool value) const { Out += value ? "true" : "false"; }

    void operator()(std::int64_t value) const { Out += std::to_string(value); }

    void operator()(double value) const { AppendNumber(Out, value); }

    void operator()(const std::string& value) const { AppendEscaped(Out, value); }

    void operator()(const JsonArray& items) const
    {
        List('[', ']', items,
             [](Formatter inner, const JsonValue& item) { std::visit(inner, item.Content); });
    }

    void operator()(const JsonObject& members) const
    {
        List('{', '}', members, [](Formatter inner, const JsonMember& member) {
            AppendEscaped(inner.Out, member.Key);
            inner.Out += ": ";
            std::visit(inner, member.Value.Content);
        });
    }

    template<class Items, class Write>
    void List(char open, char close, const Items& items, Write write) const
    {
        const Formatter inner{Out, Level + 1};
        Out += open;
        for (const auto& item : items) {
            Out += &item == &items.front() ? "" : ",";
            inner.NewLine();
            write(inner, item);
        }
        if (!items.empty()) {
            NewLine();
        }
        Out += close;
    }
};

} // namespace

// Out of line, since a list of members is complete only here.
JsonValue::JsonValue() = default;

JsonValue::JsonValue(std::int64_t number) : Content(number) {}

JsonValue::JsonValue(double number) : Content(number) {}

JsonValue::JsonValue(std::string text) : Content(std::move(text)) {}

JsonValue::JsonValue(JsonArray items) : Content(std::move(items)) {}

JsonValue::JsonValue(JsonObject members) : Content(std::move(members)) {}

JsonValue::JsonValue(const JsonValue& other) = default;
JsonValue::JsonValue(JsonValue&& other) noexcept = default;
JsonValue& JsonValue::operator=(const JsonValue& other) = default;
JsonValue& JsonValue::operator=(JsonValue&& other) noexcept = default;
JsonValue::~JsonValue() = default;

const JsonValue* JsonValue::Find(std::string_view key) const
{
    const JsonObject* const members = Object();
    if (members == nullptr) {
        return nullptr;
    }
    const auto found =
        std::ranges::find_if(*members, [key](const JsonMember& member) { return member.Key == key; });
    return found == members->end() ? nullptr : &found->Value;
}

bool JsonValue::operator==(const JsonValue& other) const
{
    return Content == other.Content;
}

std::string FormatJson(const JsonValue& value)
{
    std::string out;
    std::visit(Formatter{out}, value.Content);
    return out;
}

} // namespace tq4x::gltf
