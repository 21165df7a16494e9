#include "bridge/container_link.h"

#include "bridge/resolve_path.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "shell/host_objects.h"
#include "shell/host_text.h"
#include "shell/host_values.h"

namespace bridge {

namespace {

// The kinds of reference the host writes; each stands for a file path.
const char16_t* const kLinkKinds[] = {u"file", u"image", u"movie"};
const char16_t* const kLinkPlatforms[] = {u"", u"win", u"mac"};

// "imagewin:/C:/a.jpg" -> "file:/C:/a.jpg"; "image:pics/a.jpg" -> "pics/a.jpg" (relative);
// empty for a line that is no file reference.
std::u16string AsFilePath(const std::u16string& line) {
    const size_t colon = line.find(u':');
    if (colon == std::u16string::npos) {
        return {};
    }
    const std::u16string prefix = line.substr(0, colon);
    for (const char16_t* kind : kLinkKinds) {
        for (const char16_t* platform : kLinkPlatforms) {
            if (prefix == std::u16string(kind) + platform) {
                const std::u16string rest = line.substr(colon + 1);
                if (rest.empty()) {
                    return {};
                }
                return rest.front() == u'/' ? u"file:" + rest : rest;
            }
        }
    }
    return {};
}

}  // namespace

std::vector<std::u16string> FileLinks(const FmxBinaryData& container) {
    std::vector<std::u16string> links;
    const fmlib::TextPtr names = fmlib::NewText();
    if (fmlib::BinaryDataGetFNAMData(container, *names) != 0) {
        return links;
    }
    const std::u16string text = fmlib::TextUnits(*names);
    size_t start = 0;
    while (start <= text.size()) {
        size_t end = text.find_first_of(u"\r\n", start);
        if (end == std::u16string::npos) {
            end = text.size();
        }
        const std::u16string path = AsFilePath(text.substr(start, end - start));
        if (!path.empty()) {
            links.push_back(path);
        }
        start = end + 1;
    }
    return links;
}

slib::String LinkedFilePath(const FmxBinaryData& container, PathContext& paths) {
    const std::vector<std::u16string> links = FileLinks(container);
    if (links.empty()) {
        slib::Throw(slib::kBadParameter, "No link to file in container");
    }
    const slib::FileManager manager;
    for (const std::u16string& link : links) {
        const fmlib::TextPtr text = fmlib::MakeText(link);
        slib::String path(ResolvePath(paths.anchor(), *text)->text());
        if (!path.empty() && manager.getItemKind(path) == slib::ItemKind::kFile) {
            return path;
        }
    }
    slib::Throw(slib::kBadParameter, "Linked file in container does not exist");
}

}  // namespace bridge
