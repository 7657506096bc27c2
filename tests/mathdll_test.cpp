// The library frame: load entry, library object, release stamp, helpers.
#include <zqmath.h>

#include "frame/frame_internal.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <utility>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

using namespace zq::detail;

namespace {

// Brings the process attach count back to what it was when the test started.
class EntryRoutineTest : public ::testing::Test {
protected:
    void SetUp() override { savedProcessCount_ = ProcessAttachCount(); }
    void TearDown() override {
        FailExtensionModuleInit(false);
        while (ProcessAttachCount() < savedProcessCount_) {
            EntryRoutine(nullptr, kProcessAttach, nullptr);
        }
        while (ProcessAttachCount() > savedProcessCount_) {
            EntryRoutine(nullptr, kProcessDetach, nullptr);
        }
    }
    std::int32_t savedProcessCount_ = 0;
};

} // namespace

TEST_F(EntryRoutineTest, LoadingAttachedTheLibraryOnce) {
    EXPECT_EQ(AttachMarker(), kAttachMarker);
    EXPECT_GE(ProcessAttachCount(), 1);
}

TEST_F(EntryRoutineTest, ThreadDetachTestsTheProcessCountNotTheThreadCount) {
    while (ProcessAttachCount() > 0) {
        ASSERT_EQ(EntryRoutine(nullptr, kProcessDetach, nullptr), 1);
    }
    // The marker survives process detach, so thread attach still succeeds...
    EXPECT_EQ(AttachMarker(), kAttachMarker);
    const std::int32_t threads = ThreadAttachCount();
    EXPECT_EQ(EntryRoutine(nullptr, kThreadAttach, nullptr), 1);
    EXPECT_EQ(ThreadAttachCount(), threads + 1);
    // ...while thread detach fails on the zero process count and leaves the thread count alone.
    EXPECT_EQ(EntryRoutine(nullptr, kThreadDetach, nullptr), 0);
    EXPECT_EQ(ThreadAttachCount(), threads + 1);

    ASSERT_EQ(EntryRoutine(nullptr, kProcessAttach, nullptr), 1);
    EXPECT_EQ(EntryRoutine(nullptr, kThreadDetach, nullptr), 1);
    EXPECT_EQ(ThreadAttachCount(), threads);
}

TEST_F(EntryRoutineTest, FailedInitAndUnknownReasonsChangeNothing) {
    const std::int32_t processes = ProcessAttachCount();
    FailExtensionModuleInit(true);
    EXPECT_EQ(EntryRoutine(nullptr, kProcessAttach, nullptr), 0);
    EXPECT_EQ(ProcessAttachCount(), processes);
    EXPECT_EQ(AttachMarker(), kAttachMarker);
    FailExtensionModuleInit(false);
    EXPECT_TRUE(EntryRoutine(nullptr, kProcessAttach, nullptr) == 1 &&
                ProcessAttachCount() == processes + 1);
    EXPECT_TRUE(EntryRoutine(nullptr, 77, nullptr) == 1 && ProcessAttachCount() == processes + 1);
}

TEST(BinaryPower, HighestSetBitAndNonPositiveInputs) {
    struct Case {
        int n, power, remainder, exponent;
    };
    const Case cases[] = {{0, 0, 0, -1},
                          {-7, 0, -7, -1},
                          {INT_MIN, 0, INT_MIN, -1},
                          {1073741824, 1073741824, 0, 30},
                          {INT_MAX, 1073741824, INT_MAX - 1073741824, 30}};
    for (const Case& c : cases) {
        int remainder = 12345, exponent = 12345;
        EXPECT_EQ(BinaryPower(c.n, &remainder, &exponent), c.power) << c.n;
        EXPECT_TRUE(remainder == c.remainder && exponent == c.exponent) << c.n;
    }
    for (int n = 1; n < 70000; n += 7) {
        int highest = 0, remainder = 0, exponent = 0;
        while ((n >> (highest + 1)) != 0) {
            ++highest;
        }
        ASSERT_EQ(BinaryPower(n, &remainder, &exponent), 1 << highest);
        ASSERT_TRUE(exponent == highest && remainder == n - (1 << highest)) << n;
    }
}

namespace {

/// The exported function of that plain name in the module that holds sample, or null.
void* ExportedByName(void* sample, const char* name) {
#if defined(_WIN32)
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCSTR>(sample), &module);
    return reinterpret_cast<void*>(GetProcAddress(module, name));
#else
    static_cast<void>(sample);
    return dlsym(RTLD_DEFAULT, name);
#endif
}

} // namespace

TEST(MathDLL, HelpersAreExportedUnderPlainNames) {
    const std::pair<void*, const char*> helpers[] = {
        {reinterpret_cast<void*>(&BinaryPower), "BinaryPower"},
        {reinterpret_cast<void*>(&MarkClockTime), "MarkClockTime"},
        {reinterpret_cast<void*>(&GetMarkedTime), "GetMarkedTime"}};
    for (const auto& helper : helpers) {
        EXPECT_EQ(ExportedByName(helper.first, helper.second), helper.first) << helper.second;
    }
}

TEST(MathDLL, UnbindWithoutBindIsHarmlessAndSecondBindReplacesWithoutDestroying) {
    ASSERT_EQ(CMathDLL::OnlyInstance(), nullptr);
    UnbindMathServices(0);
    UnbindMathServices(0);
    BindMathServices(nullptr);
    CMathDLL* first = CMathDLL::OnlyInstance();
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(FirstConstructionSeen());
    BindMathServices(nullptr);
    EXPECT_NE(CMathDLL::OnlyInstance(), first);
    UnbindMathServices(0);
    EXPECT_EQ(CMathDLL::OnlyInstance(), nullptr);
    delete first; // the library never frees the replaced object
}

TEST(MathDLL, DestroyingAnUnregisteredCopyClearsTheInstance) {
    BindMathServices(nullptr);
    CMathDLL* bound = CMathDLL::OnlyInstance();
    ASSERT_NE(bound, nullptr);
    {
        CMathDLL copy(*bound);
        EXPECT_EQ(CMathDLL::OnlyInstance(), bound);
        CMathDLL assigned(nullptr);
        EXPECT_EQ(CMathDLL::OnlyInstance(), &assigned);
        assigned = copy;
    }
    EXPECT_EQ(CMathDLL::OnlyInstance(), nullptr);
    delete bound;
}

TEST(MathDLL, SignatureIsTheExactStampInOneBuffer) {
    CMathDLL library(nullptr);
    char* text = library.Signature();
    EXPECT_STREQ(text, "RELEASE NOX:NOX:MOOR:3.2(00ad)\n"
                       "\\cs\\math\\inc\\mmmstd $Revision: 36 $\r\n"
                       "BUILT Oct 11 2001@13:10:01\r\n"
                       "TOUCH Thu Oct 11 13:09:24 2001\r\n");
    EXPECT_EQ(library.Signature(), text);

    // Binding formats its own copy of the stamp and leaves the shared buffer alone.
    text[0] = 'X';
    BindMathServices(nullptr);
    EXPECT_EQ(text[0], 'X');
    UnbindMathServices(0);
}

TEST(MarkedTime, GetReturnsTheLastMarkInMilliseconds) {
    const DWORD first = MarkClockTime();
    const DWORD second = MarkClockTime();
    EXPECT_EQ(GetMarkedTime(), second);
    EXPECT_LT(static_cast<DWORD>(second - first), 60000u); // milliseconds, not ticks
}
