// Names on Linux: what Windows refuses is an ordinary name here, and a name that is not UTF-8
// comes back from a listing as text that names the very same bytes.

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

#include "file_manager/scratch_folder.h"
#include "foundation/error_codes.h"
#include "foundation/file_name_bytes.h"
#include "foundation/new_item_name.h"

namespace slib {
namespace test {
namespace {

using NamesTest = ScratchTest;

bool Lists(const std::vector<std::shared_ptr<const String>>& names, const std::u16string& name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::shared_ptr<const String>& n) { return n->units() == name; });
}

TEST_F(NamesTest, WindowsOnlyRulesDoNotApply) {
    for (const std::u16string name : {u"CON", u"aux.txt", u"ends.", u"ends ", u"a:b", u"what?"}) {
        SCOPED_TRACE(Narrow(name));
        RequireUsableNewItem(at(name));
        manager_.createItem(at(name), CreateKind::kFile);
        EXPECT_EQ(manager_.getItemKind(at(name)), ItemKind::kFile);
        EXPECT_TRUE(Lists(manager_.listFolder(String(root_)), name));
    }
}

TEST_F(NamesTest, BytesThatAreNotUtf8ComeBackAsTheSameName) {
    const std::string bytes = "caf\xe9-\xff.txt";  // Latin-1, as an old tool may have written it
    const int fd = ::open((Narrow(root_) + "/" + bytes).c_str(), O_WRONLY | O_CREAT, 0644);
    ASSERT_GE(fd, 0);
    ASSERT_EQ(::write(fd, "old", 3), 3);
    ::close(fd);
    const auto names = manager_.listFolder(String(root_));
    ASSERT_EQ(names.size(), 1u);
    const std::u16string name = names[0]->units();
    EXPECT_EQ(TextToFileNameBytes(name), bytes);
    // The listed text reaches the item: sized, copied, deleted.
    EXPECT_EQ(manager_.getItemSize(at(name)), 3u);
    manager_.copyItem(at(name), at(u"copy.txt"));
    EXPECT_EQ(readFile(u"copy.txt"), "old");
    manager_.deleteItem(at(name));
    EXPECT_FALSE(Lists(manager_.listFolder(String(root_)), name));
    // Text no name can hold never reaches the system, cut or altered.
    const std::u16string withNul = path(u"a") + std::u16string(1, u'\0') + u"b";
    EXPECT_EQ(FailureOf([&] { manager_.createFile(String(withNul), false); }),
              Failure(kBadParameter, "Cannot create file"));
    EXPECT_FALSE(exists(u"a"));
}

}  // namespace
}  // namespace test
}  // namespace slib
