#include "bridge/staged_picture_options.h"

#include <utility>

namespace bridge {
namespace {

std::map<uint64_t, PictureOptionMap>& Staged() {
    static std::map<uint64_t, PictureOptionMap> staged;
    return staged;
}

}  // namespace

bool StagedPictureOptions::IsEmpty(uint64_t session) {
    return Staged().count(session) == 0;
}

void StagedPictureOptions::Create(uint64_t session) {
    Staged()[session];
}

void StagedPictureOptions::Set(uint64_t session, const std::u16string& name, double value) {
    Staged()[session][name] = value;
}

std::optional<PictureOptionMap> StagedPictureOptions::Take(uint64_t session) {
    const auto found = Staged().find(session);
    if (found == Staged().end()) {
        return std::nullopt;
    }
    PictureOptionMap options = std::move(found->second);
    Staged().erase(found);
    return options;
}

void StagedPictureOptions::EndSession(uint64_t session) {
    Staged().erase(session);
}

}  // namespace bridge
