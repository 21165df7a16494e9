// The plug-in's own `stderr` (see src/linux_runtime/stderr_stand_in.cpp) is glibc's standard error
// stream: what the code linked with it prints goes where the process's standard error goes.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>

TEST(StderrStandIn, IsTheProcessStandardErrorStream) {
    void* glibcs = dlsym(RTLD_DEFAULT, "stderr");
    ASSERT_NE(glibcs, nullptr);
    // This program links the stand-in, so `stderr` here names it, not glibc's variable.
    EXPECT_NE(static_cast<void*>(&stderr), glibcs);
    EXPECT_EQ(stderr, *static_cast<FILE**>(glibcs));
    EXPECT_EQ(fileno(stderr), 2);
}
