#include "foundation/windows/file_swap.h"

#include <optional>

#include "foundation/temporary_names.h"
#include "foundation/windows/file_sharing.h"
#include "foundation/windows/item_identity.h"
#include "foundation/windows/wide_text.h"

namespace slib {

namespace {

// Putting the original back outlasts more than a passing lock: a scanner may hold the freshly
// renamed file for a while.
constexpr DWORD kMoveBackDelays[] = {50, 100, 200, 400, 800, 1600};

// Never over whatever took the target's name meanwhile: that would lose it instead.
bool MoveBack(const std::u16string& backup, const std::u16string& target) {
    const auto attempt = [&] {
        return MoveFileExW(Wide(backup), Wide(target), MOVEFILE_WRITE_THROUGH) != 0;
    };
    for (const DWORD delay : kMoveBackDelays) {
        if (attempt()) {
            return true;
        }
        Sleep(delay);
    }
    return attempt();
}

}  // namespace

std::u16string BackupNameBeside(const std::u16string& target) {
    return NameBeside(target, u".original");
}

SwapOutcome SwapIntoPlace(const std::u16string& target, const std::u16string& replacement,
                          const std::u16string& backup, ReplaceFileFunction replace) {
    const std::optional<ItemIdentity> original = IdentityOfPath(target);
    SwapOutcome outcome;
    outcome.backup = backup;
    outcome.swapped = RetryWhileBusy(target, [&] {
        return replace(Wide(target), Wide(replacement), Wide(backup),
                       REPLACEFILE_IGNORE_MERGE_ERRORS | REPLACEFILE_IGNORE_ACL_ERRORS, nullptr,
                       nullptr) != 0;
    });
    if (outcome.swapped) {
        DeleteFileW(Wide(backup));
        return outcome;
    }
    outcome.error = GetLastError();
    // What the backup name holds tells whether the original went there: a system may also leave
    // a placeholder of its own there when the swap fails (Wine does), which goes.
    const std::optional<ItemIdentity> atBackup = IdentityOfPath(backup);
    if (!atBackup) {
        return outcome;
    }
    const bool originalAtBackup =
        original ? *atBackup == *original : outcome.error == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2;
    if (originalAtBackup) {
        outcome.originalStranded = !MoveBack(backup, target);
    } else {
        DeleteFileW(Wide(backup));
    }
    return outcome;
}

}  // namespace slib
