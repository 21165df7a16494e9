#include "bridge/staged_picture_options.h"

#include <utility>

namespace bridge {
namespace {

std::optional<PictureOptionMap>& Staged() {
    static std::optional<PictureOptionMap> staged;
    return staged;
}

}  // namespace

bool StagedPictureOptions::IsEmpty() {
    return !Staged().has_value();
}

void StagedPictureOptions::Create() {
    if (!Staged()) {
        Staged().emplace();
    }
}

void StagedPictureOptions::Set(const std::u16string& name, double value) {
    Create();
    (*Staged())[name] = value;
}

std::optional<PictureOptionMap> StagedPictureOptions::Take() {
    return std::exchange(Staged(), std::nullopt);
}

}  // namespace bridge
