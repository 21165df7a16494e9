// The thread error mode itself: the caller's own bits stay, and the mode it had comes back.
#include <gtest/gtest.h>

#include <objbase.h>
#include <windows.h>

#include "foundation/error_boxes.h"
#include "foundation/windows/single_threaded_apartment.h"

namespace {

DWORD ThreadMode() {
    return GetThreadErrorMode();
}

TEST(NoErrorBoxesWindows, AddsFailCriticalErrorsToTheCallersModeAndRestoresItExactly) {
    const DWORD original = ThreadMode();
    for (const DWORD callers : {DWORD{0}, DWORD{SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX},
                                DWORD{SEM_FAILCRITICALERRORS}}) {
        ASSERT_TRUE(SetThreadErrorMode(callers, nullptr));
        {
            const slib::NoErrorBoxes noBoxes;
            EXPECT_EQ(ThreadMode(), callers | SEM_FAILCRITICALERRORS) << callers;
        }
        EXPECT_EQ(ThreadMode(), callers);
    }
    SetThreadErrorMode(original, nullptr);
}

// Dialogs run on a thread of their own when the caller's apartment cannot host them.
TEST(NoErrorBoxesWindows, TheApartmentThreadRunsWithout) {
    DWORD seen = 0;
    HRESULT initialised = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    ASSERT_TRUE(SUCCEEDED(initialised));
    slib::RunInSingleThreadedApartment([&] { seen = ThreadMode(); });
    CoUninitialize();
    EXPECT_NE(seen & SEM_FAILCRITICALERRORS, 0u);
    EXPECT_EQ(ThreadMode() & SEM_FAILCRITICALERRORS, 0u);
}

}  // namespace
