// What an unprivileged account meets: refusals with the Windows codes, nothing changed. The
// native tests run as root, where every refusal would be waived: the cases then run in a child
// process that has dropped to the account "nobody".

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <string>
#include <vector>

#include "file_manager/scratch_folder.h"
#include "foundation/date.h"
#include "foundation/error_codes.h"

namespace slib {
namespace test {
namespace {

using UnprivilegedTest = ScratchTest;

bool HasPartial(const std::map<std::u16string, std::string>& tree) {
    for (const auto& [name, content] : tree) {
        if (name.find(u".partial") != std::u16string::npos) {
            return true;
        }
    }
    return false;
}

// Each action's FailureOf, run by an unprivileged account: this process when it is one, else a
// child that drops to "nobody" first. Empty when no unprivileged account is at hand.
std::optional<std::vector<std::string>> FailuresAsUnprivileged(
    const std::vector<std::function<void()>>& actions) {
    const auto run = [&] {
        std::string out;
        for (const auto& action : actions) {
            out += FailureOf(action) + "\n";
        }
        return out;
    };
    std::string text;
    if (::geteuid() != 0) {
        text = run();
    } else {
        const passwd* nobody = ::getpwnam("nobody");
        int channel[2];
        if (nobody == nullptr || nobody->pw_uid == 0 || ::pipe(channel) != 0) {
            return std::nullopt;
        }
        const uid_t uid = nobody->pw_uid;
        const gid_t gid = nobody->pw_gid;
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(channel[0]);
            if (::setgroups(0, nullptr) != 0 || ::setgid(gid) != 0 || ::setuid(uid) != 0) {
                ::_exit(2);
            }
            const std::string out = run();
            const bool written =
                ::write(channel[1], out.data(), out.size()) == static_cast<ssize_t>(out.size());
            ::_exit(written ? 0 : 3);
        }
        ::close(channel[1]);
        char buffer[4096];
        ssize_t got = 0;
        while ((got = ::read(channel[0], buffer, sizeof(buffer))) > 0) {
            text.append(buffer, static_cast<size_t>(got));
        }
        ::close(channel[0]);
        int status = 0;
        ::waitpid(child, &status, 0);
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            return std::vector<std::string>{"child failed: " + std::to_string(status)};
        }
    }
    std::vector<std::string> failures;
    for (size_t start = 0, end; (end = text.find('\n', start)) != std::string::npos;
         start = end + 1) {
        failures.push_back(text.substr(start, end - start));
    }
    return failures;
}

TEST_F(UnprivilegedTest, RefusalsCarryTheWindowsCodesAndChangeNothing) {
    // The scratch folder belongs to root when the tests run as root: "nobody" may look, not write.
    ASSERT_EQ(::chmod(Narrow(root_).c_str(), 0755), 0);
    writeFile(u"theirs.txt", "keep");
    makeFolder(u"box");
    ASSERT_EQ(::chmod(Narrow(path(u"theirs.txt")).c_str(), 0644), 0);
    const std::string denied = "-3200 ";
    const struct {
        const char* name;
        std::function<void()> action;
        std::string failure;
    } cases[] = {
        {"a right already there is no change",
         [&] { manager_.setEveryoneRights(at(u"theirs.txt"), 4); }, ""},
        {"a missing right needs the owner",
         [&] { manager_.setEveryoneRights(at(u"theirs.txt"), 2); },
         denied + "Cannot set new everyone rights"},
        {"giving a file away", [&] { manager_.setOwner(at(u"theirs.txt"), String(u"nobody")); },
         denied + "Cannot change owner of item"},
        {"deleting in a folder of another's", [&] { manager_.deleteItem(at(u"theirs.txt")); },
         denied + "Cannot delete item"},
        {"moving out of it", [&] { manager_.moveItem(at(u"theirs.txt"), at(u"box")); },
         denied + "Cannot move item"},
        {"copying into it", [&] { manager_.copyItem(at(u"theirs.txt"), at(u"box")); },
         denied + "Cannot copy item"},
        {"creating in it", [&] { manager_.createFile(at(u"new.txt"), false); },
         denied + "Cannot create file"},
        {"dating another's file",
         [&] {
             manager_.setAttribute(at(u"theirs.txt"), AttributeId::kModified, Date(63000000000, 0));
         },
         denied + "Cannot modify file modification date"},
    };
    const auto before = snapshot();
    std::vector<std::function<void()>> actions;
    for (const auto& c : cases) {
        actions.push_back(c.action);
    }
    const auto failures = FailuresAsUnprivileged(actions);
    if (!failures) {
        GTEST_SKIP() << "running as root with no account \"nobody\" to drop to";
    }
    ASSERT_EQ(failures->size(), std::size(cases)) << (failures->empty() ? "" : failures->front());
    for (size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ((*failures)[i], cases[i].failure) << cases[i].name;
    }
    EXPECT_EQ(snapshot(), before);
    struct stat info {};
    ASSERT_EQ(::stat(Narrow(path(u"theirs.txt")).c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0644u);
    EXPECT_EQ(info.st_uid, ::geteuid());
}

TEST_F(UnprivilegedTest, AReadOnlyFolderMergesIntoAFolderOfItsNameAndIsDeletedByItsOwner) {
    // Everything here is the unprivileged account's own, so only the modes can stand in the way.
    makeFolder(u"own");
    makeFolder(u"own\\ro");
    writeFile(u"own\\ro\\new.txt", "new");
    makeFolder(u"own\\box");
    makeFolder(u"own\\box\\ro");
    writeFile(u"own\\box\\ro\\kept.txt", "kept");
    const passwd* nobody = ::getpwnam("nobody");
    if (::geteuid() == 0 && nobody != nullptr) {
        for (const std::u16string item : {u"own", u"own\\ro", u"own\\ro\\new.txt", u"own\\box",
                                          u"own\\box\\ro", u"own\\box\\ro\\kept.txt"}) {
            ASSERT_EQ(::chown(Narrow(path(item)).c_str(), nobody->pw_uid, nobody->pw_gid), 0);
        }
    }
    ASSERT_EQ(::chmod(Narrow(path(u"own\\ro")).c_str(), 0555), 0);
    // Then the owner deletes it, as Windows deletes read-only items.
    const auto failures =
        FailuresAsUnprivileged({[&] { manager_.copyItem(at(u"own\\ro"), at(u"own\\box")); },
                                [&] { manager_.deleteItem(at(u"own\\ro")); }});
    if (!failures) {
        GTEST_SKIP() << "running as root with no account \"nobody\" to drop to";
    }
    EXPECT_EQ(*failures, (std::vector<std::string>{"", ""}));
    EXPECT_FALSE(exists(u"own\\ro"));
    EXPECT_EQ(readFile(u"own\\box\\ro\\new.txt"), "new");
    EXPECT_EQ(readFile(u"own\\box\\ro\\kept.txt"), "kept");
    EXPECT_FALSE(HasPartial(snapshot(u"own\\box")));
}

}  // namespace
}  // namespace test
}  // namespace slib
