#include "foundation/unique_resource.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<int> closed;
void CloseFake(int value) {
    closed.push_back(value);
}
int MinusOne() {
    return -1;
}

// -1 is the failure value of this kind, as INVALID_HANDLE_VALUE is of a file handle: 0 is a
// real resource and must be closed.
using Owner = slib::UniqueResource<int, &CloseFake, &MinusOne>;

class UniqueResourceTest : public ::testing::Test {
  protected:
    void SetUp() override { closed.clear(); }
};

TEST_F(UniqueResourceTest, ClosesEachResourceExactlyOnceOnEveryPath) {
    {
        Owner zero(0);
        Owner failed(-1);
        EXPECT_TRUE(zero.valid());
        EXPECT_FALSE(failed.valid());
    }
    EXPECT_EQ(closed, std::vector<int>{0});

    closed.clear();
    {
        Owner a(1);
        Owner b(std::move(a));
        EXPECT_FALSE(a.valid());
        Owner c(2);
        c = std::move(b);  // 2 closes now, 1 at scope end
        EXPECT_EQ(closed, std::vector<int>{2});
        c.reset(3);
        EXPECT_EQ(c.release(), 3);
        *c.put() = 4;
    }
    EXPECT_EQ(closed, (std::vector<int>{2, 1, 4}));
}

TEST_F(UniqueResourceTest, ThrowingScopeStillCloses) {
    try {
        Owner held(7);
        throw 1;
    } catch (int) {
    }
    EXPECT_EQ(closed, std::vector<int>{7});
}

}  // namespace
