#include "collect/CollectorKey.h"

#include "support/CollectRun.h"

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;

TEST(CollectorKey, RisesWithTheObjectThenItsInstancesThenTheFile)
{
    const CollectorKey keys[] = {
        {.ObjectID = 1},
        {.ObjectID = 1, .FileName = "a"},
        {.ObjectID = 1, .FileName = "b"},
        {.ObjectID = 1, .InstanceIDs = {2}},
        {.ObjectID = 1, .InstanceIDs = {2, 1}},
        {.ObjectID = 1, .InstanceIDs = {2, 3}},
        {.ObjectID = 1, .InstanceIDs = {3}},
        {.ObjectID = 2},
        {.ObjectID = 4294967295u, .InstanceIDs = {4294967295u}, .FileName = "z"},
        {.IsAmbientLight = true},
    };

    for (std::size_t i = 0; i < std::size(keys); ++i)
        for (std::size_t j = 0; j < std::size(keys); ++j) {
            EXPECT_EQ(keys[i] < keys[j], i < j) << i << " " << j;
            EXPECT_EQ(keys[i] == keys[j], i == j) << i << " " << j;
        }
}

TEST(CollectorKey, CollectorsStandInTheOrderInWhichTheirObjectsWereMade)
{
    SceneBuilder scene;
    const SceneNode early = scene.Null("early");
    const SceneNode master = scene.Model("master");
    const SceneNode part = scene.Null("part", master);
    const SceneNode firstCopy = scene.Instance("first copy", master);
    const SceneNode secondCopy = scene.Instance("second copy", master);
    const SceneNode late = scene.Null("late", early);
    const CollectRun run({}, CollectRun::Until::Walk);
    std::vector<const ExportBase*> order;
    for (const auto& [key, collector] : run.Context.Collectors)
        order.push_back(collector.get());
    ASSERT_EQ(order.back()->GetKind(), CollectorKind::AmbientLight);
    order.pop_back();
    EXPECT_THAT(order, ElementsAre(run.Collector(early), run.Collector(master), run.Collector(part),
                                   run.Collector(part, firstCopy), run.Collector(part, secondCopy),
                                   run.Collector(firstCopy), run.Collector(secondCopy), run.Collector(late)));
}

} // namespace
} // namespace tq4x::test
