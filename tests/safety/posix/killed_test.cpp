// The host killed while it copies, moves, writes, packs or unpacks a large file, at several
// points: what it leaves under the real name is the whole item or nothing, an existing file is
// as it was, and beside it at most our own ~vf- items.
#include <dirent.h>

#include <set>

#include "foundation/file_name_bytes.h"
#include "foundation/posix/unique_fds.h"
#include "safety/posix/safety_scratch.h"

namespace safety_test {
namespace {

constexpr size_t kLarge = 32u << 20;

std::string LargeContent() {
    std::string content(kLarge, '\0');
    for (size_t at = 0; at < content.size(); ++at) {
        content[at] = static_cast<char>('a' + (at * 7 + at / 4093) % 26);
    }
    return content;
}

class Killed : public SafetyTest {
  protected:
    // The names directly in `relative` that are not ours (~vf-...).
    std::set<std::string> theirNames(const std::u16string& relative) const {
        std::set<std::string> names;
        const slib::UniqueDir folder(::opendir(bytes(relative).c_str()));
        if (!folder.valid()) {
            return names;
        }
        while (const dirent* entry = ::readdir(folder.get())) {
            const std::string name = entry->d_name;
            if (name != "." && name != ".." && name.rfind("~vf-", 0) != 0) {
                names.insert(name);
            }
        }
        return names;
    }
};

TEST_F(Killed, LeavesTheWholeItemOrNothingUnderItsName) {
    const std::string large = LargeContent();
    writeFile(u"large.txt", large);
    ASSERT_EQ(call(uR"(VFile_Compress( "large.txt" ; "large.zip" ))"), Succeeded());
    const struct {
        const char* operation;
        const char16_t* calculation;
        const char16_t* made;  // the item the call makes
        std::string whole;     // its content when done; "<dir>" for a folder
    } cases[] = {
        {"copy", uR"(VFile_Copy( "large.txt" ; "out/copy.txt" ))", u"out\\copy.txt", large},
        {"write", uR"(VFile_Write( "out/written.txt" ; VFile_Read( "large.txt" ; "utf-8" ) ))",
         u"out\\written.txt", large},
        {"compress", uR"(VFile_Compress( "large.txt" ; "out/packed.zip" ))", u"out\\packed.zip",
         ""},
        {"unpack", uR"(VFile_DeCompress( "large.zip" ; "out" ))", u"out\\large.txt", large},
    };
    for (const int delayMs : {0, 50, 300}) {
        for (const auto& c : cases) {
            SCOPED_TRACE(std::string(c.operation) + " killed after " + std::to_string(delayMs) +
                         " ms");
            slib::test::RemoveTree(path(u"out"));
            makeFolder(u"out");
            killPartWay(c.calculation, delayMs);
            const std::optional<std::string> left = readFile(c.made);
            if (left && !c.whole.empty()) {
                EXPECT_TRUE(*left == c.whole) << "cut short: " << left->size() << " bytes";
            } else if (left) {
                // A whole archive unpacks to the whole file.
                EXPECT_EQ(call(u"VFile_DeCompress( " + Quoted(path(c.made)) + u" ; " +
                               Quoted(path(u"check")) + u" )"),
                          Succeeded());
                EXPECT_TRUE(readFile(u"check\\large.txt") == large);
                slib::test::RemoveTree(path(u"check"));
            }
            const std::u16string name = std::u16string(c.made).substr(4);
            const std::set<std::string> expected =
                left ? std::set<std::string>{Narrow(name)} : std::set<std::string>{};
            EXPECT_EQ(theirNames(u"out"), expected);
        }
    }
    EXPECT_TRUE(readFile(u"large.txt") == large);
}

TEST_F(Killed, KeepsTheFileItReplacesWholeOrNew) {
    const std::string large = LargeContent();
    writeFile(u"large.txt", large);
    makeFolder(u"dest");
    const char16_t* replacing[] = {
        uR"(VFile_Copy( "large.txt" ; "dest" ))",
        uR"(VFile_Write( "dest/large.txt" ; VFile_Read( "large.txt" ; "utf-8" ) ))",
    };
    for (const int delayMs : {0, 50, 300}) {
        for (const char16_t* calculation : replacing) {
            SCOPED_TRACE(Narrow(calculation) + " killed after " + std::to_string(delayMs) + " ms");
            writeFile(u"dest\\large.txt", "the original");
            killPartWay(calculation, delayMs);
            const std::optional<std::string> left = readFile(u"dest\\large.txt");
            ASSERT_TRUE(left.has_value());
            EXPECT_TRUE(*left == "the original" || *left == large) << left->size() << " bytes";
        }
    }
}

}  // namespace
}  // namespace safety_test
