#include "pipeline/XmlWriter.h"

#include "math/Scalar.h"
#include "pipeline/NumberText.h"
#include "pipeline/OutputFile.h"
#include "pipeline/TextHelpers.h"

#include <cassert>

namespace tq4x
{
namespace
{

constexpr std::size_t FlushSize = std::size_t{1} << 20;

void AppendEscaped(std::string& out, std::string_view text)
{
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        default:
            out += c;
        }
    }
}

/// Appends a value to the text, one overload for each kind that a value may have.
struct ValueAppender
{
    std::string& Out;

    void operator()(std::monostate) const {}

    void operator()(std::string_view text) const
    {
        if (SystemCodePage() == CodePageUtf8)
            Out += text;
        else
            Out += ToUtf8(text);
    }

    void operator()(Escaped escaped) const { AppendEscaped(Out, ToUtf8(escaped.Text)); }

    void operator()(bool flag) const { Out += BoolText(flag); }

    void operator()(std::int64_t number) const { AppendNumber(Out, number); }

    void operator()(std::uint64_t number) const { AppendNumber(Out, number); }

    void operator()(float number) const { AppendNumber(Out, SnapToZero(number)); }

    void operator()(double number) const { AppendNumber(Out, SnapToZero(number)); }

    void operator()(Unsnapped number) const { AppendNumber(Out, number.Value); }
};

void AppendValue(std::string& out, const XmlValue& value)
{
    std::visit(ValueAppender{out}, value.Value());
}

void AppendItem(std::string& out, std::int32_t number)
{
    AppendNumber(out, std::int64_t{number});
}

void AppendItem(std::string& out, float number)
{
    AppendNumber(out, SnapToZero(number));
}

template<typename Number>
void AppendList(std::string& out, std::span<const Number> numbers)
{
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0)
            out += ' ';
        AppendItem(out, numbers[i]);
    }
}

void AppendEndTag(std::string& out, std::string_view name)
{
    out += "</";
    out += name;
    out += '>';
}

} // namespace

XmlWriter::~XmlWriter()
{
    if (m_file != nullptr)
        Flush();
}

void XmlWriter::StartTag(std::string_view name, XmlAttributes attributes)
{
    m_text += Indent(m_level);
    m_text += '<';
    m_text += name;
    for (const XmlAttribute& attribute : attributes) {
        if (std::holds_alternative<std::monostate>(attribute.Value.Value()))
            continue;
        m_text += ' ';
        m_text += attribute.Name;
        m_text += "=\"";
        AppendValue(m_text, attribute.Value);
        m_text += '"';
    }
}

void XmlWriter::Open(std::string_view name, XmlAttributes attributes)
{
    StartTag(name, attributes);
    m_text += '>';
    EndLine();
    ++m_level;
}

void XmlWriter::Close(std::string_view name)
{
    assert(m_level > 0 && "a level that was opened is closed");
    --m_level;
    m_text += Indent(m_level);
    AppendEndTag(m_text, name);
    EndLine();
}

void XmlWriter::Empty(std::string_view name, XmlAttributes attributes)
{
    StartTag(name, attributes);
    m_text += "/>";
    EndLine();
}

void XmlWriter::Leaf(std::string_view name, XmlAttributes attributes, const XmlValue& value)
{
    StartTag(name, attributes);
    m_text += '>';
    AppendValue(m_text, value);
    AppendEndTag(m_text, name);
    EndLine();
}

void XmlWriter::Leaf(std::string_view name, XmlAttributes attributes, std::span<const std::int32_t> numbers)
{
    StartTag(name, attributes);
    m_text += '>';
    AppendList(m_text, numbers);
    AppendEndTag(m_text, name);
    EndLine();
}

void XmlWriter::Leaf(std::string_view name, XmlAttributes attributes, std::span<const float> numbers)
{
    StartTag(name, attributes);
    m_text += '>';
    AppendList(m_text, numbers);
    AppendEndTag(m_text, name);
    EndLine();
}

namespace
{

/// The rows of a stream, handed to `endLine` one by one so that long streams leave in blocks.
template<typename Number, typename EndLine>
void AppendRows(std::string& out, std::span<const Number> numbers, std::size_t perRow, EndLine endLine)
{
    assert(perRow > 0 && numbers.size() % perRow == 0 && "the rows of a stream are full");
    for (std::size_t first = 0; first + perRow <= numbers.size(); first += perRow) {
        AppendList(out, numbers.subspan(first, perRow));
        endLine();
    }
}

} // namespace

void XmlWriter::Rows(std::string_view name, XmlAttributes attributes, std::span<const float> numbers,
                     std::size_t perRow)
{
    StartTag(name, attributes);
    m_text += '>';
    EndLine();
    AppendRows(m_text, numbers, perRow, [this] { EndLine(); });
    AppendEndTag(m_text, name);
    EndLine();
}

void XmlWriter::Rows(std::string_view name, XmlAttributes attributes, std::span<const std::int32_t> numbers,
                     std::size_t perRow)
{
    StartTag(name, attributes);
    m_text += '>';
    EndLine();
    AppendRows(m_text, numbers, perRow, [this] { EndLine(); });
    AppendEndTag(m_text, name);
    EndLine();
}

void XmlWriter::Line(std::string_view text)
{
    StartLine();
    m_text += text;
    EndLine();
}

void XmlWriter::StartLine()
{
    m_text += Indent(m_level);
}

void XmlWriter::Piece(std::string_view text)
{
    m_text += text;
    FlushIfLarge();
}

void XmlWriter::Vector(std::string_view name, const Vector3& vector)
{
    Empty(name, {{"X", vector.X}, {"Y", vector.Y}, {"Z", vector.Z}});
}

void XmlWriter::ColorElement(std::string_view name, const Color& color)
{
    Empty(name, {{"R", color.R}, {"G", color.G}, {"B", color.B}, {"A", color.A}});
}

void XmlWriter::EndLine()
{
    m_text += '\n';
    FlushIfLarge();
}

void XmlWriter::FlushIfLarge()
{
    if (m_file != nullptr && m_text.size() >= FlushSize)
        Flush();
}

void XmlWriter::Flush()
{
    m_file->Write(m_text);
    m_text.clear();
}

} // namespace tq4x
