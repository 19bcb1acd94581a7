#include "pipeline/XmlWriter.h"

#include "pipeline/OutputFile.h"
#include "support/Golden.h"
#include "support/TemporaryFolder.h"

#include <array>
#include <limits>

namespace tq4x
{
namespace
{

TEST(XmlWriter, NestingSetsTheLevel)
{
    XmlWriter stream;
    stream.Element("A", {{"x", 1}, {"y", "two"}}, [&] {
        stream.Empty("B");
        stream.Element("C", [&] { stream.Leaf("D", "text"); });
        stream.Element("E", [] {});
    });
    EXPECT_EQ(stream.Text(),
              "<A x=\"1\" y=\"two\">\n\t<B/>\n\t<C>\n\t\t<D>text</D>\n\t</C>\n\t<E>\n\t</E>\n</A>\n");
}

TEST(XmlWriter, ASectionMayStateItsLevel)
{
    XmlWriter stream;
    stream.Element("A", [&] {
        stream.AtLevel(4, [&] { stream.Empty("B"); });
        stream.Empty("C");
    });
    EXPECT_EQ(stream.Text(), "<A>\n\t\t\t\t<B/>\n\t<C/>\n</A>\n");
    EXPECT_EQ(stream.Level(), 0);
}

TEST(XmlWriter, ValuesByTheirType)
{
    const struct
    {
        const char* Name;
        XmlValue Value;
        const char* Text;
    } cases[] = {
        {"boolean", true, "true"},
        {"literal is a text, not a boolean", "no", "no"},
        {"text", std::string_view("a&<>\"b"), "a&<>\"b"},
        {"escaped text", Escaped{"a&<>\"b"}, "a&amp;&lt;&gt;\"b"},
        {"signed", -5, "-5"},
        {"unsigned", 5u, "5"},
        {"large", std::uint64_t{18446744073709551615u}, "18446744073709551615"},
        {"byte", std::uint8_t{65}, "65"},
        {"float", 0.5f, "0.5"},
        {"double", 1e-7 * 1e8, "10"},
        {"negligible float", 9.9e-7f, "0"},
        {"minus zero", -0.0f, "0"},
        {"float at the limit", 1e-6f, "1e-06"},
        {"double at the limit", -1e-6, "-1e-06"},
        {"unsnapped", Unsnapped{9.9e-7f}, "9.9e-07"},
        {"no number", std::numeric_limits<float>::quiet_NaN(), "nan"},
    };

    for (const auto& row : cases) {
        XmlWriter stream;
        stream.Leaf("V", row.Value);
        EXPECT_EQ(stream.Text(), std::string("<V>") + row.Text + "</V>\n") << row.Name;
    }
}

TEST(XmlWriter, AbsentAttributesAreNotWritten)
{
    XmlWriter stream;
    stream.Empty("A", {{"x", std::optional<int>{}}, {"y", std::optional<float>{2.0f}}});
    EXPECT_EQ(stream.Text(), "<A y=\"2\"/>\n");
}

TEST(XmlWriter, ListsAndRows)
{
    const std::array<float, 4> floats = {1.0f, 0.0000001f, -2.5f, 4.0f};
    const std::array<std::int32_t, 3> integers = {3, -1, 2};
    XmlWriter stream;
    stream.AtLevel(2, [&] {
        stream.Leaf("F", {{"n", 4}}, std::span<const float>(floats));
        stream.Leaf("I", {}, std::span<const std::int32_t>(integers));
        stream.Leaf("None", {}, std::span<const float>());
        stream.Rows("R", {}, std::span<const float>(floats), 2);
        stream.Rows("S", {}, std::span<const std::int32_t>(integers), 1);
        stream.Rows("T", {}, std::span<const float>(), 3);
        stream.Line("raw");
    });
    EXPECT_EQ(stream.Text(), "\t\t<F n=\"4\">1 0 -2.5 4</F>\n\t\t<I>3 -1 2</I>\n\t\t<None></None>\n"
                             "\t\t<R>\n1 0\n-2.5 4\n</R>\n\t\t<S>\n3\n-1\n2\n</S>\n\t\t<T>\n</T>\n\t\traw\n");
}

TEST(XmlWriter, VectorsAndColors)
{
    XmlWriter stream;
    stream.Vector("V", {1.0f, 2.0f, -3.0f});
    stream.ColorElement("C", {0.25f, 0.5f, 0.75f, 1.0f});
    EXPECT_EQ(stream.Text(), "<V X=\"1\" Y=\"2\" Z=\"-3\"/>\n<C R=\"0.25\" G=\"0.5\" B=\"0.75\" A=\"1\"/>\n");
}

TEST(XmlWriter, LongDocumentsLeaveInBlocksAndWhole)
{
    const test::TemporaryFolder folder;
    const std::string path = (folder / "long.xml").string();
    std::string expected;
    OutputFile file;
    ASSERT_TRUE(file.Open(path));
    {
        XmlWriter stream(file);
        for (int i = 0; i < 200000; ++i) {
            stream.Leaf("N", i);
            expected += "<N>" + std::to_string(i) + "</N>\n";
        }
        EXPECT_LT(stream.Text().size(), std::size_t{2} << 20);
    }
    ASSERT_TRUE(file.Commit());
    EXPECT_EQ(test::ReadWholeFile(path), expected);
}

TEST(XmlWriter, ALongLineComesInPieces)
{
    XmlWriter stream;
    stream.Element("A", [&] {
        stream.LongLine([&] {
            stream.Piece("one");
            stream.Piece("");
            stream.Piece("<two>");
        });
        stream.LongLine([] {});
    });
    EXPECT_EQ(stream.Text(), "<A>\n\tone<two>\n\t\n</A>\n");
}

TEST(XmlWriter, ALongLineLeavesInBlocks)
{
    const test::TemporaryFolder folder;
    const std::string path = (folder / "line.xml").string();
    const std::string piece(100000, 'x');
    OutputFile file;
    ASSERT_TRUE(file.Open(path));
    {
        XmlWriter stream(file);
        stream.LongLine([&] {
            for (int i = 0; i < 50; ++i) {
                stream.Piece(piece);
                EXPECT_LT(stream.Text().size(), std::size_t{2} << 20);
            }
        });
    }
    ASSERT_TRUE(file.Commit());
    EXPECT_EQ(test::ReadWholeFile(path), std::string(5000000, 'x') + "\n");
}

} // namespace
} // namespace tq4x
