#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tq4x::gltf
{

struct JsonMember;
struct JsonValue;
using JsonArray = std::vector<JsonValue>;
using JsonObject = std::vector<JsonMember>; ///< in the order of the file, keys unique

/// One JSON value. Whole numbers that fit are integers, all others doubles; a default value is null.
struct JsonValue
{
    JsonValue();

    JsonValue(std::same_as<bool> auto flag) : Content(flag) {} // no pointer may turn into one

    JsonValue(std::int64_t number);
    JsonValue(double number);
    JsonValue(std::string text);
    JsonValue(JsonArray items);
    JsonValue(JsonObject members);
    JsonValue(const JsonValue& other);
    JsonValue(JsonValue&& other) noexcept;
    JsonValue& operator=(const JsonValue& other);
    JsonValue& operator=(JsonValue&& other) noexcept;
    ~JsonValue();

    std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, JsonArray, JsonObject> Content;

    [[nodiscard]] bool IsNull() const { return std::holds_alternative<std::nullptr_t>(Content); }

    [[nodiscard]] const JsonObject* Object() const { return std::get_if<JsonObject>(&Content); }

    [[nodiscard]] const JsonArray* Array() const { return std::get_if<JsonArray>(&Content); }

    [[nodiscard]] const std::string* String() const { return std::get_if<std::string>(&Content); }

    /// The member of an object; nothing where this is no object or has no such key.
    [[nodiscard]] const JsonValue* Find(std::string_view key) const;

    bool operator==(const JsonValue& other) const;
};

struct JsonMember
{
    std::string Key;
    JsonValue Value;

    bool operator==(const JsonMember& other) const = default;
};

/// Deepest nesting that is read. Scenes of real programs stay below 20 levels.
inline constexpr std::size_t MaxJsonDepth = 200;

/// Parses UTF-8 text. Throws a `SceneError` that names line and column for malformed text, for nesting beyond
/// `MaxJsonDepth` and for a key that an object holds twice.
[[nodiscard]] JsonValue ParseJson(std::string_view text);

/// JSON text with two blanks per level and no line end behind the last bracket. Doubles have the fewest
/// digits that read back equal; those that are not finite become null.
[[nodiscard]] std::string FormatJson(const JsonValue& value);

} // namespace tq4x::gltf
