#include "foundation/file_manager.h"

namespace slib {

namespace {

std::u16string WithoutTrailingSlashes(std::u16string path) {
    while (path.size() > 1 && path.back() == u'/') {
        path.pop_back();
    }
    return path;
}

}  // namespace

std::shared_ptr<const String> FileManager::transferTarget(const String& source,
                                                          const String& destination) const {
    if (getItemKind(destination) != ItemKind::kFolder) {
        return std::make_shared<const String>(destination);
    }
    const std::u16string trimmed = WithoutTrailingSlashes(source.units());
    const size_t slash = trimmed.rfind(u'/');
    const std::u16string name = slash == std::u16string::npos ? trimmed : trimmed.substr(slash + 1);
    const std::u16string folder = WithoutTrailingSlashes(destination.units());
    return std::make_shared<const String>(folder == u"/" ? folder + name : folder + u"/" + name);
}

}  // namespace slib
