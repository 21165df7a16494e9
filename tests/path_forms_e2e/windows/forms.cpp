#include "path_forms_fixture.h"

namespace items_test {

const std::vector<Form> kForms = {
    {"absolute", [](const std::u16string& r) { return r + u"\\sub\\a.txt"; }},
    {"relative", [](const std::u16string&) { return std::u16string(u"sub\\a.txt"); }},
    {"relative unix", [](const std::u16string&) { return std::u16string(u"sub/a.txt"); }},
    {"parent step", [](const std::u16string& r) { return r + u"\\sub\\x\\..\\a.txt"; }},
    {"relative parent", [](const std::u16string&) { return std::u16string(u"sub\\x\\..\\a.txt"); }},
    {"dot", [](const std::u16string& r) { return r + u"\\.\\sub\\.\\a.txt"; }},
    {"doubled", [](const std::u16string& r) { return r + u"\\\\sub\\\\a.txt"; }},
    {"mixed", [](const std::u16string& r) { return Slashes(r) + u"\\sub/a.txt"; }},
    {"prefixed", [](const std::u16string& r) { return u"\\\\?\\" + r + u"\\sub\\a.txt"; }},
    {"prefixed dots",
     [](const std::u16string& r) { return u"\\\\?\\" + r + u"\\sub\\..\\sub\\a.txt"; }},
    {"drive-relative", [](const std::u16string& r) { return r.substr(0, 2) + u"sub\\a.txt"; }},
    {"trailing", [](const std::u16string& r) { return r + u"\\sub\\a.txt\\"; }},
    {"FileMaker", [](const std::u16string& r) { return u"file:/" + Slashes(r) + u"/sub//a.txt"; }},
    {"URL", [](const std::u16string& r) { return u"file://" + Slashes(r) + u"/sub/a.txt"; }},
};

}  // namespace items_test
