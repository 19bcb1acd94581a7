#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "gltf/JsonValue.h"

namespace tq4x::gltf
{

/// A value of a JSON document together with its JSON pointer, for reading with checks: each reader throws a
/// `SceneError` that names this place when the value is not what was asked for. The value must outlive it.
class JsonPlace
{
public:
    JsonPlace(const JsonValue& value, std::string pointer) : m_value(&value), m_pointer(std::move(pointer)) {}

    [[nodiscard]] const JsonValue& Value() const { return *m_value; }

    [[nodiscard]] const std::string& Pointer() const { return m_pointer; }

    [[noreturn]] void Fail(const std::string& text) const;

    /// Members of an object. `Find` gives nothing for an absent key; `Require` refuses.
    [[nodiscard]] std::optional<JsonPlace> Find(std::string_view key) const;
    [[nodiscard]] JsonPlace Require(std::string_view key) const;

    /// Items of an array.
    [[nodiscard]] std::size_t Size() const;
    [[nodiscard]] JsonPlace At(std::size_t index) const;

    [[nodiscard]] bool Bool() const;
    [[nodiscard]] double Number() const;
    [[nodiscard]] const std::string& Text() const;
    /// A whole number from 0 to 2^53; "3.0" is one too.
    [[nodiscard]] std::uint64_t Unsigned() const;
    /// An index into a list of `count` things; `what` names one of them in the message.
    [[nodiscard]] std::size_t IndexInto(std::size_t count, std::string_view what) const;
    /// As many numbers as `into` holds.
    void Numbers(std::span<double> into) const;

private:
    const JsonValue* m_value;
    std::string m_pointer;
};

/// Optional members with what an absent one means.
[[nodiscard]] std::string ReadText(const JsonPlace& object, std::string_view key);
[[nodiscard]] double ReadNumber(const JsonPlace& object, std::string_view key, double absent);
[[nodiscard]] bool ReadBool(const JsonPlace& object, std::string_view key, bool absent);
[[nodiscard]] std::uint64_t ReadUnsigned(const JsonPlace& object, std::string_view key, std::uint64_t absent);
[[nodiscard]] std::optional<std::size_t> ReadIndex(const JsonPlace& object, std::string_view key,
                                                   std::size_t count, std::string_view what);
/// Leaves `into` as it is where the key is absent.
void ReadNumbers(const JsonPlace& object, std::string_view key, std::span<double> into);
/// The value of `extras`, null where absent.
[[nodiscard]] JsonValue ReadExtras(const JsonPlace& object);
/// `extensions/NAME` of an object.
[[nodiscard]] std::optional<JsonPlace> FindExtension(const JsonPlace& object, std::string_view name);

} // namespace tq4x::gltf
