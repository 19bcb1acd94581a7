#include "gltf/ResolveUri.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

namespace fs = std::filesystem;

constexpr std::string_view DataScheme = "data:";

int HexDigit(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const int lower = c | 0x20;
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

bool HasScheme(std::string_view uri)
{
    const auto isSchemeSign = [](unsigned char c) {
        return std::isalnum(c) || c == '+' || c == '-' || c == '.';
    };
    const std::size_t colon = uri.find(':');
    return colon != std::string_view::npos && colon > 0 && std::isalpha(static_cast<unsigned char>(uri[0])) &&
           std::ranges::all_of(uri.substr(0, colon), isSchemeSign);
}

// Addresses as they stand in messages: control characters made visible, long ones cut.
std::string Shown(std::string_view uri)
{
    constexpr std::size_t MaxLength = 200;
    std::string shown;
    for (const char c : uri.substr(0, MaxLength)) {
        shown += static_cast<unsigned char>(c) < 0x20 ? '?' : c;
    }
    return '"' + shown + (uri.size() > MaxLength ? "...\"" : "\"");
}

bool IsBelow(const fs::path& file, const fs::path& folder)
{
    const auto [inFolder, inFile] = std::mismatch(folder.begin(), folder.end(), file.begin(), file.end());
    return inFolder == folder.end() && inFile != file.end();
}

// The real folder, without links and without the empty last piece of "a/b/".
fs::path RealFolder(const fs::path& folder)
{
    const fs::path real = fs::weakly_canonical(folder.empty() ? fs::path(".") : folder);
    return real.has_filename() ? real : real.parent_path();
}

[[noreturn]] void RefuseOutside(const std::string& uri, const fs::path& root, const std::string& place)
{
    throw SceneError(place, "The file " + Shown(uri) + " lies outside the folder " + root.string() +
                                "; --asset-root DIR allows another one.");
}

std::array<std::int8_t, 256> MakeBase64Table()
{
    constexpr std::string_view Digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::int8_t, 256> table;
    table.fill(-1);
    for (std::size_t i = 0; i < Digits.size(); ++i) {
        table[static_cast<unsigned char>(Digits[i])] = static_cast<std::int8_t>(i);
    }
    return table;
}

std::vector<std::uint8_t> DecodeBase64(std::string_view text, const std::string& place)
{
    static const std::array<std::int8_t, 256> Table = MakeBase64Table();
    while (!text.empty() && text.back() == '=') {
        text.remove_suffix(1);
    }
    if (text.size() % 4 == 1) {
        throw SceneError(place, "The base64 data is truncated.");
    }
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 4 * 3 + 3);
    std::uint32_t bits = 0;
    int bitCount = 0;
    for (const char c : text) {
        const int digit = Table[static_cast<unsigned char>(c)];
        if (digit < 0) {
            throw SceneError(place, "The data is not base64.");
        }
        bits = bits << 6 | static_cast<std::uint32_t>(digit);
        bitCount += 6;
        if (bitCount >= 8) {
            bitCount -= 8;
            bytes.push_back(static_cast<std::uint8_t>(bits >> bitCount));
        }
    }
    return bytes;
}

} // namespace

std::string DecodePercent(std::string_view text)
{
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? HexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? HexDigit(text[i + 2]) : -1;
        if (low >= 0) {
            decoded += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

fs::path ResolveUri(const std::string& uri, const AssetFolders& folders, const std::string& place)
{
    if (HasScheme(uri)) {
        throw SceneError(place, "The address " + Shown(uri) +
                                    " is refused: only relative file names are read; " +
                                    "files below --asset-root DIR are allowed.");
    }
    std::string name = DecodePercent(uri);
    std::ranges::replace(name, '\\', '/'); // written by some programs; no file of theirs has it in its name
    if (name.empty() || name.find('\0') != std::string::npos) {
        throw SceneError(place, "The address " + Shown(uri) + " is no file name.");
    }
    const fs::path root = RealFolder(folders.Root.empty() ? folders.Base : folders.Root);
    const fs::path relative(name);
    if (relative.is_absolute() || relative.has_root_name()) {
        RefuseOutside(uri, root, place);
    }
    std::error_code error; // for names that are too long and links that lead in circles
    const fs::path file = fs::weakly_canonical(RealFolder(folders.Base) / relative, error);
    if (error) {
        throw SceneError(place, "The address " + Shown(uri) + " is no file name.");
    }
    if (!IsBelow(file, root)) {
        RefuseOutside(uri, root, place);
    }
    return file;
}

bool IsDataUri(std::string_view uri)
{
    return uri.starts_with(DataScheme);
}

std::vector<std::uint8_t> DecodeDataUri(std::string_view uri, const std::string& place)
{
    const std::size_t comma = uri.find(',');
    if (comma == std::string_view::npos) {
        throw SceneError(place, "The data: address has no comma.");
    }
    const std::string_view kind = uri.substr(DataScheme.size(), comma - DataScheme.size());
    const std::string_view content = uri.substr(comma + 1);
    if (kind.ends_with(";base64")) {
        return DecodeBase64(content, place);
    }
    const std::string decoded = DecodePercent(content);
    return {decoded.begin(), decoded.end()};
}

} // namespace tq4x::gltf
