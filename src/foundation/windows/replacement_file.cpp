#include "foundation/windows/replacement_file.h"

#include <string>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/temporary_names.h"
#include "foundation/utf_conversion.h"
#include "foundation/windows/link_entries.h"
#include "foundation/windows/wide_text.h"

namespace slib {

namespace {

constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                  FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

// What a name taken by something else answers: as it stands, or while being deleted.
bool IsTaken(DWORD error) {
    return error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS ||
           error == ERROR_ACCESS_DENIED;
}

}  // namespace

SwapOutcome ReplaceWith(ProvisionalFile& file, const std::u16string& target,
                        ReplaceFileFunction replace) {
    SwapOutcome outcome;
    // The swap opens the file by its name, needing the right to rename it that our handle holds
    // anyway: where the folder grants that only to the creator's handle, nothing is tried, and
    // closing the handle removes the file.
    if (!UniqueFileHandle(CreateFileW(Wide(file.path()), DELETE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))) {
        outcome.error = GetLastError();
        return outcome;
    }
    // The original's own attributes (hidden, system, ...), which the swap itself does not keep.
    const DWORD attributes = GetFileAttributesW(Wide(target));
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & kKeptAttributes) != 0) {
        FILE_BASIC_INFO basic = {};
        basic.FileAttributes = attributes & kKeptAttributes;
        SetFileInformationByHandle(file.handle(), FileBasicInfo, &basic, sizeof basic);
    }
    const std::u16string beside = TemporaryNameBeside(target);
    if (!file.keepAs(beside)) {
        outcome.error = file.error();
        return outcome;
    }
    outcome = SwapIntoPlace(target, beside, BackupNameBeside(target), replace);
    if (!outcome.swapped) {
        DeleteFileW(Wide(beside));
    }
    return outcome;
}

ReplacementFile::ReplacementFile(const std::u16string& systemPath, ReplaceFileFunction replace)
    : target_(systemPath), replace_(replace) {
    // A link the caller named: the file it leads to is replaced where it lies, and the link stays.
    // Swapped by the link's name, the file would be moved beside the link instead, out of its
    // place, and what took its name there would be a file, not the link.
    if (const std::u16string leadsTo = WhereLinkLeads(target_); !leadsTo.empty()) {
        target_ = leadsTo;
    }
    const DWORD attributes = GetFileAttributesW(Wide(target_));
    if (attributes != INVALID_FILE_ATTRIBUTES &&
        (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) {
        fail(ERROR_ACCESS_DENIED);
        return;
    }
    // Readers and deleters may share it, so that a swap can check it may move it; nobody can open
    // it while it is marked for deletion. A leftover of a power cut may hold a name: a few fresh
    // ones are tried.
    for (int attempt = 0; attempt < 4 && !file_.valid(); ++attempt) {
        file_ = ProvisionalFile(TemporaryNameBeside(target_), FILE_SHARE_READ | FILE_SHARE_DELETE);
        if (!file_.valid() && file_.error() != ERROR_FILE_EXISTS) {
            break;
        }
    }
    if (!file_.valid()) {
        fail(file_.error());
    }
}

bool ReplacementFile::fail(DWORD error) {
    error_ = error == 0 ? ERROR_WRITE_FAULT : error;
    return false;
}

bool ReplacementFile::write(const uint8_t* bytes, uint64_t size) {
    return file_.write(bytes, size) || fail(file_.error());
}

bool ReplacementFile::commit() {
    if (!file_.valid()) {
        return fail(error_);
    }
    // On disk before it takes the target's place: a power cut then leaves old or new, whole.
    if (!FlushFileBuffers(file_.handle())) {
        return fail(GetLastError());
    }
    if (file_.keepAs(target_)) {
        return true;
    }
    if (!IsTaken(file_.error())) {
        return fail(file_.error());
    }
    // An existing file, the one there from the start or one that came meanwhile: refused as the
    // constructor refuses it, else swapped.
    const DWORD attributes = GetFileAttributesW(Wide(target_));
    if (attributes != INVALID_FILE_ATTRIBUTES &&
        (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) {
        return fail(ERROR_ACCESS_DENIED);
    }
    const SwapOutcome outcome = ReplaceWith(file_, target_, replace_);
    if (outcome.swapped) {
        return true;
    }
    if (outcome.originalStranded) {
        stranded_ = NormalizePath(outcome.backup);
    }
    return fail(outcome.error);
}

bool ReplacementFile::IsTemporaryName(const std::u16string& name) {
    return slib::IsTemporaryName(name);
}

void ThrowReplaceFailure(const char* message, const ReplacementFile& file) {
    if (file.strandedOriginal().empty()) {
        ThrowLastError(message, file.error());
    }
    const std::string text = std::string(message) +
                             ". The original file could not be put back and is kept as \"" +
                             Utf16ToUtf8(file.strandedOriginal()) + "\"";
    ThrowLastError(text.c_str(), file.error());
}

void ReplaceFileContents(const std::u16string& path, const uint8_t* bytes, uint64_t size,
                         const char* message) {
    ReplacementFile file(WithLongPathPrefix(path));
    if (!file.valid() || !file.write(bytes, size) || !file.commit()) {
        ThrowReplaceFailure(message, file);
    }
}

}  // namespace slib
