#include "archive/windows/zip_operations.h"

#include <windows.h>

#include <algorithm>
#include <optional>
#include <thread>
#include <vector>

#include "archive/archive_failures.h"
#include "archive/entry_names.h"
#include "archive/memory_io.h"
#include "archive/windows/archive_files.h"
#include "archive/windows/disk_extract_target.h"
#include "archive/windows/entry_file_time.h"
#include "archive/windows/folder_walk.h"
#include "archive/windows/oem_names.h"
#include "archive/windows/small_file_prefetch.h"
#include "archive/zip_reader.h"
#include "archive/zip_writer.h"
#include "foundation/case_fold.h"
#include "foundation/windows/file_manager.h"
#include "foundation/windows/unique_handles.h"

namespace archive {

namespace {

const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

bool OpensAsArchive(const std::u16string& path) {
    FileSource source(path);
    return source.valid() && FindCentralDirectory(source).has_value();
}

// The archive file being written: closed, then deleted, unless it was completed.
class NewArchiveFile {
  public:
    explicit NewArchiveFile(const std::u16string& path)
        : path_(slib::WithLongPathPrefix(path)),
          handle_(CreateFileW(Wide(path_), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                              CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)) {
        if (!handle_) {
            FailArchiveNotCreated();
        }
    }
    ~NewArchiveFile() {
        handle_.reset();
        if (!completed_) {
            DeleteFileW(Wide(path_));
        }
    }
    NewArchiveFile(const NewArchiveFile&) = delete;
    NewArchiveFile& operator=(const NewArchiveFile&) = delete;

    HANDLE handle() const { return handle_.get(); }
    void complete() { completed_ = true; }

  private:
    std::u16string path_;
    slib::UniqueFileHandle handle_;
    bool completed_ = false;
};

// One deflate worker per core, up to a number that keeps memory within bounds on large machines.
unsigned WorkerCount() {
    constexpr unsigned kMostWorkers = 8;
    const unsigned cores = std::thread::hardware_concurrency();
    return cores == 0 ? 1 : std::min(cores, kMostWorkers);
}

std::u16string LastComponent(const std::u16string& path) {
    const size_t separator = path.rfind(u'\\');
    return separator == std::u16string::npos ? path : path.substr(separator + 1);
}

}  // namespace

void CompressItem(const slib::String& source, const slib::String& target) {
    if (OpensAsArchive(target.units())) {
        FailTargetIsArchive();
    }
    const FolderWalk walk = WalkFolder(source.units());
    if (!walk.sourceIsFolder && IsSameFile(source.units(), target.units())) {
        FailFileNotAdded();  // creating the target would destroy the very file it is to hold
    }
    NewArchiveFile archive(target.units());
    FileWriter writer(archive.handle());
    {
        ZipWriter zip(writer, WorkerCount());
        if (!walk.sourceIsFolder) {
            FileStream file(source.units());
            EntryTime time = file.time();
            time.attributes =
                KeptAttributes(GetFileAttributesW(Wide(slib::WithLongPathPrefix(source.units()))));
            zip.addFile(LastComponent(source.units()), time, file, file.size());
        } else {
            if (walk.folders.empty() && walk.files.empty()) {
                FailNothingToAdd();
            }
            for (const WalkedItem& folder : walk.folders) {
                zip.addFolder(StoredNameFromRelativePath(folder.relativePath), folder.time);
            }
            const std::u16string prefix = WithoutTrailingSeparators(source.units()) + u"\\";
            const std::u16string targetName = LastComponent(target.units());
            std::vector<std::u16string> paths;
            std::vector<bool> readAhead;
            for (const WalkedItem& item : walk.files) {
                paths.push_back(prefix + item.relativePath.substr(1));
                // Only a file of the archive's name can be the archive itself: that one is
                // opened here, to compare it with the archive.
                readAhead.push_back(
                    item.size <= SmallFilePrefetch::kLargestFile &&
                    !slib::EqualsIgnoringCase(LastComponent(item.relativePath), targetName));
            }
            SmallFilePrefetch prefetch(paths, readAhead);
            for (size_t index = 0; index < walk.files.size(); ++index) {
                const std::u16string name =
                    StoredNameFromRelativePath(walk.files[index].relativePath);
                // The walk listed the attributes; the file's own time is the one read with it.
                const uint8_t attributes = walk.files[index].time.attributes;
                if (std::optional<PrefetchedFile> small = prefetch.take(index)) {
                    MemoryStream content(small->bytes.data(), small->bytes.size());
                    small->time.attributes = attributes;
                    zip.addFile(name, small->time, content, small->bytes.size());
                    continue;
                }
                FileStream file(paths[index]);
                if (slib::EqualsIgnoringCase(LastComponent(walk.files[index].relativePath),
                                             targetName) &&
                    file.isSameFileAs(archive.handle())) {
                    continue;
                }
                EntryTime time = file.time();
                time.attributes = attributes;
                zip.addFile(name, time, file, file.size());
            }
        }
        zip.finish();
    }
    archive.complete();
}

void DecompressArchive(const slib::String& archive, const slib::String& target) {
    FileSource source(archive.units());
    if (!source.valid()) {
        FailArchiveNotOpened();
    }
    DiskExtractTarget disk(target.units());
    ExtractArchive(source, disk, &DecodeOemName);
    disk.makeFolder({});  // the target folder, even for an archive without entries
}

}  // namespace archive
