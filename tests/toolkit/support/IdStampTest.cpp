#include "toolkit/support/IdStamp.h"

#include <gtest/gtest.h>

#include <unordered_set>
#include <vector>

using Cv::StampTable;

TEST(StampTable, ReusedSlotDoesNotReviveAnOldStamp)
{
    StampTable table;
    int a = 0;
    int b = 0;
    const IdStamp first = table.issue(&a);
    EXPECT_TRUE(table.isLive(first));
    EXPECT_EQ(table.lookup(first), &a);

    EXPECT_TRUE(table.retire(first));
    EXPECT_FALSE(table.isLive(first));
    EXPECT_EQ(table.lookup(first), nullptr);
    EXPECT_FALSE(table.retire(first)); // twice is harmless and reports it

    const IdStamp second = table.issue(&b);
    EXPECT_EQ(second.slot(), first.slot()); // the slot was reused...
    EXPECT_NE(second, first);              // ...under a new generation
    EXPECT_FALSE(table.isLive(first));
    EXPECT_TRUE(table.isLive(second));
    EXPECT_EQ(table.lookup(second), &b);
    // Retiring the old stamp again must not end the new object's life.
    EXPECT_FALSE(table.retire(first));
    EXPECT_TRUE(table.isLive(second));
    EXPECT_EQ(table.slotCount(), 1u);
}

TEST(StampTable, NullForgedAndForeignStampsAreNeverLive)
{
    StampTable table;
    EXPECT_FALSE(table.isLive(IdStamp()));
    const IdStamp s = table.issue();
    table.retire(s);
    // A free slot's current generation was never handed out.
    EXPECT_FALSE(table.isLive(IdStamp(s.slot(), s.generation() + 1)));
    EXPECT_FALSE(table.isLive(IdStamp(12345, 1)));
    EXPECT_FALSE(table.retire(IdStamp(12345, 1)));
    EXPECT_EQ(table.liveCount(), 0u);
}

TEST(StampTable, ManyObjectsKeepDistinctStampsAndCounts)
{
    StampTable table;
    std::vector<IdStamp> stamps;
    for (int i = 0; i < 1000; ++i)
        stamps.push_back(table.issue());
    for (size_t i = 0; i < stamps.size(); i += 2)
        table.retire(stamps[i]);
    EXPECT_EQ(table.liveCount(), 500u);
    for (int i = 0; i < 500; ++i)
        stamps.push_back(table.issue());
    EXPECT_EQ(table.slotCount(), 1000u); // every freed slot was reused before the table grew
    std::unordered_set<IdStamp> seen(stamps.begin(), stamps.end());
    EXPECT_EQ(seen.size(), stamps.size());
    for (size_t i = 0; i < 1000; ++i)
        EXPECT_EQ(table.isLive(stamps[i]), i % 2 == 1) << i;
}

TEST(IdStamp, PacksIntoOneIntegerAndOwnedStampsEndWithTheirOwner)
{
    const IdStamp s(7, 41);
    EXPECT_EQ(IdStamp::fromUInt64(s.asUInt64()), s);

    IdStamp kept;
    {
        int owner = 0;
        Cv::OwnedStamp stamp(&owner);
        kept = stamp;
        EXPECT_TRUE(StampTable::global().isLive(kept));
        EXPECT_EQ(StampTable::global().lookup(kept), &owner);
    }
    EXPECT_FALSE(StampTable::global().isLive(kept));
}
