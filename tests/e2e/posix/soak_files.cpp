#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "e2e/soak_files.h"
#include "foundation/file_name_bytes.h"
#include "foundation/posix/unique_fds.h"
#include "support/fmhost_process.h"

namespace vf::soak {

namespace {

std::string Bytes(const std::u16string& path) {
    return slib::TextToFileNameBytes(path).value_or("");
}

}  // namespace

std::u16string TempFolder() {
    const char* temporary = std::getenv("TMPDIR");
    std::string base = temporary != nullptr && temporary[0] == '/' ? temporary : "/tmp";
    while (base.size() > 1 && base.back() == '/') {
        base.pop_back();
    }
    return slib::FileNameBytesToText(base);
}

std::u16string Join(const std::u16string& folder, const std::u16string& name) {
    return folder + u"/" + name;
}

void MakeFolder(const std::u16string& path) {
    ::mkdir(Bytes(path).c_str(), 0755);
}

void WriteBytes(const std::u16string& path, const std::string& bytes) {
    const slib::UniqueFd file(
        ::open(Bytes(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    if (file.valid()) {
        (void)!::write(file.get(), bytes.data(), bytes.size());
    }
}

void RemoveFile(const std::u16string& path) {
    ::unlink(Bytes(path).c_str());
}

std::set<std::u16string> Names(const std::u16string& folder) {
    std::set<std::u16string> names;
    const slib::UniqueDir listing(::opendir(Bytes(folder).c_str()));
    if (!listing.valid()) {
        return names;
    }
    while (const dirent* entry = ::readdir(listing.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names.insert(slib::FileNameBytesToText(name));
        }
    }
    return names;
}

std::string HostForm(const std::u16string& folder) {
    return "file:" + Bytes(folder) + "/";
}

std::u16string ProcessTag() {
    const std::string pid = std::to_string(::getpid());
    return std::u16string(pid.begin(), pid.end());
}

std::string PluginBesideTest() {
    return vf::test::BesideTest("Vantafile.fmx");
}

// A crashed Linux host ends at once; nothing to set.
void EndCrashesAtOnce() {}

}  // namespace vf::soak
