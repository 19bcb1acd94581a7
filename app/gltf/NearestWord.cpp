#include "gltf/NearestWord.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <vector>

namespace tq4x
{
namespace
{

char Lower(char c)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

/// Edit distance by Levenshtein's method, one row of the table at a time.
std::size_t DistanceBetween(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t k = 1; k <= b.size(); ++k) {
            const std::size_t exchanged = diagonal + (Lower(a[i - 1]) == Lower(b[k - 1]) ? 0 : 1);
            diagonal = row[k];
            row[k] = std::min({row[k] + 1, row[k - 1] + 1, exchanged});
        }
    }
    return row.back();
}

} // namespace

std::string_view FindNearestWord(std::string_view text, std::span<const std::string_view> words)
{
    constexpr std::size_t LongestGuess = 100; // a text longer than any word needs no table
    std::string_view nearest;
    std::size_t least = text.size();
    for (const std::string_view word : words) {
        if (text.size() > LongestGuess) {
            break;
        }
        const std::size_t distance = DistanceBetween(text, word);
        if (distance < least && distance <= word.size() / 2) {
            least = distance;
            nearest = word;
        }
    }
    return nearest;
}

} // namespace tq4x
