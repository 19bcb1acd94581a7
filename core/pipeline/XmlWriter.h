#pragma once

#include "math/Vector.h"

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace tq4x
{

class OutputFile;

/// Element text whose markup characters are escaped. All other text is written as it stands.
struct Escaped
{
    std::string_view Text;
};

/// A float that is written without the snapping of small numbers to zero.
struct Unsnapped
{
    float Value = 0.0f;
};

/// One value of an attribute or of an element's text. Absent values make an attribute that is not written.
class XmlValue
{
public:
    XmlValue(std::string_view text) : m_value(text) {}

    XmlValue(const char* text) : m_value(std::string_view(text)) {}

    XmlValue(const std::string& text) : m_value(std::string_view(text)) {}

    XmlValue(Escaped text) : m_value(text) {}

    XmlValue(std::same_as<bool> auto flag) : m_value(flag) {}

    XmlValue(std::signed_integral auto number) : m_value(static_cast<std::int64_t>(number)) {}

    XmlValue(std::unsigned_integral auto number) requires(!std::same_as<decltype(number), bool>)
        : m_value(static_cast<std::uint64_t>(number))
    {}

    XmlValue(float number) : m_value(number) {}

    XmlValue(double number) : m_value(number) {}

    XmlValue(Unsnapped number) : m_value(number) {}

    template<typename T>
    XmlValue(const std::optional<T>& value)
    {
        if (value)
            *this = XmlValue(*value);
    }

    using Storage = std::variant<std::monostate, std::string_view, Escaped, bool, std::int64_t, std::uint64_t,
                                 float, double, Unsnapped>;

    const Storage& Value() const { return m_value; }

private:
    Storage m_value;
};

/// A name and its value, in the order in which they stand in the file.
struct XmlAttribute
{
    std::string_view Name;
    XmlValue Value;
};

using XmlAttributes = std::initializer_list<XmlAttribute>;

/// Writes the text of the intermediate files: one element or tag a line, tabs before it, attributes in the
/// order handed over, text as it stands (code page to UTF-8, no escaping unless `Escaped`). Floats have six
/// significant digits, and values strictly between -1e-06 and 1e-06 become 0.
///
/// The writer owns syntax, the sections own grammar. The level (number of tabs) follows the nesting; a
/// section that stands at a level of its own states it with `AtLevel`.
///
/// A `XmlWriter` without a file keeps the text (`Text`); with one it streams to it in large blocks.
class XmlWriter
{
public:
    XmlWriter() = default;

    explicit XmlWriter(OutputFile& file) : m_file(&file) {}

    XmlWriter(const XmlWriter&) = delete;
    XmlWriter& operator=(const XmlWriter&) = delete;
    ~XmlWriter();

    /// Start tag on one line, what `body` writes one level deeper, end tag on its own line.
    template<std::invocable Body>
    void Element(std::string_view name, XmlAttributes attributes, Body&& body)
    {
        Open(name, attributes);
        std::forward<Body>(body)();
        Close(name);
    }

    template<std::invocable Body>
    void Element(std::string_view name, Body&& body)
    {
        Element(name, {}, std::forward<Body>(body));
    }

    /// `<Name A="x"/>`
    void Empty(std::string_view name, XmlAttributes attributes = {});

    /// `<Name>value</Name>` on one line.
    void Leaf(std::string_view name, const XmlValue& value) { Leaf(name, {}, value); }

    void Leaf(std::string_view name, XmlAttributes attributes, const XmlValue& value);

    /// The same with a list of numbers, parted by one blank.
    void Leaf(std::string_view name, XmlAttributes attributes, std::span<const std::int32_t> numbers);
    void Leaf(std::string_view name, XmlAttributes attributes, std::span<const float> numbers);

    /// Start tag on one line, then one line per `perRow` numbers, parted by one blank, then the end tag.
    /// Neither the rows nor the end tag are indented.
    void Rows(std::string_view name, XmlAttributes attributes, std::span<const float> numbers,
              std::size_t perRow);
    void Rows(std::string_view name, XmlAttributes attributes, std::span<const std::int32_t> numbers,
              std::size_t perRow);

    /// A line of text at the current level, as it stands and without conversion (Base64, declarations).
    void Line(std::string_view text);

    /// A line whose text `body` hands over in pieces, for texts that nobody wants to hold whole.
    template<std::invocable Body>
    void LongLine(Body&& body)
    {
        StartLine();
        std::forward<Body>(body)();
        EndLine();
    }

    /// Continues the text of a `LongLine`, as it stands and without conversion.
    void Piece(std::string_view text);

    /// Runs `body` with the level set to `level`, and takes the former level up again afterwards.
    template<std::invocable Body>
    void AtLevel(int level, Body&& body)
    {
        const int former = std::exchange(m_level, level);
        std::forward<Body>(body)();
        m_level = former;
    }

    /// Number of tabs before the next line.
    int Level() const { return m_level; }

    /// Empty elements with the attributes `X`, `Y`, `Z` and `R`, `G`, `B`, `A`.
    void Vector(std::string_view name, const Vector3& vector);
    void ColorElement(std::string_view name, const Color& color);

    /// What was written so far, where there is no file.
    const std::string& Text() const { return m_text; }

private:
    void Open(std::string_view name, XmlAttributes attributes);
    void Close(std::string_view name);
    void StartTag(std::string_view name, XmlAttributes attributes);
    void StartLine();
    void EndLine();
    void FlushIfLarge();
    void Flush();

    std::string m_text;
    OutputFile* m_file = nullptr;
    int m_level = 0;
};

} // namespace tq4x
