#include "pipeline/NameRegistory.h"

namespace tq4x
{
namespace
{

TEST(NameRegistory, LaterUsesGetTheirNumber)
{
    NameRegistory names;
    EXPECT_EQ(names.GetUniqueName("a"), "a");
    EXPECT_EQ(names.GetUniqueName("a"), "a_1");
    EXPECT_EQ(names.GetUniqueName("a"), "a_2");
    EXPECT_EQ(names.GetUniqueName("b"), "b");
}

TEST(NameRegistory, NamesWithASuffixAreNotReserved)
{
    NameRegistory names;
    EXPECT_EQ(names.GetUniqueName("a"), "a");
    EXPECT_EQ(names.GetUniqueName("a"), "a_1");
    EXPECT_EQ(names.GetUniqueName("a_1"), "a_1");
    EXPECT_EQ(names.GetUniqueName("a_1"), "a_1_1");
}

TEST(NameRegistory, CaseCountsAndTheEmptyNameIsAName)
{
    NameRegistory names;
    EXPECT_EQ(names.GetUniqueName("a"), "a");
    EXPECT_EQ(names.GetUniqueName("A"), "A");
    EXPECT_EQ(names.GetUniqueName(""), "");
    EXPECT_EQ(names.GetUniqueName(""), "_1");
}

} // namespace
} // namespace tq4x
