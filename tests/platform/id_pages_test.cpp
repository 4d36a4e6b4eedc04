// The tables by id beside the containers of the standard library.
#include "platform/id_pages.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

namespace {

// Runs of neighbours, scattered ids, the invalid id and both ends of the range.
std::vector<HxDbObjectId> mixedIds() {
    std::mt19937_64 random(1);
    std::vector<HxDbObjectId> ids{HxDbObjectId(),  HxDbObjectId(-1),        HxDbObjectId(-17),
                                  HxDbObjectId(1), HxDbObjectId(INT64_MAX), HxDbObjectId(INT64_MIN)};
    for (int i = 0; i < 3000; ++i) {
        ids.emplace_back(100000 + i);
        ids.emplace_back(static_cast<std::int64_t>(random() >> 11));
    }
    std::shuffle(ids.begin(), ids.end(), random);
    return ids;
}

TEST(IdPages, HoldWhatAMapHolds) {
    IdPages<int> pages;
    std::map<HxDbObjectId, int> map;
    EXPECT_EQ(pages.find(HxDbObjectId(5)), nullptr);
    const int* early = &(pages[HxDbObjectId(7)] = 70);
    map[HxDbObjectId(7)] = 70;
    int count = 0;
    for (const HxDbObjectId id : mixedIds()) {
        pages[id] = map[id] = ++count;
    }
    for (const auto& [id, value] : map) {
        ASSERT_NE(pages.find(id), nullptr) << id.toInt();
        EXPECT_EQ(*pages.find(id), value) << id.toInt();
    }
    EXPECT_EQ(early, pages.find(HxDbObjectId(7))) << "values stay where they are";
    std::map<HxDbObjectId, int> visited;
    pages.forEach([&visited](HxDbObjectId id, int value) {
        if (value != 0) {
            visited[id] = value;
        }
    });
    EXPECT_EQ(visited, map);
    pages.clear();
    EXPECT_EQ(pages.find(HxDbObjectId(7)), nullptr);
    EXPECT_EQ(pages[HxDbObjectId(7)], 0);
}

TEST(IdMarks, TellWhatIsNew) {
    IdMarks marks{HxDbObjectId(16), HxDbObjectId(31)};
    std::set<HxDbObjectId> set{HxDbObjectId(16), HxDbObjectId(31)};
    EXPECT_FALSE(marks.contains(HxDbObjectId(17))) << "a neighbour of the same page";
    for (const HxDbObjectId id : mixedIds()) {
        EXPECT_EQ(marks.insert(id), set.insert(id).second) << id.toInt();
        EXPECT_TRUE(marks.contains(id));
    }
    EXPECT_FALSE(marks.contains(HxDbObjectId(32)));
}

}  // namespace
