// A delete that worked is reported as worked: a file another program holds open with delete
// sharing goes as soon as that program lets go, and a delete or move that left it so is done.
#include <windows.h>

#include <iostream>

#include "safety_fixture.h"

namespace safety_test {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Whether this system shows a delete as pending to a later open (Windows: the open fails; the
// holder's own handle says DeletePending). Wine keeps the file fully open to all and says neither.
bool SystemShowsPendingDeletes(const std::u16string& probe, std::string& why) {
    {
        const slib::UniqueFileHandle made(CreateFileW(
            Wide(probe), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    }
    const slib::UniqueFileHandle holder = Hold(probe, GENERIC_READ, kShareAll);
    DeleteFileW(Wide(probe));
    FILE_STANDARD_INFO info = {};
    GetFileInformationByHandleEx(holder.get(), FileStandardInfo, &info, sizeof info);
    const slib::UniqueFileHandle again = Hold(probe, 0, kShareAll);
    if (info.DeletePending || !again.valid()) {
        return true;
    }
    why =
        "after DeleteFileW of a file held with delete sharing, the holder's handle says no "
        "delete is pending and the file opens as before";
    return false;
}

class PendingDelete : public SafetyTest {
  protected:
    // A file at `relative`, held by another program that lets others delete it.
    slib::UniqueFileHandle heldFile(const std::u16string& relative) {
        writeFile(relative, "held");
        slib::UniqueFileHandle holder = Hold(path(relative), GENERIC_READ, kShareAll);
        EXPECT_TRUE(holder.valid());
        return holder;
    }
};

TEST_F(PendingDelete, AHeldFileDeletedOrMovedAwayAnswersDone) {
    std::string why;
    std::string noVolume;
    const bool systemShows = SystemShowsPendingDeletes(path(u"probe.txt"), why);
    const std::optional<std::u16string> small = SmallVolume(noVolume);
    // Past the shell's limit the plug-in deletes through its own handle, which says at once
    // whether the delete was taken.
    const std::u16string deep = std::u16string(120, u'd') + u"\\" + std::u16string(130, u'e');
    makeFolder(std::u16string(120, u'd'));
    makeFolder(deep);
    const struct {
        const char* route;
        std::u16string file;
        bool needsSystem;  // the shell's route learns of the pending delete from the system
        bool moveAway;
    } cases[] = {
        {"long path, delete", deep + u"\\held.txt", false, false},
        {"shell, delete", u"held.txt", true, false},
        {"shell, move to another volume", u"moved.txt", true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.route);
        if ((c.needsSystem && !systemShows) || (c.moveAway && !small)) {
            std::cout << "[  SKIPPED ] " << c.route << ": "
                      << (c.moveAway && !small ? noVolume
                                               : "this system (Wine) hides pending deletes: " + why)
                      << "\n";
            continue;
        }
        slib::UniqueFileHandle holder = heldFile(c.file);
        const std::u16string calculation = c.moveAway
                                               ? u"VFile_Move( " + Quoted(path(c.file)) + u" ; " +
                                                     Quoted(*small + u"\\moved.txt") + u" )"
                                               : u"VFile_Delete( " + Quoted(path(c.file)) + u" )";
        EXPECT_EQ(call(calculation), Succeeded());
        holder.reset();
        EXPECT_FALSE(exists(c.file)) << "gone once the other program let go";
        if (c.moveAway) {
            EXPECT_EQ(StateOf(*small + u"\\moved.txt").bytes, "held");
            slib::test::RemoveTree(*small + u"\\moved.txt");
        }
    }
    if (!systemShows) {
        GTEST_SKIP() << "the shell's rows: this system (Wine) hides pending deletes: " << why;
    }
}

}  // namespace
}  // namespace safety_test
