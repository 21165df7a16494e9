// The scratch-folder fixture's system-independent part.

#include "file_manager/scratch_folder.h"

#include <algorithm>

namespace slib {
namespace test {

std::string Narrow(const std::u16string& text) {
    return String(text).toUtf8();
}

std::u16string Quote(const std::u16string& text) {
    return u"\"" + text + u"\"";
}

std::optional<Exception> Caught(const std::function<void()>& action) {
    try {
        action();
    } catch (const Exception& exception) {
        return exception;
    }
    return std::nullopt;
}

std::string Failure(int32_t code, const std::string& message) {
    return std::to_string(code) + " " + message;
}

std::string FailureOf(const std::function<void()>& action) {
    const std::optional<Exception> exception = Caught(action);
    return exception ? Failure(exception->error()->code(), exception->what()) : "";
}

std::u16string ScratchTest::path(const std::u16string& relative) const {
    std::u16string native = relative;
    std::replace(native.begin(), native.end(), u'\\', kSeparator);
    return relative.empty() ? root_ : root_ + kSeparator + native;
}

std::map<std::u16string, std::string> ScratchTest::snapshot(const std::u16string& relative) const {
    std::map<std::u16string, std::string> tree;
    CollectTree(path(relative), tree);
    for (auto& [name, content] : tree) {
        if (content.empty()) {
            content = readFile(relative.empty() ? name : relative + u"\\" + name).value_or("?");
        }
    }
    return tree;
}

}  // namespace test
}  // namespace slib
