// The arrays and strings that the host hands out: how they grow, how they go back, and what counts as misuse.

#include <vector>

#include <ProArray.h>
#include <ProUtil.h>
#include <gtest/gtest.h>

#include "support/host_test.h"

namespace {

using namespace sim;

using HostArrays = test::HostTest;

std::vector<int> Items(ProArray array) {
    int size = -1;
    EXPECT_EQ(ProArraySizeGet(array, &size), PRO_TK_NO_ERROR);
    return {static_cast<int*>(array), static_cast<int*>(array) + size};
}

TEST_F(HostArrays, GrowByMoving) {
    ProArray array = nullptr;
    ASSERT_EQ(ProArrayAlloc(0, sizeof(int), 1, &array), PRO_TK_NO_ERROR);
    int one = 1, two = 2, more[] = {7, 8};
    ASSERT_EQ(ProArrayObjectAdd(&array, -1, 1, &two), PRO_TK_NO_ERROR);
    const int* before = static_cast<int*>(array);
    const ProArray stale = array;
    ASSERT_EQ(ProArrayObjectAdd(&array, 0, 1, &one), PRO_TK_NO_ERROR);
    EXPECT_NE(array, stale);
    EXPECT_NE(*before, 2);  // the old place no longer holds the old element
    ASSERT_EQ(ProArrayObjectAdd(&array, 1, 2, more), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProArrayObjectAdd(&array, -1, 1, static_cast<int*>(array) + 1), PRO_TK_NO_ERROR);
    EXPECT_EQ(Items(array), (std::vector<int>{1, 7, 8, 2, 7}));
    ASSERT_EQ(ProArraySizeSet(&array, 2), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProArraySizeSet(&array, 3), PRO_TK_NO_ERROR);
    EXPECT_EQ(Items(array), (std::vector<int>{1, 7, 0}));

    int size = 0;
    EXPECT_EQ(ProArraySizeGet(stale, &size), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("has moved since"));
    EXPECT_EQ(ProArrayObjectAdd(&array, 4, 1, &one), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArrayObjectAdd(&array, -1, 0, &one), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArraySizeSet(&array, -1), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProArrayAlloc(-1, 4, 1, &array), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArrayAlloc(1, 0, 1, &array), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArrayAlloc(1 << 30, 1 << 10, 1, &array), PRO_TK_OUT_OF_MEMORY);
}

TEST_F(HostArrays, HoldManyElementsAddedOneByOne) {
    ProArray array = nullptr;
    ASSERT_EQ(ProArrayAlloc(0, sizeof(int), 1, &array), PRO_TK_NO_ERROR);
    for (int i = 0; i < 200000; ++i) ASSERT_EQ(ProArrayObjectAdd(&array, -1, 1, &i), PRO_TK_NO_ERROR);
    const std::vector<int> items = Items(array);
    ASSERT_EQ(items.size(), 200000u);
    for (int i = 0; i < 200000; ++i) ASSERT_EQ(items[static_cast<std::size_t>(i)], i);
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
}

TEST_F(HostArrays, RefuseMisuse) {
    ProArray array = nullptr, none = nullptr;
    ASSERT_EQ(ProArrayAlloc(2, sizeof(int), 1, &array), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProArrayFree(nullptr), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArrayFree(&none), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("NULL, which is no array"));
    static_cast<int*>(array)[0] = 5;
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
    EXPECT_NE(static_cast<int*>(array)[0], 5);
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("was freed"));

    int foreign[4] = {};
    ProArray wrong = foreign;
    EXPECT_EQ(ProArrayFree(&wrong), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no array of the host's"));

    ASSERT_EQ(ProArrayAlloc(2, sizeof(int), 1, &array), PRO_TK_NO_ERROR);
    static_cast<int*>(array)[2] = 1;
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
    EXPECT_TRUE(Misuse("written outside its elements"));

    ASSERT_EQ(ProArrayAlloc(1, sizeof(int), 1, &array), PRO_TK_NO_ERROR);
    EXPECT_EQ(session.report.OpenItems().size(), 1u);
    EXPECT_EQ(ProSelectionarrayFree(static_cast<ProSelection*>(array)), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("array for selection array"));
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
}

TEST_F(HostArrays, StringsGoBackTheWayTheyCame) {
    wchar_t* wide = NewHostString(session.memory, L"螺栓");
    char* text = NewHostText(session.memory, "bolt");
    char** list = NewHostTextArray(session.memory, {"a", "", "bolt"});
    EXPECT_STREQ(list[2], "bolt");
    EXPECT_STREQ(list[1], "");
    EXPECT_EQ(session.report.OpenItems().size(), 3u);
    EXPECT_EQ(ProWstringFree(reinterpret_cast<wchar_t*>(text)), PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Misuse("8-bit string for wide string"));
    EXPECT_EQ(ProStringFree(list[0]), PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Misuse("no 8-bit string of the host's"));
    EXPECT_EQ(ProStringarrayFree(list, 2), PRO_TK_NO_ERROR);
    EXPECT_TRUE(Misuse("frees 2 of 3 strings"));
    EXPECT_EQ(ProStringarrayFree(list, 3), PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Misuse("was freed"));
    EXPECT_EQ(ProWstringFree(wide), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProStringFree(text), PRO_TK_NO_ERROR);
    EXPECT_EQ(NewHostStringArray(session.memory, {}), nullptr);
}

}  // namespace
