#include "animation/FilterEulerTriple.h"
#include "math/Matrix44.h"

#include <array>
#include <cmath>
#include <limits>
#include <random>

namespace tq4x
{
namespace
{

struct Triples
{
    std::vector<float> X;
    std::vector<float> Y;
    std::vector<float> Z;

    bool Filter() { return FilterEulerTriple(X, Y, Z); }

    void Add(float x, float y, float z)
    {
        X.push_back(x);
        Y.push_back(y);
        Z.push_back(z);
    }

    bool operator==(const Triples&) const = default;
};

TEST(FilterEulerTriple, TakesTheNearestForm)
{
    const struct
    {
        const char* Name;
        Vector3 Former;
        Vector3 Current;
        Vector3 Filtered;
        bool HasChanged;
    } cases[] = {
        {"small step", {10, 20, 30}, {60, -20, 100}, {60, -20, 100}, false},
        {"wrap of x", {170, 0, 0}, {-170, 0, 0}, {190, 0, 0}, true},
        {"wrap of y", {0, 170, 0}, {0, -170, 0}, {0, 190, 0}, true},
        {"wrap of z", {0, 0, -170}, {0, 0, 170}, {0, 0, -190}, true},
        {"wrap of x and y", {170, 170, 0}, {-170, -170, 0}, {190, 190, 0}, true},
        {"wrap of all three", {-170, 170, 170}, {170, -170, -170}, {-190, 190, 190}, true},
        {"flip", {0, 80, 0}, {180, 80, 180}, {0, 100, 0}, true},
        {"flip the other way", {0, -80, 0}, {-180, -80, -180}, {0, -100, 0}, true},
        {"flip by more than a turn", {500, 400, 500}, {-10, 90, -10}, {530, 450, 530}, true},
        // Row 18 moves Z by two turns beside one of X: not the same orientation, but taken.
        {"two turns of z beside one of x", {360, 0, 720}, {0, 0, 0}, {360, 0, 720}, true},
        {"a large step without a nearer form", {0, 0, 0}, {100, 0, 0}, {100, 0, 0}, false},
        {"exactly 90 is looked at, no form is nearer", {0, 0, 0}, {90, 0, 0}, {90, 0, 0}, false},
        {"half a turn: the first of equals is not strictly nearer",
         {0, 0, 0},
         {180, 0, 0},
         {180, 0, 0},
         false},
    };

    for (const auto& c : cases) {
        Triples triples;
        triples.Add(c.Former.X, c.Former.Y, c.Former.Z);
        triples.Add(c.Current.X, c.Current.Y, c.Current.Z);
        EXPECT_EQ(triples.Filter(), c.HasChanged) << c.Name;
        EXPECT_EQ(triples.X[1], c.Filtered.X) << c.Name;
        EXPECT_EQ(triples.Y[1], c.Filtered.Y) << c.Name;
        EXPECT_EQ(triples.Z[1], c.Filtered.Z) << c.Name;
    }
}

TEST(FilterEulerTriple, LeavesShortAndConstantLists)
{
    Triples empty;
    EXPECT_FALSE(empty.Filter());
    Triples one;
    one.Add(725, 0, 0);
    EXPECT_FALSE(one.Filter());
    Triples constant;
    for (int i = 0; i < 3; ++i)
        constant.Add(725, -900, 300);
    const Triples before = constant;
    EXPECT_FALSE(constant.Filter());
    EXPECT_EQ(constant, before);
}

TEST(FilterEulerTriple, ChangesRunOnThroughTheList)
{
    Triples triples;
    for (int i = 0; i < 100; ++i)
        triples.Add(std::remainder(17.0f * static_cast<float>(i), 360.0f), 0, 0);
    EXPECT_TRUE(triples.Filter());
    for (int i = 0; i < 100; ++i)
        EXPECT_FLOAT_EQ(triples.X[static_cast<std::size_t>(i)], 17.0f * static_cast<float>(i)) << i;
    EXPECT_FALSE(triples.Filter()) << "a filtered list stays";
}

TEST(FilterEulerTriple, LeavesSamplesThatAreNotNumbers)
{
    Triples triples;
    triples.Add(0, 0, 0);
    triples.Add(std::numeric_limits<float>::quiet_NaN(), 300, 0);
    triples.Add(300, 0, 0);
    EXPECT_FALSE(triples.Filter());
    EXPECT_EQ(triples.Y[1], 300.0f);
    EXPECT_EQ(triples.X[2], 300.0f);
}

/// The forms as they were written down, one text of three terms each.
constexpr const char* Table[75] = {
    "x+360 y z",          "x y+360 z",          "x y z+360",          "x-360 y z",
    "x y-360 z",          "x y z-360",          "x+360 y+360 z",      "x y+360 z+360",
    "x+360 y z+360",      "x-360 y-360 z",      "x y-360 z-360",      "x-360 y z-360",
    "x-360 y+360 z+360",  "x+360 y-360 z+360",  "x+360 y+360 z-360",  "x-360 y-360 z+360",
    "x+360 y-360 z-360",  "x-360 y+360 z-360",  "x+360 y z+720",      "x+180 180-y z+180",
    "x-180 180-y z+180",  "x+180 180-y z-180",  "x-180 -180-y z-180", "x-180 180-y z-180",
    "x+180 -180-y z-180", "x-180 -180-y z+180", "x+180 -180-y z+180", "x-180 -180-y z-180",
    "x+180 540-y z+540",  "x+540 180-y z+540",  "x+540 540-y z+180",  "x+180 180-y z+540",
    "x+540 180-y z+180",  "x+180 540-y z+180",  "x-180 540-y z+540",  "x-540 180-y z+540",
    "x-540 540-y z+180",  "x-180 180-y z+540",  "x-540 180-y z+180",  "x-180 540-y z+180",
    "x+180 -540-y z-540", "x+540 -180-y z-540", "x+540 -540-y z-180", "x+180 -180-y z-540",
    "x+540 -180-y z-180", "x+180 -540-y z-180", "x+180 540-y z-540",  "x+540 180-y z-540",
    "x+540 540-y z-180",  "x+180 180-y z-540",  "x+540 180-y z-180",  "x+180 540-y z-180",
    "x-180 -540-y z-540", "x-540 -180-y z-540", "x-540 -540-y z-180", "x-180 -180-y z-540",
    "x-540 -180-y z-180", "x-180 -540-y z-180", "x-180 540-y z-540",  "x-540 180-y z-540",
    "x-540 540-y z-180",  "x-180 180-y z-540",  "x-540 180-y z-180",  "x-180 540-y z-180",
    "x+180 -540-y z-540", "x+540 -180-y z-540", "x+540 -540-y z-180", "x+180 -180-y z-540",
    "x+540 -180-y z-180", "x+180 -540-y z-180", "x+540 540-y z+540",  "x-540 540-y z+540",
    "x+540 -540-y z-540", "x-540 540-y z-540",  "x+540 -540-y z-540",
};

/// "x", "x+360", "180-y": the value of such a term.
float Term(const std::string& term, float value)
{
    const std::size_t letter = term.find_first_of("xyz");
    if (letter != 0)
        return std::stof(term.substr(0, letter - 1)) - value; // the last character is the minus
    return term.size() == 1 ? value : value + std::stof(term.substr(1));
}

std::array<float, 3> Form(const char* row, const std::array<float, 3>& angles)
{
    std::istringstream terms(row);
    std::array<float, 3> form{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        std::string term;
        terms >> term;
        form[axis] = Term(term, angles[axis]);
    }
    return form;
}

float Distance(const std::array<float, 3>& a, const std::array<float, 3>& b)
{
    return std::abs(a[1] - b[1]) + std::abs(a[0] - b[0]) + std::abs(a[2] - b[2]);
}

bool FilterByTable(std::vector<std::array<float, 3>>& triples)
{
    bool any = false;
    for (int pass = 0; pass < 8; ++pass) {
        bool changed = false;
        for (std::size_t i = 1; i < triples.size(); ++i) {
            const auto former = triples[i - 1];
            const auto current = triples[i];
            if (std::abs(current[0] - former[0]) < 90 && std::abs(current[1] - former[1]) < 90 &&
                std::abs(current[2] - former[2]) < 90)
                continue;
            float best = Distance(current, former);
            for (const char* row : Table) {
                const auto candidate = Form(row, current);
                if (Distance(candidate, former) < best) {
                    best = Distance(candidate, former);
                    triples[i] = candidate;
                    changed = true;
                }
            }
        }
        if (!changed)
            break;
        any = true;
    }
    return any;
}

TEST(FilterEulerTriple, EqualsTheTableOnRandomLists)
{
    std::mt19937 random(41);
    std::uniform_real_distribution<float> angle(-900.0f, 900.0f);
    std::uniform_int_distribution<int> quarter(-12, 12);
    for (int list = 0; list < 150; ++list) {
        Triples triples;
        std::vector<std::array<float, 3>> literal;
        for (int i = 0; i < 10; ++i) {
            std::array<float, 3> sample{};
            for (float& value : sample) // every other list has many equal distances
                value = list % 2 == 0 ? angle(random) : static_cast<float>(45 * quarter(random));
            triples.Add(sample[0], sample[1], sample[2]);
            literal.push_back(sample);
        }
        EXPECT_EQ(triples.Filter(), FilterByTable(literal)) << "seed 41, list " << list;
        for (std::size_t i = 0; i < literal.size(); ++i)
            ASSERT_EQ((std::array{triples.X[i], triples.Y[i], triples.Z[i]}), literal[i])
                << "seed 41, list " << list << ", sample " << i;
    }
}

/// A turning object, read from matrices as the exporter does, comes out without jumps.
TEST(FilterEulerTriple, KeepsTheOrientation)
{
    Triples triples;
    std::vector<Matrix44> matrices;
    for (int i = 0; i < 400; ++i) {
        const float t = static_cast<float>(i);
        matrices.push_back(ComposeMatrix({{1, 1, 1}, {3.0f * t, 5.0f * t, 0.7f * t}, {}}));
        const Vector3 angles = DecomposeMatrix(matrices.back()).Rotate;
        triples.Add(angles.X, angles.Y, angles.Z);
    }
    triples.Filter();
    for (std::size_t i = 0; i < matrices.size(); ++i) {
        const Matrix44 filtered = ComposeMatrix({{1, 1, 1}, {triples.X[i], triples.Y[i], triples.Z[i]}, {}});
        for (std::size_t k = 0; k < 16; ++k)
            ASSERT_NEAR(filtered.M[k], matrices[i].M[k], 2e-3f) << "sample " << i << ", element " << k;
        if (i > 0) {
            EXPECT_LT(std::abs(triples.Y[i] - triples.Y[i - 1]), 90.0f) << i;
        }
    }
}

} // namespace
} // namespace tq4x
