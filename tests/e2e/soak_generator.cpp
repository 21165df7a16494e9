#include "e2e/soak_generator.h"

#include <utility>

namespace vf::soak {

namespace {

// What an argument position usually holds.
enum Role : char { kPath = 'P', kKeyword = 'K', kData = 'D', kValue = 'V', kWriteIndex = 'I' };

struct Function {
    const char* name;
    const char* roles;  // one Role per usual argument
};

const std::vector<Function>& Functions() {
    static const std::vector<Function> functions = {
        {"VFile_Version", "K"},        {"VFile_New", "PK"},      {"VFile_Delete", "P"},
        {"VFile_Copy", "PP"},          {"VFile_Move", "PP"},     {"VFile_Read", "PVVK"},
        {"VFile_Write", "PDIK"},       {"VFile_Get", "KPV"},     {"VFile_Set", "KPV"},
        {"VFile_Convert", "PPKVKVKV"}, {"VFile_Compress", "PP"}, {"VFile_DeCompress", "PP"},
    };
    return functions;
}

const std::vector<std::string>& Keywords() {
    static const std::vector<std::string> keywords = {
        // item kinds, version formats
        "file", "folder", "new", "files", "folders", "long", "short", "platform", "autoupdate",
        // encodings
        "text", "utf-8", "utf-16", "iso-8859-1", "windows-1252", "x-mac-roman", "euc-jp", "dos",
        "base64", "hex-dump", "rtf", "image", "x-pict", "anything", "default",
        // selectors
        "lastError", "lastErrorMessage", "type", "picture-width", "picture-height",
        "analyze-container", "picture-pixels", "size", "data-size", "resource-size", "created",
        "modified", "kind", "available-space", "owner", "group", "owner-rights", "group-rights",
        "everyone-rights", "native-full", "native-relative", "unix-full", "unix-relative",
        "win-full", "win-relative", "convert", "read", "write", "execute", "all", "none",
        // conversion options and formats
        "width", "height", "proportional", "rotate", "exif-rotate", "output-format", "jpeg", "jpg",
        "png", "gif", "bmp", "tiff",
        // nothing any list holds
        "no-such-keyword", "FILE", "Utf-8"};
    return keywords;
}

// Names inside the scratch folder: seeded items, new names, non-ASCII, reserved device names,
// names the system refuses, and long ones.
const std::vector<std::string>& Names() {
    static const std::vector<std::string> names = {"a",
                                                   "b",
                                                   "sub",
                                                   "x.txt",
                                                   "pic.bmp",
                                                   "arch.zip",
                                                   "deep",
                                                   "new file.txt",
                                                   "out.zip",
                                                   "conv.png",
                                                   "\xc3\xa9\xe6\x96\x87",
                                                   "\xc3\x9cn\xc3\xaf.txt",
                                                   "con",
                                                   "nul",
                                                   "aux.txt",
                                                   "com1",
                                                   "lpt1.txt",
                                                   "dot.",
                                                   "trailing ",
                                                   " leading",
                                                   "a*b",
                                                   "a?b",
                                                   "x<y>",
                                                   "c:d",
                                                   std::string(100, 'L'),
                                                   std::string(250, 'N')};
    return names;
}

// Paths of items the run lays out (or the calls themselves make often), so that calls find
// something to work on; "deep" reaches past 300 characters.
const std::vector<std::string>& Known() {
    static const std::vector<std::string> known = [] {
        std::vector<std::string> paths = {"x.txt",     "pic.bmp", "arch.zip", "sub",
                                          "sub/x.txt", "a",       "b",        "../x.txt",
                                          "deep",      "out.zip", "conv.png"};
        std::string deep = "deep";
        for (int level = 0; level < 5; ++level) {
            deep += "/" + std::string(60, 'd');
            paths.push_back(deep);
        }
        paths.push_back(deep + "/x.txt");
        return paths;
    }();
    return known;
}

const std::vector<std::string>& Texts() {
    static const std::vector<std::string> texts = {"",
                                                   "hello",
                                                   "line\xc2\xb6"
                                                   "break",
                                                   "quote \" inside",
                                                   "back\\slash",
                                                   "\xc3\xa9\xe6\x96\x87\xe5\xad\x97",
                                                   "-128",
                                                   "0",
                                                   "1",
                                                   "48656c6c6f",
                                                   "SGVsbG8=",
                                                   "{\\rtf1 x}",
                                                   std::string(700, 'x')};
    return texts;
}

const std::vector<std::string>& Numbers() {
    static const std::vector<std::string> numbers = {"0",
                                                     "1",
                                                     "-1",
                                                     "2",
                                                     "7",
                                                     "3.5",
                                                     "-2.25",
                                                     "0.000001",
                                                     "2147483648",
                                                     "-2147483649",
                                                     "99999999999999999999999999999999",
                                                     "-99999999999999999999",
                                                     "65535",
                                                     "-50"};
    return numbers;
}

// Where VFile_Write starts. The system fills a gap before a position past the end, so a write at
// a huge index makes a file that large, and every later call that reads whole folders (zip, sizes)
// then reads all of it: within a few KiB the soak still covers before, at and past the end.
const std::vector<std::string>& WriteIndexes() {
    static const std::vector<std::string> indexes = {"0", "1", "-1", "-2", "5", "4096", "\"\""};
    return indexes;
}

const std::vector<std::string>& Others() {
    static const std::vector<std::string> others = {
        "Date ( 2 ; 29 ; 2024 )",
        "Date ( 1 ; 1 ; 1 )",
        "Time ( 25 ; 61 ; 3.5 )",
        "Timestamp ( Date ( 12 ; 31 ; 3999 ) ; Time ( 23 ; 59 ; 59 ) )",
        "Get ( CurrentTimestamp )",
        "Base64Decode ( \"aGVsbG8=\" ; \"a.txt\" )",
        "Base64Decode ( "
        "\"Qk1GAAAAAAAAADYAAAAoAAAAAgAAAAIAAAABABgAAAAAABAAAAATCwAAEwsAAAAAAAAAAAAAAAD/"
        "AAAA/wAAAP8AAAD/AA==\" ; \"p.bmp\" )",
        "\"\""};
    return others;
}

}  // namespace

std::string StoredName(std::string name) {
    while (!name.empty() && (name.back() == '.' || name.back() == ' ')) {
        name.pop_back();
    }
    for (char& c : name) {
        c = (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return name;
}

std::set<std::string> ItemNames() {
    std::set<std::string> names;
    for (const std::string& name : Names()) {
        names.insert(StoredName(name));
        // "c:d" names the stream "d" of an item "c".
        names.insert(StoredName(name.substr(0, name.find(':'))));
    }
    for (const std::string& path : Known()) {
        names.insert(StoredName(path.substr(0, path.find('/'))));
    }
    return names;
}

std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        quoted += c;
    }
    return quoted + "\"";
}

CallGenerator::CallGenerator(uint64_t seed, std::string scratchHostPath)
    : random_(seed), scratch_(std::move(scratchHostPath)) {}

// The engine's raw output only: the standard distributions differ between libraries, and a seed
// must replay the same calls wherever it runs.
uint32_t CallGenerator::below(uint32_t bound) {
    return static_cast<uint32_t>(random_() % bound);
}

std::string CallGenerator::next() {
    return "\"@@\" & Length ( " + call(0) + " ) & \"@@\"";
}

std::string CallGenerator::call(int nesting) {
    const Function& function = pick(Functions());
    const std::string roles = function.roles;
    // Mostly the usual count, otherwise anything from none to a few more.
    const size_t count = chance(70)
                             ? roles.size() - below(static_cast<uint32_t>(roles.size()) / 2 + 1)
                             : below(static_cast<uint32_t>(roles.size()) + 3);
    std::string text = std::string(function.name) + " (";
    for (size_t i = 0; i < count; ++i) {
        const char role = i < roles.size() ? roles[i] : static_cast<char>(kValue);
        std::string value;
        if (role == kWriteIndex) {
            value = pick(WriteIndexes());
        } else if (chance(75)) {
            switch (role) {
                case kPath:
                    value = path();
                    break;
                case kKeyword:
                    value = Quoted(pick(Keywords()));
                    break;
                case kData:
                    value = chance(50) ? Quoted(pick(Texts())) : argument(nesting);
                    break;
                default:
                    value = chance(60) ? number() : argument(nesting);
            }
        } else {
            value = argument(nesting);
        }
        text += (i == 0 ? " " : " ; ") + value;
    }
    return text + " )";
}

std::string CallGenerator::argument(int nesting) {
    switch (below(8)) {
        case 0:
            return path();
        case 1:
            return Quoted(pick(Keywords()));
        case 2:
            return text();
        case 3:
            return number();
        case 4:
        case 5:
            return pick(Others());
        case 6:
            return nesting < 2 ? call(nesting + 1) : "\"\"";
        default:
            return "\"\"";
    }
}

std::string CallGenerator::path() {
    if (chance(3)) {
        return "\"\"";
    }
    if (chance(40)) {
        std::string known = pick(Known());
        if (chance(30)) {
            known += "/" + pick(Names());
        }
        return Quoted(known);
    }
    std::string text;
    // The database sits one folder below the scratch folder: one step up is still inside.
    int depth = 1;
    if (chance(10)) {
        text = scratch_;
        depth = 0;
    }
    const uint32_t components = chance(10) ? 4 + below(6) : 1 + below(3);
    for (uint32_t i = 0; i < components; ++i) {
        std::string name;
        const uint32_t roll = below(100);
        if (roll < 6 && depth > 0) {
            name = "..";
            --depth;
        } else if (roll < 9) {
            name = ".";
        } else {
            name = pick(Names());
            ++depth;
        }
        if (!text.empty() && text.back() != '/') {
            text += chance(85) ? "/" : "\\";
        }
        text += name;
    }
    if (chance(8)) {
        text += "/";
    }
    return Quoted(text);
}

std::string CallGenerator::text() {
    std::string value = pick(Texts());
    if (chance(10)) {
        value += "\xc2\xb6" + pick(Texts());
    }
    return Quoted(value);
}

std::string CallGenerator::number() {
    return chance(15) ? "-" + pick(Numbers()) : pick(Numbers());
}

}  // namespace vf::soak
