#include "toolkit/support/Shutdown.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

TEST(Shutdown, HigherPriorityFirstThenInOrderAdded)
{
    ShutdownSequence sequence;
    std::string order;
    sequence.add([&] { order += 'c'; }, 0);
    sequence.add([&] { order += 'a'; }, 100);
    sequence.add([&] { order += 'd'; }, 0);
    sequence.add([&] { order += 'b'; }, 50);
    sequence.add([&] { order += 'e'; }, -10);

    EXPECT_EQ(sequence.run(ShutdownSequence::normalExit), 5u);
    EXPECT_EQ(order, "abcde");
    // Each runs once: a second run finds nothing.
    EXPECT_EQ(sequence.run(ShutdownSequence::normalExit), 0u);
    EXPECT_EQ(order, "abcde");
}

TEST(Shutdown, CallbackAddedDuringTheRunTakesItsPlaceByPriority)
{
    ShutdownSequence sequence;
    std::string order;
    sequence.add(
        [&] {
            order += 'a';
            sequence.add([&] { order += 'b'; }, 60); // above the pending 'c': runs next
            sequence.add([&] { order += 'd'; }, 0); // below it: runs after
        },
        100);
    sequence.add([&] { order += 'c'; }, 50);

    EXPECT_EQ(sequence.run(ShutdownSequence::normalExit), 4u);
    EXPECT_EQ(order, "abcd");
    EXPECT_EQ(sequence.numPending(), 0u);
}

TEST(Shutdown, RemovedCallbackDoesNotRunAndRemovalAnswersOnce)
{
    ShutdownSequence sequence;
    int runs = 0;
    const auto gone = sequence.add([&] { runs += 100; }, 5);
    const auto kept = sequence.add([&] { ++runs; }, 5);
    EXPECT_TRUE(sequence.remove(gone));
    EXPECT_FALSE(sequence.remove(gone));
    sequence.run(ShutdownSequence::normalExit);
    EXPECT_EQ(runs, 1);
    EXPECT_FALSE(sequence.remove(kept)); // already ran
}

TEST(Shutdown, NestedRunAndThrowingCallbackDoNotStopTheSequence)
{
    ShutdownSequence sequence;
    std::string order;
    size_t nestedRan = 99;
    sequence.add(
        [&] {
            nestedRan = sequence.run(ShutdownSequence::normalExit);
            order += 'a';
        },
        3);
    sequence.add([](ShutdownSequence::eExitType) { throw std::runtime_error("release failed"); }, 2);
    sequence.add(
        [&](ShutdownSequence::eExitType type) { order += type == ShutdownSequence::abnormalExit ? 'x' : 'n'; }, 1);

    EXPECT_EQ(sequence.run(ShutdownSequence::abnormalExit), 3u);
    EXPECT_EQ(nestedRan, 0u);
    EXPECT_EQ(order, "ax");
    EXPECT_FALSE(sequence.isRunning());
}
