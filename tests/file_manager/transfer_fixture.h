#pragma once
// The tree every transfer test starts from, shared by the system-independent and the
// system-specific transfer tests.

#include "file_manager/scratch_folder.h"

namespace slib {
namespace test {

class TransferTest : public ScratchTest {
  protected:
    // src\top.txt, src\sub\inner.txt, src\sub\empty\ and a lone file.
    void SetUp() override {
        ScratchTest::SetUp();
        makeFolder(u"src");
        writeFile(u"src\\top.txt", "top");
        makeFolder(u"src\\sub");
        writeFile(u"src\\sub\\inner.txt", "inner");
        makeFolder(u"src\\sub\\empty");
        writeFile(u"lone.txt", "lone");
    }

    // Whether a folder moved onto a same-named folder is merged into it here (windows/ and
    // posix/ answer).
    bool MovedFoldersMerge();
};

}  // namespace test
}  // namespace slib
