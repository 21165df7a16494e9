#include "archive/zip_operations.h"

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
#include "foundation/file_manager.h"
#include "foundation/windows/replacement_file.h"
#include "foundation/windows/unique_handles.h"
#include "foundation/windows/wide_text.h"

namespace archive {

namespace {

using slib::Wide;

bool OpensAsArchive(const std::u16string& path) {
    FileSource source(path);
    return source.valid() && FindCentralDirectory(source).has_value();
}

// The archive being written: under its name only once complete (or beside an older file of that
// name, which it replaces then), so a failed or killed compression leaves no archive cut short
// and an older file as it was.
class NewArchiveFile {
  public:
    explicit NewArchiveFile(const std::u16string& path) : file_(slib::WithLongPathPrefix(path)) {
        if (!file_.valid()) {
            FailArchiveNotCreated();
        }
    }
    HANDLE handle() const { return file_.handle(); }
    void complete() {
        if (!file_.commit()) {
            if (!file_.strandedOriginal().empty()) {
                FailArchiveNotCreated(file_.strandedOriginal());
            }
            FailArchiveNotCreated();
        }
    }

  private:
    slib::ReplacementFile file_;
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
                // Only a file of the archive's name can be the file the archive replaces: that
                // one is compared with the target below, not read ahead.
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
                // The file the archive replaces, when it lies in the folder, is not packed.
                if (slib::EqualsIgnoringCase(LastComponent(walk.files[index].relativePath),
                                             targetName) &&
                    IsSameFile(paths[index], target.units())) {
                    continue;
                }
                FileStream file(paths[index]);
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
