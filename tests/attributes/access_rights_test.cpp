// The rights value and the ACL evaluation used where the system cannot evaluate an ACL itself.
#include <gtest/gtest.h>

#include "foundation/access_rights.h"

namespace slib {
namespace {

using Kind = AccessEntry::Kind;

const SidBytes kUser{1, 5, 0, 0, 0, 0, 0, 5, 21, 0, 0, 0, 0xe8, 3, 0, 0};
const SidBytes kOther{1, 5, 0, 0, 0, 0, 0, 5, 21, 0, 0, 0, 0xe9, 3, 0, 0};
constexpr uint32_t kFullControl = 0x001F01FF;  // FILE_ALL_ACCESS
constexpr uint32_t kRead = AccessRight::kRead, kWrite = AccessRight::kWrite;
constexpr uint32_t kExecute = AccessRight::kExecute;

TEST(AccessRights, BitsStandForExactlyTheThreeChosenRights) {
    const uint32_t cases[][2] = {
        {0, 0},
        {kRead, 4},
        {kWrite, 2},
        {kExecute, 1},
        {kRead | kWrite | kExecute, 7},
        // Full control holds READ_CONTROL and WRITE_OWNER, not the GENERIC_EXECUTE bit; the
        // file data rights (read, write, execute) count for nothing.
        {kFullControl, 6},
        {0x00000001 | 0x00000002 | 0x00000020, 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(RightsFromAccessMask(c[0]), c[1]) << std::hex << c[0];
        EXPECT_EQ(RightsFromAccessMask(AccessMaskAddingRights(0, c[1])), c[1]);
        EXPECT_EQ(AccessMaskAddingRights(c[0], 0), c[0]) << "a clear bit removes nothing";
    }
    EXPECT_EQ(AccessMaskAddingRights(kWrite | 0x1, 4), kRead | kWrite | 0x1);
}

TEST(AccessRights, EntriesCountInOrderForTheTrusteesSids) {
    const SidBytes& everyone = EveryoneSid();
    const struct {
        const char* name;
        std::vector<AccessEntry> entries;
        uint32_t forUser, forEveryone;
    } cases[] = {
        {"nothing granted", {}, 0, 0},
        {"grants add up",
         {{Kind::kAllowed, kRead, false, kUser}, {Kind::kAllowed, kWrite, false, everyone}},
         kRead | kWrite,
         kWrite},
        {"an earlier deny wins",
         {{Kind::kDenied, kWrite, false, everyone}, {Kind::kAllowed, kRead | kWrite, false, kUser}},
         kRead,
         0},
        {"a later deny takes nothing back",
         {{Kind::kAllowed, kRead | kWrite, false, kUser}, {Kind::kDenied, kWrite, false, kUser}},
         kRead | kWrite,
         0},
        {"other accounts, inherit-only and other kinds do not count",
         {{Kind::kAllowed, kFullControl, false, kOther},
          {Kind::kAllowed, kWrite, true, kUser},
          {Kind::kDenied, kRead, true, everyone},
          {Kind::kOther, kWrite, false, kUser},
          {Kind::kAllowed, kRead, false, everyone}},
         kRead,
         kRead},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(EffectiveAccessMask(c.entries, {kUser, everyone}), c.forUser) << c.name;
        EXPECT_EQ(EffectiveAccessMask(c.entries, {everyone}), c.forEveryone) << c.name;
    }
    EXPECT_EQ(everyone, (SidBytes{1, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0}));  // S-1-1-0
}

}  // namespace
}  // namespace slib
