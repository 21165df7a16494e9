#include "path_syntax.h"

#include <algorithm>
#include <cstdio>

#include "core/utf.h"

namespace fmwrapper {
namespace {

constexpr std::u16string_view kPrefixes[] = {u"file:", u"filewin:", u"filemac:"};

bool StartsWith(std::u16string_view text, std::u16string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

std::u16string Replaced(std::u16string_view text, char16_t from, char16_t to) {
    std::u16string out(text);
    std::replace(out.begin(), out.end(), from, to);
    return out;
}

std::u16string WithoutFilePrefix(std::u16string_view hostPath) {
    for (std::u16string_view prefix : kPrefixes) {
        if (StartsWith(hostPath, prefix))
            return std::u16string(hostPath.substr(prefix.size()));
    }
    return std::u16string(hostPath);
}

int HexValue(char16_t c) {
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    if (c >= u'a' && c <= u'f')
        return c - u'a' + 10;
    if (c >= u'A' && c <= u'F')
        return c - u'A' + 10;
    return -1;
}

// %XX escapes of a URL are UTF-8 bytes.
std::u16string PercentDecoded(std::u16string_view text) {
    const std::string utf8 = fmhost::Utf16ToUtf8(text);
    std::string bytes;
    for (size_t i = 0; i < utf8.size(); ++i) {
        if (utf8[i] == '%' && i + 2 < utf8.size() && HexValue(utf8[i + 1]) >= 0 &&
            HexValue(utf8[i + 2]) >= 0) {
            bytes.push_back(static_cast<char>(HexValue(utf8[i + 1]) * 16 + HexValue(utf8[i + 2])));
            i += 2;
        } else {
            bytes.push_back(utf8[i]);
        }
    }
    return fmhost::Utf8ToUtf16(bytes);
}

std::u16string PercentEncoded(std::u16string_view text) {
    std::u16string out;
    for (char16_t c : text) {
        if (c == u' ' || c == u'%' || c == u'#' || c == u'?') {
            char escaped[4];
            std::snprintf(escaped, sizeof(escaped), "%%%02X", static_cast<unsigned char>(c));
            out.append(escaped, escaped + 3);
        } else {
            out.push_back(c);
        }
    }
    return out;
}

}  // namespace

std::u16string HostPathFromNative(std::u16string_view native) {
    std::u16string path = Replaced(native, u'\\', u'/');
    if (StartsWith(path, u"//"))
        return path;  // network share keeps its two slashes
    if (path.size() >= 2 && path[1] == u':')
        return u"/" + path;
    return path;
}

std::optional<std::u16string> NativeFromHostPath(std::u16string_view hostPath) {
    if (StartsWith(hostPath, u"fmnet:"))
        return std::nullopt;
    std::u16string path = WithoutFilePrefix(hostPath);
    if (path.find(u':') != std::u16string::npos &&
        !(path.size() >= 3 && path[0] == u'/' && path[2] == u':')) {
        return std::nullopt;  // another scheme, or a colon where no drive can be
    }
    if (path.size() >= 3 && path[0] == u'/' && path[2] == u':')
        path.erase(0, 1);
    return Replaced(path, u'/', u'\\');
}

std::u16string NetworkFilePath(std::u16string_view url) {
    if (StartsWith(url, u"fmnet:/"))
        return std::u16string(url);
    if (StartsWith(url, u"fmp://"))
        return u"fmnet:/" + std::u16string(url.substr(6));
    while (!url.empty() && url.front() == u'/')
        url.remove_prefix(1);
    return u"fmnet:/" + std::u16string(url);
}

std::optional<std::u16string> ToHostPath(std::u16string_view path, int format) {
    if (path.empty())
        return std::nullopt;
    switch (static_cast<PathFormat>(format)) {
        case PathFormat::kWindows:
            return u"file:" + HostPathFromNative(path);
        case PathFormat::kPosix:
            return u"file:" + std::u16string(path);
        case PathFormat::kUrl: {
            if (!StartsWith(path, u"file://"))
                return std::nullopt;
            std::u16string rest = PercentDecoded(path.substr(7));
            // file:///C:/x has an empty host; file://server/share/x names one.
            if (StartsWith(rest, u"/"))
                return u"file:" + rest;
            return u"file://" + rest;
        }
    }
    return std::nullopt;
}

std::optional<std::u16string> FromHostPath(std::u16string_view hostPath, int format) {
    if (hostPath.empty() || StartsWith(hostPath, u"fmnet:"))
        return std::nullopt;
    switch (static_cast<PathFormat>(format)) {
        case PathFormat::kWindows:
            return NativeFromHostPath(hostPath);
        case PathFormat::kPosix:
            return WithoutFilePrefix(hostPath);
        case PathFormat::kUrl: {
            const std::u16string path = WithoutFilePrefix(hostPath);
            if (StartsWith(path, u"//"))
                return u"file:" + PercentEncoded(path);
            return u"file://" + PercentEncoded(StartsWith(path, u"/") ? path : u"/" + path);
        }
    }
    return std::nullopt;
}

}  // namespace fmwrapper
