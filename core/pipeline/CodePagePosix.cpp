#include "pipeline/CodePage.h"

#include "pipeline/TextHelpers.h"

#include <iconv.h>

#include <array>
#include <cerrno>

namespace tq4x
{
namespace
{

constexpr std::string_view ReplacementCharacter = "\xEF\xBF\xBD";

/// A conversion of the C library, closed at the end of the scope.
class Conversion
{
public:
    explicit Conversion(unsigned codePage)
        : m_handle(iconv_open("UTF-8", ("CP" + std::to_string(codePage)).c_str()))
    {}

    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    ~Conversion()
    {
        if (IsOpen())
            iconv_close(m_handle);
    }

    bool IsOpen() const { return m_handle != reinterpret_cast<iconv_t>(-1); }

    /// Converts as much as it can, appends it and advances the text to the first byte that it can't convert.
    void Append(std::string& out, std::string_view& text) const
    {
        char* input = const_cast<char*>(text.data());
        std::size_t inputLeft = text.size();
        std::size_t result = 0;
        do {
            std::array<char, 256> block;
            char* output = block.data();
            std::size_t outputLeft = block.size();
            result = iconv(m_handle, &input, &inputLeft, &output, &outputLeft);
            out.append(block.data(), block.size() - outputLeft);
        } while (result == static_cast<std::size_t>(-1) && errno == E2BIG);
        text.remove_prefix(text.size() - inputLeft);
    }

private:
    iconv_t m_handle;
};

/// What is left where the C library does not know the code page.
std::string KeepAscii(std::string_view text)
{
    std::string out;
    for (const char c : text) {
        if (static_cast<unsigned char>(c) < 0x80)
            out += c;
        else
            out += ReplacementCharacter;
    }
    return out;
}

} // namespace

unsigned DefaultCodePage()
{
    return CodePageUtf8;
}

bool IsLeadByte(unsigned codePage, char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return codePage == CodePageShiftJis &&
           ((value >= 0x81 && value <= 0x9F) || (value >= 0xE0 && value <= 0xFC));
}

std::string ConvertToUtf8(unsigned codePage, std::string_view text)
{
    const Conversion conversion(codePage);
    if (!conversion.IsOpen())
        return KeepAscii(text);
    std::string out;
    conversion.Append(out, text);
    while (!text.empty()) {
        out += ReplacementCharacter;
        text.remove_prefix(1);
        conversion.Append(out, text);
    }
    return out;
}

} // namespace tq4x
