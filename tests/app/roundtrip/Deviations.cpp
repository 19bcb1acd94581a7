#include "Deviations.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <deque>

namespace tq4x::test
{
namespace
{

constexpr int MostFailures = 8; // of one scene; a broken stream has thousands

struct Table
{
    std::deque<Deviation> Rows; ///< stay where they are
    std::string Scene;
    int Failures = 0;
};

Table& TheTable()
{
    static Table table;
    return table;
}

/// Prints the table when all tests are done.
class TablePrinter : public testing::Environment
{
public:
    void TearDown() override
    {
        std::printf("\n%-28s %10s %11s %11s %6s  %s\n", "quantity", "compared", "deviation", "bound", "ratio",
                    "worst in");
        for (const Deviation& row : TheTable().Rows)
            if (row.Count > 0)
                std::printf("%-28s %10zu %11.3g %11.3g %6.2f  %s, %s\n", row.Quantity.c_str(), row.Count,
                            row.Worst, row.Bound, row.Ratio, row.Scene.c_str(), row.Place.c_str());
    }
};

const testing::Environment* const Printer = testing::AddGlobalTestEnvironment(new TablePrinter);

double RatioOf(double deviation, double bound)
{
    if (deviation == 0.0)
        return 0.0;
    return bound > 0.0 ? deviation / bound : std::numeric_limits<double>::infinity();
}

} // namespace

Deviation& DeviationOf(const std::string& quantity)
{
    for (Deviation& row : TheTable().Rows)
        if (row.Quantity == quantity)
            return row;
    TheTable().Rows.push_back({.Quantity = quantity, .Scene = {}, .Place = {}});
    return TheTable().Rows.back();
}

void SetSceneName(const std::string& name)
{
    TheTable().Scene = name;
    TheTable().Failures = 0;
}

const std::string& SceneName()
{
    return TheTable().Scene;
}

bool HasFailures()
{
    return TheTable().Failures > 0;
}

bool Check(Deviation& row, double deviation, double bound, const std::string& place)
{
    const bool isWithin = deviation <= bound; // false for numbers that are none
    const double ratio = isWithin ? RatioOf(deviation, bound) : std::max(RatioOf(deviation, bound), 1.0);
    ++row.Count;
    if (!(ratio <= row.Ratio)) {
        row.Ratio = ratio;
        row.Worst = deviation;
        row.Bound = bound;
        row.Scene = TheTable().Scene;
        row.Place = place;
    }
    if (!isWithin && ++TheTable().Failures <= MostFailures)
        ADD_FAILURE() << TheTable().Scene << ": " << row.Quantity << " of " << place << " is off by "
                      << deviation << ", allowed are " << bound;
    return isWithin;
}

} // namespace tq4x::test
