#include "gltf/EditExtras.h"

#include <gtest/gtest.h>

#include "gltf/SceneError.h"

namespace tq4x::gltf::test
{
namespace
{

std::vector<JsonMember> Members()
{
    return {{"a", JsonValue{std::int64_t{3}}}};
}

TEST(EditExtrasTest, TouchesNothingElse)
{
    const struct
    {
        const char* Name;
        std::string Before;
        std::string After;
    } cases[] = {
        {"no extras", R"({"nodes":[{"name":"x"}]})", R"({"nodes":[{"name":"x","extras":{"a":3}}]})"},
        {"an empty record", R"({"nodes":[{}]})", R"({"nodes":[{"extras":{"a":3}}]})"},
        {"an empty record with blanks", R"({"nodes":[ { } ]})", R"({"nodes":[ {"extras":{"a":3} } ]})"},
        {"empty extras", R"({"nodes":[{"extras":{}}]})", R"({"nodes":[{"extras":{"a":3}}]})"},
        {"other extras", R"({"nodes":[{"extras":{"b":[1,{"a":2}]}}]})",
         R"({"nodes":[{"extras":{"b":[1,{"a":2}],"a":3}}]})"},
        {"another value", R"({"nodes":[{"extras":{"a": 2 ,"b":1}}]})",
         R"({"nodes":[{"extras":{"a": 3 ,"b":1}}]})"},
        {"a value of another type", R"({"nodes":[{"extras":{"a":{"b":[]}}}]})",
         R"({"nodes":[{"extras":{"a":3}}]})"},
        {"a key that is written in another way", R"({"nodes":[{"extras":{"\u0061":2}}]})",
         R"({"nodes":[{"extras":{"\u0061":3}}]})"},
        {"the equal value", R"({"nodes":[{"extras":{"a" :3}}]})", R"({"nodes":[{"extras":{"a" :3}}]})"},
        {"brackets inside texts", R"({"x":"}]\"{[","nodes":[{"name":"]}\\","extras":{"b":"{"}}]})",
         R"({"x":"}]\"{[","nodes":[{"name":"]}\\","extras":{"b":"{","a":3}}]})"},
        {"many lines", "{\n  \"nodes\": [\n    {\n      \"name\": \"x\"\n    }\n  ]\n}\n",
         "{\n  \"nodes\": [\n    {\n      \"name\": \"x\",\n      \"extras\":{\"a\":3}\n    }\n  ]\n}\n"},
        {"extras in many lines", "{\"nodes\":[{\"extras\":{\n\t\"b\": 1.50\n}}]}",
         "{\"nodes\":[{\"extras\":{\n\t\"b\": 1.50,\n\t\"a\":3\n}}]}"},
        {"numbers as they are written", R"({"n":[1e0,-0.10],"nodes":[{"scale":[1.0,1,1E+0]}]})",
         R"({"n":[1e0,-0.10],"nodes":[{"scale":[1.0,1,1E+0],"extras":{"a":3}}]})"},
    };

    for (const auto& row : cases) {
        EXPECT_EQ(EditExtras(row.Before, {"nodes", 0}, Members()), row.After) << row.Name;
        EXPECT_EQ(EditExtras(row.After, {"nodes", 0}, Members()), row.After) << row.Name << ", again";
    }
}

TEST(EditExtrasTest, FindsTheRecord)
{
    const std::string json = R"({"materials":[{"name":"m"}],"nodes":[{},{"children":[2,{}]},{"name":"z"}]})";
    EXPECT_EQ(
        EditExtras(json, {"nodes", 2}, Members()),
        R"({"materials":[{"name":"m"}],"nodes":[{},{"children":[2,{}]},{"name":"z","extras":{"a":3}}]})");
    EXPECT_EQ(
        EditExtras(json, {"materials", 0}, Members()),
        R"({"materials":[{"name":"m","extras":{"a":3}}],"nodes":[{},{"children":[2,{}]},{"name":"z"}]})");
    EXPECT_EQ(EditExtras(json, {"nodes", 1}, {}), json);
}

TEST(EditExtrasTest, ChangesAndAddsSeveral)
{
    const std::vector<JsonMember> members = {{"new", JsonValue{true}},
                                             {"z", JsonValue{std::string("\"\n")}},
                                             {"b", JsonValue{0.5}},
                                             {"last", JsonValue{false}}};
    EXPECT_EQ(EditExtras(R"({"nodes":[{"extras":{"b":1,"y":2,"z":3}}]})", {"nodes", 0}, members),
              R"({"nodes":[{"extras":{"b":0.5,"y":2,"z":"\"\n","new":true,"last":false}}]})");
}

TEST(EditExtrasTest, RefusesWhatCantBeEdited)
{
    const struct
    {
        std::string Json;
        RecordPlace Place;
        std::string Text;
    } cases[] = {
        {R"({"nodes":[{}]})", {"nodes", 1}, "The file has no such record."},
        {R"({"nodes":[]})", {"nodes", 0}, "The file has no such record."},
        {R"({})", {"nodes", 0}, "The file has no such record."},
        {R"({"nodes":{}})", {"nodes", 0}, "The file has no such record."},
        {R"([])", {"nodes", 0}, "The file has no such record."},
        {R"({"nodes":[7]})", {"nodes", 0}, "The record is no object."},
        {R"({"nodes":[{"extras":[1]}]})",
         {"nodes", 0},
         "The extras are no object, so that nothing can be added to them."},
    };

    for (const auto& row : cases) {
        try {
            static_cast<void>(EditExtras(row.Json, row.Place, Members()));
            ADD_FAILURE() << row.Json;
        } catch (const SceneError& error) {
            EXPECT_EQ(error.Text, row.Text) << row.Json;
        }
    }
}

std::string Number(std::size_t number)
{
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>((number >> shift) & 0xff);
    }
    return bytes;
}

std::string Glb(const std::string& json, const std::string& rest)
{
    return "glTF" + Number(2) + Number(20 + json.size() + rest.size()) + Number(json.size()) + "JSON" + json +
           rest;
}

std::string EditBytes(const std::string& file, const std::vector<JsonMember>& members)
{
    const std::vector<std::uint8_t> bytes(file.begin(), file.end());
    return EditFileExtras(bytes, {"nodes", 0}, members);
}

TEST(EditExtrasTest, KeepsTheOtherPartsOfAGlb)
{
    const std::string binary = Number(4) + std::string("BIN\0", 4) + "data";
    const std::string before = Glb(R"({"nodes":[{}]}  )", binary);
    const std::string after = Glb(R"({"nodes":[{"extras":{"a":3}}]}  )", binary);
    EXPECT_EQ(EditBytes(before, Members()), after);
    EXPECT_EQ(EditBytes(after, Members()), after);
    EXPECT_EQ(EditBytes(before + "behind", Members()), after + "behind") << "bytes behind the end";
    EXPECT_EQ(EditBytes(Glb(R"({"nodes":[{}]})", ""), Members()),
              Glb(R"({"nodes":[{"extras":{"a":3}}]}  )", ""))
        << "padded to four bytes";
}

TEST(EditExtrasTest, KeepsAByteOrderMark)
{
    EXPECT_EQ(EditBytes("\xef\xbb\xbf{\"nodes\":[{}]}", Members()),
              "\xef\xbb\xbf{\"nodes\":[{\"extras\":{\"a\":3}}]}");
}

} // namespace
} // namespace tq4x::gltf::test
