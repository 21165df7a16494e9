#include "archive/zip_operations.h"

#include <algorithm>
#include <optional>
#include <thread>
#include <vector>

#include "archive/archive_failures.h"
#include "archive/disk_files.h"
#include "archive/entry_names.h"
#include "archive/folder_walk.h"
#include "archive/memory_io.h"
#include "archive/oem_names.h"
#include "archive/small_file_prefetch.h"
#include "archive/zip_reader.h"
#include "archive/zip_writer.h"
#include "foundation/case_fold.h"
#include "foundation/path_style.h"

namespace archive {

namespace {

bool OpensAsArchive(const std::u16string& path) {
    const std::unique_ptr<ByteSource> source = OpenArchiveSource(path);
    return source && FindCentralDirectory(*source).has_value();
}

// One deflate worker per core, up to a number that keeps memory within bounds on large machines.
unsigned WorkerCount() {
    constexpr unsigned kMostWorkers = 8;
    const unsigned cores = std::thread::hardware_concurrency();
    return cores == 0 ? 1 : std::min(cores, kMostWorkers);
}

std::u16string LastComponent(const std::u16string& path) {
    const size_t separator = slib::LastSeparator(path, slib::NativePathStyle());
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
    const std::unique_ptr<ArchiveOutput> archive = CreateArchiveOutput(target.units());
    {
        ZipWriter zip(*archive, WorkerCount());
        if (!walk.sourceIsFolder) {
            const std::unique_ptr<SourceFile> file = OpenSourceFile(source.units(), true);
            EntryTime time = file->time();
            AddItemAttributes(source.units(), time);
            zip.addFile(LastComponent(source.units()), time, *file, file->size());
        } else {
            if (walk.folders.empty() && walk.files.empty()) {
                FailNothingToAdd();
            }
            for (const WalkedItem& folder : walk.folders) {
                zip.addFolder(StoredNameFromRelativePath(folder.relativePath), folder.time);
            }
            const std::u16string prefix = WithoutTrailingSeparators(source.units()) +
                                          slib::SeparatorOf(slib::NativePathStyle());
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
                const EntryTime& listed = walk.files[index].time;
                if (std::optional<PrefetchedFile> small = prefetch.take(index)) {
                    MemoryStream content(small->bytes.data(), small->bytes.size());
                    small->time.attributes = listed.attributes;
                    small->time.unixMode = listed.unixMode;
                    zip.addFile(name, small->time, content, small->bytes.size());
                    continue;
                }
                // The file the archive replaces, when it lies in the folder, is not packed.
                if (slib::EqualsIgnoringCase(LastComponent(walk.files[index].relativePath),
                                             targetName) &&
                    IsSameFile(paths[index], target.units())) {
                    continue;
                }
                const std::unique_ptr<SourceFile> file = OpenSourceFile(paths[index]);
                EntryTime time = file->time();
                time.attributes = listed.attributes;
                time.unixMode = listed.unixMode;
                zip.addFile(name, time, *file, file->size());
            }
        }
        zip.finish();
    }
    archive->complete();
}

void DecompressArchive(const slib::String& archive, const slib::String& target) {
    const std::unique_ptr<ByteSource> source = OpenArchiveSource(archive.units());
    if (!source) {
        FailArchiveNotOpened();
    }
    const std::unique_ptr<ExtractTarget> disk = OpenDiskExtractTarget(target.units());
    ExtractArchive(*source, *disk, &DecodeOemName);
    disk->makeFolder({});  // the target folder, even for an archive without entries
}

}  // namespace archive
