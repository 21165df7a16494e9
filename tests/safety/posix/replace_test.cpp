// Every operation that replaces a file (a write, a copy into its folder, a zip, an unpack), failing
// because the volume is full or the folder refuses writing: the original keeps its bytes and mode
// and its folder holds nothing new.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "foundation/file_name_bytes.h"
#include "foundation/posix/unique_fds.h"
#include "safety/posix/safety_scratch.h"
#include "safety/reported_failure.h"

namespace safety_test {
namespace {

std::string Original() {
    std::string bytes(100 * 1024, '\0');
    for (size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>((i * 7919) >> 3);
    }
    return bytes;
}

class Replace : public SafetyTest {
  protected:
    void SetUp() override {
        SafetyTest::SetUp();
        makeFolder(u"src");
        writeFile(u"src\\one.txt", "one");
        makeFolder(u"new");
        writeFile(u"new\\target.bin", std::string(300 * 1024, 'n'));
        ASSERT_EQ(call(uR"(VFile_Compress( "new/target.bin" ; "new.zip" ))"), Succeeded());
        writeFile(u"big.bin", std::string(4 << 20, 'b'));
        writeFile(u"target.bin", std::string(4 << 20, 't'));
    }

    // The calculations that replace `target` (a file named target.bin), by operation.
    static std::vector<std::pair<const char*, std::u16string>> Replacing(
        const std::u16string& target) {
        const std::u16string folder = target.substr(0, target.rfind(u'/'));
        return {
            {"write", u"VFile_Write( " + Quoted(target) + u" ; \"new text\" )"},
            {"write a lot",
             u"VFile_Write( " + Quoted(target) + u" ; VFile_Read( \"big.bin\" ; \"utf-8\" ) )"},
            {"copy into its folder", u"VFile_Copy( \"target.bin\" ; " + Quoted(folder) + u" )"},
            {"compress", u"VFile_Compress( \"big.bin\" ; " + Quoted(target) + u" )"},
            {"decompress", u"VFile_DeCompress( \"new.zip\" ; " + Quoted(folder) + u" )"},
        };
    }

    struct State {
        std::optional<std::string> content;
        mode_t mode;
        bool operator==(const State& other) const {
            return content == other.content && mode == other.mode;
        }
    };
    static State StateOf(const std::u16string& file) {
        struct stat info {};
        ::stat(slib::TextToFileNameBytes(file).value().c_str(), &info);
        return {ReadWhole(file), info.st_mode};
    }
    static std::optional<std::string> ReadWhole(const std::u16string& file) {
        const slib::UniqueFd stream(
            ::open(slib::TextToFileNameBytes(file).value().c_str(), O_RDONLY | O_CLOEXEC));
        if (!stream.valid()) {
            return std::nullopt;
        }
        std::string content;
        char buffer[65536];
        ssize_t got = 0;
        while ((got = ::read(stream.get(), buffer, sizeof buffer)) > 0) {
            content.append(buffer, static_cast<size_t>(got));
        }
        return content;
    }
    static std::map<std::u16string, std::string> NamesIn(const std::u16string& folder) {
        std::map<std::u16string, std::string> names;
        slib::test::CollectTree(folder, names);
        return names;
    }

    // Each operation fails on `target` in `folder`, leaving the original and the folder as
    // they were.
    void expectEveryReplaceKeeps(const std::u16string& folder, const std::u16string& target) {
        const State original = StateOf(target);
        const auto names = NamesIn(folder);
        for (const auto& [operation, calculation] : Replacing(target)) {
            EXPECT_TRUE(ReportedFailure(call(calculation))) << operation;
            EXPECT_TRUE(StateOf(target) == original) << operation;
            EXPECT_EQ(NamesIn(folder), names) << operation;
        }
    }
};

TEST_F(Replace, AFullVolumeKeepsTheOriginal) {
    std::string why;
    const std::optional<std::u16string> small = smallVolume(why);
    if (!small) {
        GTEST_SKIP() << why;
    }
    const std::u16string target = *small + u"/target.bin";
    const std::string original = Original();
    {
        const slib::UniqueFd stream(::open(slib::TextToFileNameBytes(target).value().c_str(),
                                           O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
        ASSERT_TRUE(stream.valid());
        ASSERT_EQ(::write(stream.get(), original.data(), original.size()),
                  static_cast<ssize_t>(original.size()));
    }
    FillVolume(*small);
    expectEveryReplaceKeeps(*small, target);
    EXPECT_EQ(ReadWhole(target), original);
}

TEST_F(Replace, AFolderThatRefusesWritingKeepsTheOriginal) {
    if (!modesRefuse()) {
        GTEST_SKIP() << "this process passes every mode bit (root): a read-only folder refuses "
                        "it nothing; the native end-to-end run as an unprivileged user checks it";
    }
    makeFolder(u"locked");
    writeFile(u"locked\\target.bin", Original());
    ASSERT_EQ(::chmod(bytes(u"locked").c_str(), 0555), 0);
    expectEveryReplaceKeeps(path(u"locked"), path(u"locked\\target.bin"));
    ::chmod(bytes(u"locked").c_str(), 0755);
    EXPECT_EQ(readFile(u"locked\\target.bin"), Original());
}

}  // namespace
}  // namespace safety_test
