// The host killed while it unpacks, writes or packs a large file, at several points: what it
// leaves is only whole files or none, under their own names (an unpacked file with the date from
// the archive), an existing file as it was, and nothing of ours beside them. fmhost runs as a
// child process here, and is ended as a crash or an administrator's kill ends FileMaker Server.
#include <windows.h>

#include <algorithm>
#include <functional>
#include <memory>

#include "archive/memory_io.h"
#include "archive/windows/archive_files.h"
#include "archive/zip_writer.h"
#include "foundation/windows/replacement_file.h"
#include "safety_fixture.h"
#include "support/running_fmhost.h"

namespace safety_test {
namespace {

constexpr uint64_t kLarge = 200ull << 20;
constexpr int kSmallFiles = 440;
constexpr uint32_t kWaitMs = 120000;

// Byte `at` of a large file: text that deflates well, different at every position, so that a
// file cut short or joined wrongly shows.
uint8_t LargeByte(uint64_t at) {
    return static_cast<uint8_t>('a' + (at * 7 + at / 4093) % 26);
}

// A large file's content, made as it is read: that text, or bytes no compression shrinks.
class LargeContent : public archive::ByteStream {
  public:
    explicit LargeContent(bool incompressible = false) : incompressible_(incompressible) {}
    size_t read(uint8_t* buffer, size_t capacity) override {
        size_t length = 0;
        for (; length < capacity && at_ < kLarge; ++length, ++at_) {
            noise_ ^= noise_ << 13;
            noise_ ^= noise_ >> 7;
            noise_ ^= noise_ << 17;
            buffer[length] = incompressible_ ? static_cast<uint8_t>(noise_) : LargeByte(at_);
        }
        return length;
    }

  private:
    bool incompressible_;
    uint64_t at_ = 0;
    uint64_t noise_ = 88172645463325252ull;
};

std::string SmallContent(int index) {
    return "small file " + std::to_string(index) + " " + std::string(100 + index * 37, 'x');
}

// 2001-02-03 04:05:06 UTC, the archive's date for every entry.
constexpr uint64_t kEntryFileTime = 126256047060000000ull;

// The size of the item at `path` as its folder lists it (also while it is being written and the
// system refuses to open it), or -1 when there is none.
int64_t ListedSize(const std::u16string& path) {
    WIN32_FIND_DATAW found;
    const slib::UniqueFindHandle search(FindFirstFileW(Wide(u"\\\\?\\" + path), &found));
    if (!search.valid()) {
        return -1;
    }
    return static_cast<int64_t>(uint64_t{found.nFileSizeHigh} << 32 | found.nFileSizeLow);
}

// Whether a large file holds the whole content (its length, and its first and last megabyte).
bool IsWholeLargeFile(const std::u16string& path) {
    const slib::UniqueFileHandle file(CreateFileW(Wide(u"\\\\?\\" + path), GENERIC_READ,
                                                  FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size{};
    if (!file.valid() || !GetFileSizeEx(file.get(), &size) ||
        static_cast<uint64_t>(size.QuadPart) != kLarge) {
        return false;
    }
    std::string buffer(1 << 20, '\0');
    for (const uint64_t start : {uint64_t{0}, kLarge - buffer.size()}) {
        LARGE_INTEGER at;
        at.QuadPart = static_cast<LONGLONG>(start);
        DWORD got = 0;
        if (!SetFilePointerEx(file.get(), at, nullptr, FILE_BEGIN) ||
            !ReadFile(file.get(), buffer.data(), static_cast<DWORD>(buffer.size()), &got,
                      nullptr) ||
            got != buffer.size()) {
            return false;
        }
        for (size_t i = 0; i < buffer.size(); ++i) {
            if (static_cast<uint8_t>(buffer[i]) != LargeByte(start + i)) {
                return false;
            }
        }
    }
    return true;
}

uint64_t ModifiedTime(const std::u16string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(Wide(u"\\\\?\\" + path), GetFileExInfoStandard, &data)) {
        return 0;
    }
    return uint64_t{data.ftLastWriteTime.dwHighDateTime} << 32 | data.ftLastWriteTime.dwLowDateTime;
}

// Names in `folder` (not below) that are ours: temporary and backup files.
std::vector<std::u16string> OurLeftovers(const std::u16string& folder) {
    std::vector<std::u16string> found;
    WIN32_FIND_DATAW entry;
    const slib::UniqueFindHandle search(
        FindFirstFileW(Wide(u"\\\\?\\" + folder + u"\\~vf-*"), &entry));
    if (search.valid()) {
        do {
            found.push_back(slib::test::FromWide(entry.cFileName));
        } while (FindNextFileW(search.get(), &entry));
    }
    return found;
}

class Killed : public SafetyTest {
  protected:
    // The host, started on `calculation` in the scratch folder's database.
    std::unique_ptr<vf::test::RunningFmhost> start(const std::u16string& calculation) {
        return std::make_unique<vf::test::RunningFmhost>(std::vector<std::string>{
            "--plugin", Narrow(slib::test::BesideProgram(u"Vantafile.fmx64")), "--file",
            Narrow(path(u"Solution.fmp12")), "-e", Narrow(calculation)});
    }

    // Whether the host is `bytes` into writing the file at `relative` (the system's count of what
    // it wrote, where the folder's listing lags: NTFS updates it when the file is closed).
    static bool Wrote(const vf::test::RunningFmhost& host, int64_t listed, uint64_t bytes) {
        return listed > static_cast<int64_t>(bytes) || host.BytesWritten() > bytes;
    }

    // The size of the largest of our files being written in `folder` (each has a temporary name
    // until it is done), or -1 when there is none.
    int64_t GrowingSize(const std::u16string& folder) const {
        int64_t largest = -1;
        for (const std::u16string& name : OurLeftovers(path(folder))) {
            largest = std::max(largest, ListedSize(path(folder + u"\\" + name)));
        }
        return largest;
    }

    // Waits until `condition` holds while the host works, then kills it. False when the host
    // ended first or the condition never came.
    static bool KillWhen(vf::test::RunningFmhost& host,
                         const std::function<bool(const vf::test::RunningFmhost&)>& condition) {
        const bool reached =
            host.WaitUntil([&] { return condition(host); }, kWaitMs) && host.Running();
        host.Kill();
        return reached;
    }

    // 40 small files, the large one, 400 more: in that order in the archive.
    void writeArchive(const std::u16string& relative) {
        const slib::UniqueFileHandle file(CreateFileW(Wide(path(relative)), GENERIC_WRITE, 0,
                                                      nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                                                      nullptr));
        ASSERT_TRUE(file.valid());
        archive::FileWriter out(file.get());
        archive::ZipWriter zip(out, 2);
        archive::EntryTime time;
        time.hasFileTime = true;
        time.fileTime = kEntryFileTime;
        for (int i = 0; i < kSmallFiles; ++i) {
            if (i == 40) {
                LargeContent large;
                zip.addFile(u"large.txt", time, large, kLarge);
            }
            const std::string content = SmallContent(i);
            archive::MemoryStream stream(reinterpret_cast<const uint8_t*>(content.data()),
                                         content.size());
            zip.addFile(u"small " + slib::test::FromWide(std::to_wstring(i).c_str()) + u".txt",
                        time, stream, content.size());
        }
        zip.finish();
    }

    void writeLargeFile(const std::u16string& relative, bool incompressible = false) {
        const slib::UniqueFileHandle file(CreateFileW(Wide(path(relative)), GENERIC_WRITE, 0,
                                                      nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                                                      nullptr));
        ASSERT_TRUE(file.valid());
        LargeContent content(incompressible);
        std::vector<uint8_t> buffer(4 << 20);
        while (const size_t length = content.read(buffer.data(), buffer.size())) {
            DWORD written = 0;
            ASSERT_TRUE(WriteFile(file.get(), buffer.data(), static_cast<DWORD>(length), &written,
                                  nullptr));
        }
    }

    // What unpacking left in `folder`: each file whole, dated from the archive, or absent.
    void expectOnlyWholeUnpackedFiles(const std::u16string& folder) {
        EXPECT_EQ(OurLeftovers(path(folder)), std::vector<std::u16string>());
        if (ListedSize(path(folder + u"\\large.txt")) >= 0) {
            EXPECT_TRUE(IsWholeLargeFile(path(folder + u"\\large.txt"))) << "large.txt cut short";
            EXPECT_EQ(ModifiedTime(path(folder + u"\\large.txt")), kEntryFileTime);
        }
        int present = 0;
        for (int i = 0; i < kSmallFiles; ++i) {
            const std::u16string name =
                folder + u"\\small " + slib::test::FromWide(std::to_wstring(i).c_str()) + u".txt";
            if (!exists(name)) {
                continue;
            }
            ++present;
            EXPECT_EQ(readFile(name), SmallContent(i)) << Narrow(name);
            EXPECT_EQ(ModifiedTime(path(name)), kEntryFileTime) << Narrow(name);
        }
        EXPECT_EQ(snapshot(folder).size(),
                  static_cast<size_t>(present) + (exists(folder + u"\\large.txt") ? 1 : 0));
    }
};

// Unpacking: killed as soon as the target folder is there, while the large entry is being
// written, and once it is in place, among the small files after it.
TEST_F(Killed, UnpackingLeavesOnlyWholeFilesWithTheirDates) {
    writeArchive(u"files.zip");
    using Host = vf::test::RunningFmhost;
    const std::vector<std::pair<const char*, std::function<bool(const Host&)>>> points = {
        {"target folder made", [&](const Host&) { return exists(u"out"); }},
        {"large file begun",
         [&](const Host& host) { return Wrote(host, GrowingSize(u"out"), 8 << 20); }},
        {"large file in place", [&](const Host&) { return exists(u"out\\large.txt"); }},
    };
    for (const auto& [point, condition] : points) {
        SCOPED_TRACE(point);
        slib::test::RemoveTree(path(u"out"));
        const auto host = start(uR"(VFile_DeCompress( "files.zip" ; "out" ))");
        ASSERT_TRUE(host->started());
        EXPECT_TRUE(KillWhen(*host, condition)) << "the host finished before the point came";
        expectOnlyWholeUnpackedFiles(u"out");
    }
}

// Writing and packing a large file into "out/target": killed while the bytes go out, a new file
// is absent (never cut short under its name), an existing one as it was, and nothing of ours
// remains.
TEST_F(Killed, WritingAndPackingLeaveTheTargetAbsentOrAsItWas) {
    writeLargeFile(u"source.bin");
    makeFolder(u"packed");
    writeLargeFile(u"packed\\large.bin", true);  // packing deflates nothing: fast to the disk
    const struct {
        const char* name;
        const char16_t* calculation;
        std::optional<std::string> original;
    } cases[] = {
        {"write", uR"(VFile_Write( "out/target" ; VFile_Read( "source.bin" ; "file" ) ))", {}},
        {"write over a file",
         uR"(VFile_Write( "out/target" ; VFile_Read( "source.bin" ; "file" ) ))", "the original"},
        {"write at an index",
         uR"(VFile_Write( "out/target" ; VFile_Read( "source.bin" ; "file" ) ; 0 ))",
         {}},
        {"compress", uR"(VFile_Compress( "packed" ; "out/target" ))", {}},
        {"compress over a file", uR"(VFile_Compress( "packed" ; "out/target" ))", "not an archive"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        makeFolder(u"out");
        if (c.original) {
            writeFile(u"out\\target", *c.original);
        }
        const auto host = start(c.calculation);
        ASSERT_TRUE(host->started());
        EXPECT_TRUE(KillWhen(*host, [&](const vf::test::RunningFmhost& running) {
            return Wrote(running, GrowingSize(u"out"), 8 << 20);
        })) << "the host finished before the writing was under way";
        EXPECT_EQ(OurLeftovers(path(u"out")), std::vector<std::u16string>());
        EXPECT_EQ(readFile(u"out\\target"), c.original);
        slib::test::RemoveTree(path(u"out"));
    }
}

// A copy goes through the shell, or past the shell's path limit through our own walk: killed
// while the bytes go out, the target's name never holds a cut file. Only the copy under a name of
// ours may remain.
TEST_F(Killed, ACopyNeverLeavesACutFileUnderItsName) {
    writeLargeFile(u"source.bin");
    std::u16string deep = u"deep";
    makeFolder(deep);
    while (path(deep).size() < MAX_PATH + 20) {
        deep += u"\\a folder deep enough to pass the shell's limit";
        ASSERT_TRUE(CreateDirectoryW(Wide(u"\\\\?\\" + path(deep)), nullptr));
    }
    makeFolder(u"out");
    for (const std::u16string& folder : {std::u16string(u"out"), deep}) {
        SCOPED_TRACE(Narrow(folder));
        const std::u16string copy = folder + u"\\copy.bin";
        std::u16string written = copy;  // as a script writes it, from the database's folder
        std::replace(written.begin(), written.end(), u'\\', u'/');
        const auto host = start(u"VFile_Copy( \"source.bin\" ; \"" + written + u"\" )");
        ASSERT_TRUE(host->started());
        EXPECT_TRUE(KillWhen(*host, [&](const vf::test::RunningFmhost& running) {
            return Wrote(running, GrowingSize(folder), 8 << 20);
        })) << "the copy finished, or never wrote under a name of ours";
        if (ListedSize(path(copy)) >= 0) {
            EXPECT_TRUE(IsWholeLargeFile(path(copy))) << "copy.bin cut short";
        }
        for (const std::u16string& name : OurLeftovers(path(folder))) {
            EXPECT_TRUE(slib::ReplacementFile::IsTemporaryName(name)) << Narrow(name);
        }
    }
    slib::test::RemoveTree(path(u"out"));
    slib::test::RemoveTree(path(u"deep"));
}

}  // namespace
}  // namespace safety_test
