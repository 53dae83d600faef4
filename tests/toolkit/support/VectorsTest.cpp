#include "toolkit/support/Vectors.h"

#include "toolkit/support/LightweightString.h"

#include <gtest/gtest.h>

#include <string>

TEST(LightweightVector, CopiesShareUntilOneIsChanged)
{
    LightweightVector<std::string> a{"one", "two"};
    LightweightVector<std::string> b = a;
    EXPECT_TRUE(a.sharesWith(b));

    b.push_back("three");
    EXPECT_FALSE(a.sharesWith(b));
    EXPECT_EQ(a.size(), 2u);
    EXPECT_EQ(b.size(), 3u);
    EXPECT_EQ(b[2], "three");

    LightweightVector<std::string> c = a;
    c.set(0, "uno");
    EXPECT_EQ(a[0], "one");
    c.removeAt(99); // out of range: ignored
    EXPECT_TRUE(c.remove("two"));
    EXPECT_FALSE(c.remove("two"));
    EXPECT_EQ(c.items(), std::vector<std::string>{"uno"});

    c.insert(0, "zero");
    c.insert(100, "end"); // past the end appends
    EXPECT_EQ(c.items(), (std::vector<std::string>{"zero", "uno", "end"}));
    EXPECT_EQ(c.indexOf("end"), 2u);
    EXPECT_EQ(c.indexOf("none"), LightweightVector<std::string>::npos);

    LightweightVector<std::string> empty;
    EXPECT_EQ(empty, LightweightVector<std::string>(std::vector<std::string>{}));
    a.clear();
    EXPECT_TRUE(a.empty());
    EXPECT_EQ(b.size(), 3u);
}

TEST(Vector, HelpersKeepOrder)
{
    Vector<int> v{5, 3, 5, 9};
    EXPECT_TRUE(v.contains(9));
    EXPECT_EQ(v.indexOf(5), 0u);
    EXPECT_TRUE(v.remove(5)); // only the first
    EXPECT_EQ(v, (Vector<int>{3, 5, 9}));
    v.removeAt(7);
    v.add(1);
    EXPECT_EQ(v, (Vector<int>{3, 5, 9, 1}));
}

TEST(VectorExt, UniquenessBulkRemovalAndMoves)
{
    VectorExt<int> v{1, 2, 3, 2, 4};
    EXPECT_EQ(v.addUnique(3), 2u);
    EXPECT_EQ(v.addUnique(7), 5u);
    EXPECT_EQ(v.removeAll(2), 2u);
    EXPECT_EQ(v, (VectorExt<int>{1, 3, 4, 7}));

    v.moveItem(0, 3);
    EXPECT_EQ(v, (VectorExt<int>{3, 4, 7, 1}));
    v.moveItem(3, 1);
    EXPECT_EQ(v, (VectorExt<int>{3, 1, 4, 7}));
    v.moveItem(0, 9); // out of range: ignored
    v.insertAt(99, 0);
    EXPECT_EQ(v, (VectorExt<int>{3, 1, 4, 7, 0}));
    EXPECT_EQ(v.indexOfIf([](int x) { return x > 3; }), 2u);
    EXPECT_EQ(v.removeIf([](int x) { return x % 2 == 1; }), 3u);
    EXPECT_EQ(v, (VectorExt<int>{4, 0}));
}
