#include "gltf/EditExtras.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "gltf/Container.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

constexpr std::string_view Blanks = " \t\r\n";

/// A member of an object as it stands in the text.
struct MemberSpan
{
    std::string_view Key;  ///< with its quotes
    std::size_t Start = 0; ///< of the value
    std::size_t End = 0;
};

/// Finds the places of values in a text that is known to be JSON. Nothing is recursive: brackets are counted.
class Scanner
{
public:
    explicit Scanner(std::string_view text) : m_text(text) {}

    [[nodiscard]] std::size_t SkipBlanks(std::size_t at) const
    {
        return std::min(m_text.find_first_not_of(Blanks, at), m_text.size());
    }

    /// The place behind a byte-order mark.
    [[nodiscard]] std::size_t SkipMark() const
    {
        constexpr std::string_view Mark = "\xef\xbb\xbf";
        return m_text.starts_with(Mark) ? Mark.size() : 0;
    }

    /// The end of the value that starts here.
    [[nodiscard]] std::size_t SkipValue(std::size_t at) const
    {
        std::size_t depth = 0;
        do {
            at = SkipToken(SkipBlanks(at), depth);
        } while (depth > 0 && at < m_text.size());
        return at;
    }

    /// The members of the object that starts here; nothing if none does.
    [[nodiscard]] std::optional<std::vector<MemberSpan>> Members(std::size_t at) const
    {
        if (at >= m_text.size() || m_text[at] != '{') {
            return std::nullopt;
        }
        std::vector<MemberSpan> members;
        at = SkipBlanks(at + 1);
        while (at < m_text.size() && m_text[at] != '}') {
            const std::size_t keyEnd = SkipValue(at);
            const std::string_view key = m_text.substr(at, keyEnd - at);
            const std::size_t start = SkipBlanks(SkipBlanks(keyEnd) + 1); // behind the colon
            const std::size_t end = SkipValue(start);
            members.push_back({key, start, end});
            at = SkipComma(end);
        }
        return members;
    }

    /// The start of an item of the array that starts here.
    [[nodiscard]] std::optional<std::size_t> Item(std::size_t at, std::size_t index) const
    {
        if (at >= m_text.size() || m_text[at] != '[') {
            return std::nullopt;
        }
        at = SkipBlanks(at + 1);
        for (; index > 0 && at < m_text.size() && m_text[at] != ']'; --index) {
            at = SkipComma(SkipValue(at));
        }
        return at < m_text.size() && m_text[at] != ']' ? std::optional(at) : std::nullopt;
    }

private:
    [[nodiscard]] std::size_t SkipComma(std::size_t at) const
    {
        at = SkipBlanks(at);
        return at < m_text.size() && m_text[at] == ',' ? SkipBlanks(at + 1) : at;
    }

    [[nodiscard]] std::size_t SkipText(std::size_t at) const
    {
        for (++at; at < m_text.size() && m_text[at] != '"'; ++at) {
            at += m_text[at] == '\\' ? 1 : 0;
        }
        return at + 1;
    }

    /// A bracket, a text, a sign between values, or a number or word.
    [[nodiscard]] std::size_t SkipToken(std::size_t at, std::size_t& depth) const
    {
        switch (at < m_text.size() ? m_text[at] : '\0') {
        case '{':
        case '[':
            ++depth;
            return at + 1;
        case '}':
        case ']':
            --depth;
            return at + 1;
        case '"':
            return SkipText(at);
        case ',':
        case ':':
            return at + 1;
        default:
            return std::min(m_text.find_first_of(",:]} \t\r\n", at), m_text.size());
        }
    }

    std::string_view m_text;
};

const MemberSpan* FindMember(const std::vector<MemberSpan>& members, std::string_view key)
{
    const auto found = std::ranges::find_if(
        members, [&](const MemberSpan& member) { return *ParseJson(member.Key).String() == key; });
    return found == members.end() ? nullptr : &*found;
}

/// What is to be put in place of a piece of the text.
struct Change
{
    std::size_t Start = 0;
    std::size_t End = 0;
    std::string Text;
};

std::string Apply(std::string_view text, const std::vector<Change>& changes)
{
    std::string changed;
    std::size_t at = 0;
    for (const Change& change : changes) {
        changed += text.substr(at, change.Start - at);
        changed += change.Text;
        at = change.End;
    }
    return changed.append(text.substr(at));
}

std::string MemberText(const JsonMember& member)
{
    return FormatJson(JsonValue{member.Key}) + ":" + FormatJson(member.Value);
}

/// A new member behind the others of an object: in a line of its own where they are.
Change Append(std::string_view text, std::size_t object, const std::vector<MemberSpan>& members,
              const std::string& added)
{
    if (members.empty()) {
        return {object + 1, object + 1, added};
    }
    const std::size_t keyStart = static_cast<std::size_t>(members.back().Key.data() - text.data());
    const std::size_t gap = text.find_last_not_of(Blanks, keyStart - 1) + 1;
    return {members.back().End, members.back().End,
            "," + std::string(text.substr(gap, keyStart - gap)) + added};
}

[[noreturn]] void FailAt(const RecordPlace& place, const std::string& text)
{
    throw SceneError("/" + place.List + "/" + std::to_string(place.Index), text);
}

std::size_t FindRecord(const Scanner& scanner, const RecordPlace& place)
{
    const std::size_t start = scanner.SkipMark();
    const auto document = scanner.Members(scanner.SkipBlanks(start));
    const MemberSpan* const list = document ? FindMember(*document, place.List) : nullptr;
    const auto record = list != nullptr ? scanner.Item(list->Start, place.Index) : std::nullopt;
    if (!record) {
        FailAt(place, "The file has no such record.");
    }
    return *record;
}

std::string JoinMembers(const std::vector<JsonMember>& members)
{
    std::string joined;
    for (const JsonMember& member : members) {
        joined += (joined.empty() ? "" : ",") + MemberText(member);
    }
    return joined;
}

/// Changes of the members that are there, then one addition behind the last of them.
std::vector<Change> ChangesOf(std::string_view json, std::size_t object,
                              const std::vector<MemberSpan>& present, const std::vector<JsonMember>& members)
{
    std::vector<Change> changes;
    std::vector<JsonMember> added;
    for (const JsonMember& member : members) {
        const MemberSpan* const found = FindMember(present, member.Key);
        if (found == nullptr) {
            added.push_back(member);
        } else if (!(ParseJson(json.substr(found->Start, found->End - found->Start)) == member.Value)) {
            changes.push_back({found->Start, found->End, FormatJson(member.Value)});
        }
    }
    std::ranges::sort(changes, {}, &Change::Start);
    if (!added.empty()) {
        changes.push_back(Append(json, object, present, JoinMembers(added)));
    }
    return changes;
}

std::size_t LoadUnsigned(std::string_view bytes)
{
    std::size_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        number |= static_cast<std::size_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    }
    return number;
}

void AppendUnsigned(std::string& bytes, std::size_t number)
{
    if (number > std::numeric_limits<std::uint32_t>::max()) {
        throw SceneError("", "The file would become too large for a .glb.");
    }
    for (int shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>((number >> shift) & 0xff);
    }
}

} // namespace

std::string EditExtras(std::string_view json, const RecordPlace& place,
                       const std::vector<JsonMember>& members)
{
    const Scanner scanner(json);
    const std::size_t record = FindRecord(scanner, place);
    const auto fields = scanner.Members(record);
    if (!fields) {
        FailAt(place, "The record is no object.");
    }
    if (members.empty()) {
        return std::string(json);
    }
    const MemberSpan* const extras = FindMember(*fields, "extras");
    if (extras == nullptr) {
        return Apply(json, {Append(json, record, *fields, "\"extras\":{" + JoinMembers(members) + "}")});
    }
    const auto present = scanner.Members(extras->Start);
    if (!present) {
        FailAt(place, "The extras are no object, so that nothing can be added to them.");
    }
    return Apply(json, ChangesOf(json, extras->Start, *present, members));
}

std::string EditFileExtras(std::span<const std::uint8_t> file, const RecordPlace& place,
                           const std::vector<JsonMember>& members)
{
    constexpr std::size_t HeaderSize = 12;
    constexpr std::size_t Alignment = 4;
    Notes notes;
    const std::string_view whole(reinterpret_cast<const char*>(file.data()), file.size());
    const std::string_view json = SplitContainer(file, notes).Json;
    std::string edited = EditExtras(json, place, members);
    if (edited == json) {
        return std::string(whole);
    }
    const auto start = static_cast<std::size_t>(json.data() - whole.data());
    if (!whole.starts_with("glTF")) {
        return std::string(whole.substr(0, start)) + edited + std::string(whole.substr(start + json.size()));
    }
    edited.resize((edited.size() + Alignment - 1) / Alignment * Alignment, ' ');
    const std::string_view rest = whole.substr(start + json.size());
    std::string glb(whole.substr(0, HeaderSize - 4));
    AppendUnsigned(glb, LoadUnsigned(whole.substr(HeaderSize - 4, 4)) - json.size() + edited.size());
    AppendUnsigned(glb, edited.size());
    return glb.append(whole.substr(HeaderSize + 4, 4)).append(edited).append(rest);
}

} // namespace tq4x::gltf
