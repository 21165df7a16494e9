// The rights value and the ACL evaluation used where the system cannot evaluate an ACL itself.
#include <gtest/gtest.h>

#include "foundation/access_rights.h"

namespace slib {
namespace {

using Kind = AccessEntry::Kind;

const SidBytes kUser{1, 5, 0, 0, 0, 0, 0, 5, 21, 0, 0, 0, 0xe8, 3, 0, 0};
const SidBytes kOther{1, 5, 0, 0, 0, 0, 0, 5, 21, 0, 0, 0, 0xe9, 3, 0, 0};
constexpr uint32_t kFullControl = 0x001F01FF;  // FILE_ALL_ACCESS
constexpr uint32_t kReadExecute = 0x001200A9;  // FILE_GENERIC_READ | FILE_GENERIC_EXECUTE

TEST(AccessRights, BitsMapToExactlyTheThreeChosenRights) {
    const struct {
        uint32_t mask;
        uint32_t rights;
    } cases[] = {
        {0, 0},
        {AccessRight::kRead, 4},
        {AccessRight::kWrite, 2},
        {AccessRight::kExecute, 1},
        {AccessRight::kRead | AccessRight::kWrite | AccessRight::kExecute, 7},
        // Full control holds READ_CONTROL and WRITE_OWNER but not the GENERIC_EXECUTE bit.
        {kFullControl, 6},
        // The file read and execute rights are not what "read" and "execute" stand for.
        {kReadExecute, 4},
        {0x00000001 | 0x00000002 | 0x00000020, 0},  // FILE_READ_DATA, WRITE_DATA, EXECUTE
    };
    for (const auto& c : cases) {
        EXPECT_EQ(RightsFromAccessMask(c.mask), c.rights) << std::hex << c.mask;
    }
}

TEST(AccessRights, AddingRightsNeverRemovesAny) {
    EXPECT_EQ(AccessMaskAddingRights(0, 7),
              AccessRight::kRead | AccessRight::kWrite | AccessRight::kExecute);
    EXPECT_EQ(AccessMaskAddingRights(kFullControl, 0), kFullControl);
    EXPECT_EQ(AccessMaskAddingRights(kReadExecute, 1), kReadExecute | AccessRight::kExecute);
    EXPECT_EQ(AccessMaskAddingRights(AccessRight::kWrite, 4),
              AccessRight::kWrite | AccessRight::kRead);
    // Bits beyond the three are not rights.
    EXPECT_EQ(AccessMaskAddingRights(0, 8), 0u);
}

TEST(AccessRights, EvaluatesEntriesInOrderForTheTrusteesSids) {
    const uint32_t read = AccessRight::kRead;
    const uint32_t write = AccessRight::kWrite;
    const uint32_t execute = AccessRight::kExecute;
    const SidBytes& everyone = EveryoneSid();
    const struct {
        const char* name;
        std::vector<AccessEntry> entries;
        uint32_t expected;
    } cases[] = {
        {"empty ACL grants nothing", {}, 0},
        {"allowed entries add up",
         {{Kind::kAllowed, read, false, kUser}, {Kind::kAllowed, write, false, everyone}},
         read | write},
        {"an earlier deny wins",
         {{Kind::kDenied, write, false, kUser}, {Kind::kAllowed, read | write, false, kUser}},
         read},
        {"a later deny cannot take back what was granted",
         {{Kind::kAllowed, read | write, false, kUser}, {Kind::kDenied, write, false, everyone}},
         read | write},
        {"a deny through Everyone applies to the user",
         {{Kind::kDenied, execute, false, everyone},
          {Kind::kAllowed, read | execute, false, kUser}},
         read},
        {"other accounts do not count",
         {{Kind::kAllowed, kFullControl, false, kOther}, {Kind::kAllowed, read, false, kUser}},
         read},
        {"inherit-only entries do not apply to the item",
         {{Kind::kAllowed, write, true, kUser},
          {Kind::kDenied, read, true, kUser},
          {Kind::kAllowed, read, false, kUser}},
         read},
        {"other entry kinds grant and deny nothing",
         {{Kind::kOther, write, false, kUser}, {Kind::kAllowed, read, false, kUser}},
         read},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(EffectiveAccessMask(c.entries, {kUser, everyone}), c.expected) << c.name;
    }
}

TEST(AccessRights, EveryoneAloneSeesOnlyEveryoneEntries) {
    const std::vector<AccessEntry> entries{
        {Kind::kAllowed, kFullControl, false, kUser},
        {Kind::kAllowed, kReadExecute, false, EveryoneSid()},
    };
    EXPECT_EQ(EffectiveAccessMask(entries, {EveryoneSid()}), kReadExecute);
    EXPECT_EQ(EveryoneSid(), (SidBytes{1, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0}));
}

}  // namespace
}  // namespace slib
