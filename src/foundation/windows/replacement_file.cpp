#include "foundation/windows/replacement_file.h"

#include <algorithm>
#include <atomic>
#include <string>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_sharing.h"
#include "foundation/windows/wide_text.h"

namespace slib {

namespace {

constexpr DWORD kChunk = 1u << 30;
constexpr char16_t kPrefix[] = u"~vf-";
constexpr char16_t kSuffix[] = u".partial";

std::atomic<uint32_t> temporaryCount{0};

std::u16string Digits(uint32_t value) {
    const std::string text = std::to_string(value);
    return std::u16string(text.begin(), text.end());
}

// A fresh name in the folder of `target` (its long form): short and fixed in shape, so it fits
// whatever the target's own name, and recognisable to anyone cleaning up after a power cut.
std::u16string TemporaryBeside(const std::u16string& target) {
    const size_t separator = target.rfind(u'\\');
    const std::u16string folder =
        separator == std::u16string::npos ? std::u16string() : target.substr(0, separator + 1);
    return folder + kPrefix + Digits(GetCurrentProcessId()) + u"-" + Digits(temporaryCount++) +
           kSuffix;
}

bool AllDigits(const std::u16string& text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

ReplacementFile::ReplacementFile(const std::u16string& systemPath) : target_(systemPath) {
    const DWORD attributes = GetFileAttributesW(Wide(target_));
    if (attributes != INVALID_FILE_ATTRIBUTES &&
        (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) {
        fail(ERROR_ACCESS_DENIED);
        return;
    }
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        kept_ = attributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                              FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED);
    }
    // A leftover of a killed run may hold a name: a few fresh ones are tried.
    for (int attempt = 0; attempt < 4 && !handle_.valid(); ++attempt) {
        temporary_ = TemporaryBeside(target_);
        handle_ = OpenShared(temporary_, GENERIC_READ | GENERIC_WRITE, FileUse::kWrite, CREATE_NEW,
                             FILE_ATTRIBUTE_NORMAL);
        if (!handle_.valid() && GetLastError() != ERROR_FILE_EXISTS) {
            break;
        }
    }
    if (!handle_.valid()) {
        const DWORD error = GetLastError();
        temporary_.clear();
        fail(error);
    }
}

ReplacementFile::~ReplacementFile() {
    handle_.reset();
    if (!committed_ && !temporary_.empty()) {
        DeleteFileW(Wide(temporary_));
    }
}

bool ReplacementFile::fail(DWORD error) {
    error_ = error == 0 ? ERROR_WRITE_FAULT : error;
    return false;
}

bool ReplacementFile::write(const uint8_t* bytes, uint64_t size) {
    while (size > 0) {
        const DWORD chunk = static_cast<DWORD>(std::min<uint64_t>(size, kChunk));
        DWORD written = 0;
        if (!WriteFile(handle_.get(), bytes, chunk, &written, nullptr)) {
            return fail(GetLastError());
        }
        if (written != chunk) {
            return fail(ERROR_DISK_FULL);
        }
        bytes += written;
        size -= written;
    }
    return true;
}

bool ReplacementFile::commit() {
    if (!handle_.valid()) {
        return fail(error_);
    }
    // The original's own attributes (hidden, system, ...), whatever the swap itself keeps.
    if (kept_ != 0) {
        FILE_BASIC_INFO basic = {};
        basic.FileAttributes = kept_;
        SetFileInformationByHandle(handle_.get(), FileBasicInfo, &basic, sizeof(basic));
    }
    // On disk before it takes the target's place: a power cut then leaves old or new, whole.
    if (!FlushFileBuffers(handle_.get())) {
        return fail(GetLastError());
    }
    handle_.reset();
    const bool swapped =
        GetFileAttributesW(Wide(target_)) != INVALID_FILE_ATTRIBUTES
            ? swapIn()
            : RetryWhileBusy(target_, [&] {
                  return MoveFileExW(Wide(temporary_), Wide(target_),
                                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
              });
    if (!swapped) {
        return fail(GetLastError());
    }
    committed_ = true;
    return true;
}

bool ReplacementFile::swapIn() {
    // A backup name of our own: left to choose, a system may leave its own placeholder behind
    // when the swap fails (Wine does). The old file ends there and is removed after the swap.
    const std::u16string backup = TemporaryBeside(target_);
    const bool swapped = RetryWhileBusy(target_, [&] {
        return ReplaceFileW(Wide(target_), Wide(temporary_), Wide(backup),
                            REPLACEFILE_IGNORE_MERGE_ERRORS | REPLACEFILE_IGNORE_ACL_ERRORS,
                            nullptr, nullptr) != 0;
    });
    const DWORD error = GetLastError();
    const bool targetThere = GetFileAttributesW(Wide(target_)) != INVALID_FILE_ATTRIBUTES;
    if (!swapped && !targetThere) {
        // Moved aside, but the new file could not take its place: the original goes back.
        MoveFileExW(Wide(backup), Wide(target_), MOVEFILE_WRITE_THROUGH);
    } else {
        DeleteFileW(Wide(backup));
    }
    SetLastError(error);
    return swapped;
}

bool ReplacementFile::IsTemporaryName(const std::u16string& name) {
    const std::u16string prefix(kPrefix);
    const std::u16string suffix(kSuffix);
    if (name.size() <= prefix.size() + suffix.size() || name.compare(0, prefix.size(), prefix) ||
        name.compare(name.size() - suffix.size(), suffix.size(), suffix)) {
        return false;
    }
    const std::u16string middle =
        name.substr(prefix.size(), name.size() - prefix.size() - suffix.size());
    const size_t dash = middle.find(u'-');
    return dash != std::u16string::npos && AllDigits(middle.substr(0, dash)) &&
           AllDigits(middle.substr(dash + 1));
}

void ReplaceFileContents(const std::u16string& path, const uint8_t* bytes, uint64_t size,
                         const char* message) {
    ReplacementFile file(WithLongPathPrefix(path));
    if (!file.valid() || !file.write(bytes, size) || !file.commit()) {
        ThrowLastError(message, file.error());
    }
}

}  // namespace slib
