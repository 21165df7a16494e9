#include "path_forms_fixture.h"

namespace items_test {

const std::vector<Form> kForms = {
    {"absolute", [](const std::u16string& r) { return r + u"/sub/a.txt"; }},
    {"relative", [](const std::u16string&) { return std::u16string(u"sub/a.txt"); }},
    {"parent step", [](const std::u16string& r) { return r + u"/sub/x/../a.txt"; }},
    {"relative parent", [](const std::u16string&) { return std::u16string(u"sub/x/../a.txt"); }},
    {"dot", [](const std::u16string& r) { return r + u"/./sub/./a.txt"; }},
    {"doubled", [](const std::u16string& r) { return r + u"//sub//a.txt"; }},
    {"trailing", [](const std::u16string& r) { return r + u"/sub/a.txt/"; }},
    {"FileMaker", [](const std::u16string& r) { return u"file:" + r + u"/sub//a.txt"; }},
    {"server", [](const std::u16string& r) { return u"filelinux:" + r + u"/sub/a.txt"; }},
    {"URL", [](const std::u16string& r) { return u"file://" + r + u"/sub/a.txt"; }},
};

}  // namespace items_test
