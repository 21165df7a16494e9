#include "archive_test_support.h"

#include <fstream>
#include <mutex>
#include <random>

#include "archive/memory_io.h"
#include "archive/zip_reader.h"
#include "archive/zip_writer.h"
#include "foundation/exception.h"
#include "foundation/utf_conversion.h"

namespace archive_test {

namespace {

std::string Joined(const archive::RelativePath& path) {
    std::string joined;
    for (const std::u16string& part : path) {
        joined += (joined.empty() ? "" : "/") + slib::Utf16ToUtf8(part);
    }
    return joined;
}

// Files are written on several threads at once: the shared record is guarded.
class RecordedFile : public archive::EntryFile {
  public:
    RecordedFile(Outcome& outcome, std::mutex& mutex, std::string path)
        : outcome_(outcome), mutex_(mutex), path_(std::move(path)) {}
    ~RecordedFile() override {
        if (!committed_) {
            const std::lock_guard<std::mutex> lock(mutex_);
            ++outcome_.discarded;
        }
    }
    void write(const uint8_t* data, size_t length) override {
        content_.append(reinterpret_cast<const char*>(data), length);
    }
    void commit(const archive::EntryTime&) override {
        const std::lock_guard<std::mutex> lock(mutex_);
        outcome_.tree[path_] = content_;
        committed_ = true;
    }

  private:
    Outcome& outcome_;
    std::mutex& mutex_;
    std::string path_;
    std::string content_;
    bool committed_ = false;
};

class RecordingTarget : public archive::ExtractTarget {
  public:
    explicit RecordingTarget(Outcome& outcome) : outcome_(outcome) {}
    void makeFolder(const archive::RelativePath& path) override {
        const std::lock_guard<std::mutex> lock(mutex_);
        outcome_.tree[Joined(path)] = "<dir>";
    }
    std::unique_ptr<archive::EntryFile> createFile(const archive::RelativePath& path) override {
        return std::make_unique<RecordedFile>(outcome_, mutex_, Joined(path));
    }

  private:
    Outcome& outcome_;
    std::mutex mutex_;
};

// Code page 437 is what the OEM code page is on the systems the tests run on; these tests only
// need its upper half to differ from UTF-8, so Latin-1 stands in for it.
std::u16string Latin1(std::string_view bytes) {
    std::u16string text;
    for (char c : bytes) {
        text.push_back(static_cast<unsigned char>(c));
    }
    return text;
}

}  // namespace

std::vector<uint8_t> Build(const std::vector<Item>& items) {
    const archive::EntryTime time;
    archive::MemoryWriter out;
    archive::ZipWriter writer(out, 2);
    for (const Item& item : items) {
        if (item.folder) {
            writer.addFolder(item.name, time);
        } else {
            archive::MemoryStream content(item.content);
            writer.addFile(
                item.name, time, content,
                item.listedSize < 0 ? item.content.size() : static_cast<uint64_t>(item.listedSize));
        }
    }
    writer.finish();
    return out.bytes;
}

Outcome Extract(const std::vector<uint8_t>& archive) {
    Outcome outcome;
    archive::MemorySource source(archive);
    RecordingTarget target(outcome);
    try {
        archive::ExtractArchive(source, target, &Latin1);
    } catch (const slib::Exception& failure) {
        outcome.failure = std::to_string(failure.error()->code()) + " " + failure.what();
    }
    return outcome;
}

void SaveSeed([[maybe_unused]] const std::string& name,
              [[maybe_unused]] const std::vector<uint8_t>& archive) {
#ifdef VF_FUZZ_SEED_DIR
    // Large archives only slow the fuzzer down; small ones reach the same code.
    if (archive.size() <= 64 * 1024) {
        std::ofstream(std::string(VF_FUZZ_SEED_DIR) + "/" + name + ".zip", std::ios::binary)
            .write(reinterpret_cast<const char*>(archive.data()),
                   static_cast<std::streamsize>(archive.size()));
    }
#endif
}

std::string Text(size_t size, uint32_t seed) {
    static const char* const kWords[] = {"alpha ",   "beta ", "gamma ", "delta\n",
                                         "epsilon ", "zeta ", "eta ",   "theta\n"};
    std::mt19937 random(seed);
    std::string text;
    while (text.size() < size) {
        text += kWords[random() % 8];
    }
    text.resize(size);
    return text;
}

std::string Noise(size_t size, uint32_t seed) {
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(random());
    }
    return bytes;
}

}  // namespace archive_test
