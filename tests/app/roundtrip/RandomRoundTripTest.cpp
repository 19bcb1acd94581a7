#include "Deviations.h"
#include "RandomScene.h"
#include "RunRoundTrip.h"
#include "support/ToolInstallation.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cstdlib>
#include <cstring>

namespace tq4x::test
{
namespace
{

/// A number of the environment.
std::uint32_t NumberOf(const char* variable, std::uint32_t otherwise)
{
    const char* text = std::getenv(variable);
    std::uint32_t number = otherwise;
    if (text != nullptr)
        std::from_chars(text, text + std::strlen(text), number);
    return number;
}

void RunSeed(std::uint32_t seed)
{
    const ToolInstallation tool;
    const RandomScene scene(seed);
    RunRoundTrip("seed " + std::to_string(seed), scene.Settings(), scene.Pictures());
}

/// `TQ4X_ROUND_TRIP_SEEDS` says how many scenes, `TQ4X_ROUND_TRIP_FIRST` with which seed to begin.
TEST(RandomRoundTrip, FilesHoldTheScenes)
{
    const std::uint32_t first = NumberOf("TQ4X_ROUND_TRIP_FIRST", 1);
    const std::uint32_t count = NumberOf("TQ4X_ROUND_TRIP_SEEDS", 40);
    for (std::uint32_t seed = first; seed < first + count; ++seed)
        RunSeed(seed);
}

/// A comparison that no longer takes place would pass unseen.
TEST(RandomRoundTrip, EveryQuantityIsCompared)
{
    for (std::uint32_t seed = 1; seed <= 15; ++seed)
        RunSeed(seed);
    for (const char* quantity : {"node hierarchy",
                                 "node local axes",
                                 "node local place",
                                 "bind pose world axes",
                                 "bind pose world place",
                                 "shape form",
                                 "texture coordinate",
                                 "triangle",
                                 "position",
                                 "normal",
                                 "influences",
                                 "weight",
                                 "bounding box",
                                 "user attribute",
                                 "vertex colour",
                                 "material words",
                                 "material colour",
                                 "texture transform",
                                 "highlight table",
                                 "texture form",
                                 "pixel",
                                 "pixel bits kept",
                                 "moving local axes",
                                 "moving local place",
                                 "moving world axes",
                                 "moving world place",
                                 "animation form",
                                 "material colour moving",
                                 "texture transform moving",
                                 "changing picture",
                                 "visibility",
                                 "camera words",
                                 "light words",
                                 "ambient light",
                                 "spot cone",
                                 "light",
                                 "light moving",
                                 "camera",
                                 "camera moving"})
        EXPECT_GT(DeviationOf(quantity).Count, 0u) << quantity;
}

/// Scaled nodes turned by a right angle about Y, whose sine is off 1 by its last bit.
TEST(RandomRoundTrip, FilesHoldScenesOfNodesAtThePole)
{
    for (const std::uint32_t seed : {65u, 95u, 116u, 219u, 257u, 270u, 287u})
        RunSeed(seed);
}

} // namespace
} // namespace tq4x::test
