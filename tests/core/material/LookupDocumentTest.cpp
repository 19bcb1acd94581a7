#include "material/LookupTable.h"
#include "pipeline/XmlWriter.h"
#include "support/Golden.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace tq4x
{
namespace
{

std::string TextOf(const LookupTableSet& tables)
{
    XmlWriter stream;
    tables.WriteXml(stream, 2, "lamp.LightLutset");
    return stream.Text();
}

LookupTable MakeTable(const char* name, bool isAbs)
{
    return {name, isAbs, true, false, {}};
}

std::vector<std::string> LinesWith(const std::string& text, const std::string& word)
{
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find('\n', start);
        const std::string line = text.substr(start, end - start);
        if (line.find(word) != std::string::npos)
            lines.push_back(line.substr(line.find('<')));
        start = end + 1;
    }
    return lines;
}

TEST(LookupDocument, AbsNotAbsAndFlat)
{
    LookupTableSet tables;
    LookupTable ramp = MakeTable("Ramp", true);
    ramp.BuildSpecular(1.0f, 1.0f);
    tables.Add(ramp);
    LookupTable peak = MakeTable("Peak", false);
    peak.BuildAnisotropicAzimuth(0.5f);
    tables.Add(peak);
    LookupTable flat = MakeTable("Flat", true);
    flat.BuildSpecular(0.0f, 0.75f);
    tables.Add(flat);
    tables.Add(MakeTable("Empty", true));
    test::ExpectGolden(TextOf(tables), "core/material/lookup-abs-not-abs-flat.xml");
}

TEST(LookupDocument, EmptySetWritesNothing)
{
    EXPECT_EQ(TextOf({}), "");
}

TEST(LookupDocument, TableWithoutSamplesWritesNothing)
{
    LookupTableSet tables;
    tables.Add({"Empty", true, true, true, {}});
    EXPECT_EQ(TextOf(tables), "\t\t<LookupTableSetContents>\n"
                              "\t\t\t<LookupTableSetContentQtr Name=\"lamp.LightLutset\">\n"
                              "\t\t\t\t<LookupTableSet Name=\"\">\n"
                              "\t\t\t\t\t<Samplers>\n"
                              "\t\t\t\t\t</Samplers>\n"
                              "\t\t\t\t</LookupTableSet>\n"
                              "\t\t\t</LookupTableSetContentQtr>\n"
                              "\t\t</LookupTableSetContents>\n");
}

TEST(LookupDocument, FlagsAreWritten)
{
    LookupTableSet tables;
    tables.Add({"A", true, false, false, {1.0f}});
    tables.Add({"B", false, true, false, {1.0f}});
    tables.Add({"C", false, false, true, {1.0f}});
    using Texts = std::vector<std::string>;
    EXPECT_EQ(
        LinesWith(TextOf(tables), "<ImageLookupTableQtr"),
        (Texts{
            R"(<ImageLookupTableQtr Name="A" IsGeneratedAsAbs="true" IsSizeDoubled="false" IsMipMap="false">)",
            R"(<ImageLookupTableQtr Name="B" IsGeneratedAsAbs="false" IsSizeDoubled="true" IsMipMap="false">)",
            R"(<ImageLookupTableQtr Name="C" IsGeneratedAsAbs="false" IsSizeDoubled="false" IsMipMap="true">)"}));
}

TEST(LookupDocument, FlatnessIsJudgedByTheFirstValue)
{
    const struct
    {
        const char* Name;
        float Last;
        const char* Expected;
    } cases[] = {
        {"below the tolerance", 0.50099f, "<LinearFloatKey Frame=\"0\" Value=\"0.5\"/>"},
        {"at the tolerance", 0.5f + 0.0010001f, "<HermiteFloatKey Frame=\"0\""},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        LookupTableSet tables;
        LookupTable table = MakeTable("T", true);
        table.Samples.assign(LookupSampleCount, 0.5f);
        table.Samples[255] = c.Last;
        tables.Add(table);
        const std::vector<std::string> keys = LinesWith(TextOf(tables), "FloatKey ");
        ASSERT_FALSE(keys.empty());
        EXPECT_EQ(keys.front().substr(0, std::string(c.Expected).size()), c.Expected);
    }
}

TEST(LookupDocument, DifferencesTakeNoPart)
{
    LookupTableSet tables;
    LookupTable table = MakeTable("T", true);
    table.Samples.assign(256, 0.25f);
    table.Samples.resize(LookupSampleCount, 9.0f);
    tables.Add(table);
    EXPECT_EQ(LinesWith(TextOf(tables), "FloatKey ").size(), 1u);
}

TEST(LookupDocument, FirstSampleOfASignedTableIsDropped)
{
    LookupTableSet tables;
    LookupTable table = MakeTable("T", false);
    table.Samples.assign(LookupSampleCount, 0.0f);
    table.Samples[0] = 5.0f; // makes the table move, but has no key
    tables.Add(table);
    using Texts = std::vector<std::string>;
    EXPECT_EQ(LinesWith(TextOf(tables), "FloatKey "),
              (Texts{"<HermiteFloatKey Frame=\"-255\" Value=\"0\" InSlope=\"0\" OutSlope=\"0\"/>"}));
}

/// Value of the written curve at a frame, from the keys' lines.
struct WrittenKey
{
    float Frame = 0.0f, Value = 0.0f, InSlope = 0.0f, OutSlope = 0.0f;
};

std::vector<WrittenKey> ReadKeys(const std::string& text)
{
    std::vector<WrittenKey> keys;
    for (const std::string& line : LinesWith(text, "<HermiteFloatKey ")) {
        WrittenKey key;
        EXPECT_EQ(std::sscanf(line.c_str(),
                              "<HermiteFloatKey Frame=\"%f\" Value=\"%f\" InSlope=\"%f\" OutSlope=\"%f\"/>",
                              &key.Frame, &key.Value, &key.InSlope, &key.OutSlope),
                  4)
            << line;
        keys.push_back(key);
    }
    return keys;
}

double Evaluate(const std::vector<WrittenKey>& keys, double frame)
{
    std::size_t i = 0;
    while (i + 2 < keys.size() && keys[i + 1].Frame <= frame)
        ++i;
    const WrittenKey &a = keys[i], &b = keys[i + 1];
    const double length = double{b.Frame} - a.Frame;
    const double t = (frame - a.Frame) / length;
    const double t2 = t * t, t3 = t2 * t;
    return (2 * t3 - 3 * t2 + 1) * a.Value + (t3 - 2 * t2 + t) * length * a.OutSlope +
           (3 * t2 - 2 * t3) * b.Value + (t3 - t2) * length * b.InSlope;
}

TEST(LookupDocument, WrittenCurvesStayWithinTheTolerance)
{
    struct Case
    {
        const char* Name;
        bool IsAbs;
        void (*Build)(LookupTable&);
    };

    const Case cases[] = {
        {"specular", true, [](LookupTable& t) { t.BuildSpecular(30.0f, 1.0f); }},
        {"zenith", true, [](LookupTable& t) { t.BuildAnisotropicZenith(0.5f); }},
        {"azimuth", false, [](LookupTable& t) { t.BuildAnisotropicAzimuth(0.05f); }},
        {"spot", true, [](LookupTable& t) { t.BuildSpotRange(10.0f, 20.0f); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        LookupTable table = MakeTable("T", c.IsAbs);
        c.Build(table);
        LookupTableSet tables;
        tables.Add(table);
        const std::vector<WrittenKey> keys = ReadKeys(TextOf(tables));
        ASSERT_GE(keys.size(), 2u);
        EXPECT_EQ(keys.front().Frame, c.IsAbs ? 0.0f : -255.0f);
        EXPECT_EQ(keys.back().Frame, 255.0f);
        for (std::size_t i = c.IsAbs ? 0 : 1; i < 256; ++i) {
            const double frame =
                c.IsAbs ? static_cast<double>(i) : (static_cast<double>(i) - 128) / 127 * 255;
            ASSERT_NEAR(Evaluate(keys, frame), table.Samples[i], 0.00102) << "entry " << i;
        }
    }
}

} // namespace
} // namespace tq4x
