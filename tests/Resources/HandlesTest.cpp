#include "Platform/Resources/Handles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace {

TEST(Handles, AreResizedKeepingTheirBytesAndZeroWhatIsNew) {
    const Handle handle = NewHandle(4'000);
    std::fill_n(*handle, 4'000, 'x');
    SetHandleSize(handle, 3);
    SetHandleSize(handle, 4'000);
    EXPECT_EQ(std::string(*handle, 4'000), "xxx" + std::string(3'997, '\0'));
    SetHandleSize(handle, 0);
    EXPECT_EQ(GetHandleSize(handle), 0);
    EXPECT_NE(*handle, nullptr);
    SetHandleSize(handle, 2);
    EXPECT_EQ(std::string(*handle, 2), std::string(2, '\0'));
    // A 32-bit process may well have the largest block.
    for (const Size impossible : {Size{-1}, sizeof(Size) == 4 ? Size{-2} : std::numeric_limits<Size>::max()}) {
        SetHandleSize(handle, impossible);
        EXPECT_EQ(GetHandleSize(handle), 2);
        EXPECT_EQ(NewHandle(impossible), nullptr);
    }
    DisposeHandle(handle);
}

TEST(Handles, StayWhereTheyAreWhileLocked) {
    const Handle handle = NewHandle(8);
    const char* const block = *handle;
    HLock(handle);
    SetHandleSize(handle, 1'000'000);
    EXPECT_EQ(GetHandleSize(handle), 8);
    SetHandleSize(handle, 4);
    EXPECT_EQ(GetHandleSize(handle), 4);
    EXPECT_EQ(*handle, block);
    HUnlock(handle);
    SetHandleSize(handle, 1'000'000);
    EXPECT_EQ(GetHandleSize(handle), 1'000'000);
    DisposeHandle(handle);
}

TEST(Handles, WhatIsNoHandleIsLeftAlone) {
    std::vector<Handle> handles(1000);
    std::generate(handles.begin(), handles.end(), [] { return NewHandle(1); });
    std::for_each(handles.begin(), handles.end(), DisposeHandle);
    char* block = nullptr;
    handles.insert(handles.end(), {nullptr, &block, reinterpret_cast<Handle>(1), handles[0] + 1, handles[0] + 100'000});
    for (const Handle handle : handles) {
        SetHandleSize(handle, 10);
        HLock(handle);
        HUnlock(handle);
        DisposeHandle(handle);
        EXPECT_EQ(GetHandleSize(handle), 0);
    }
}

}  // namespace
