// The plug-in's string table as each system's build reads it: the Windows resources or the table
// compiled in elsewhere, both made from resources/strings.inc.
#include <gtest/gtest.h>

#include <string>

#include "resources/resource_ids.h"
#include "resources/version.h"
#include "shell/resource_text.h"

namespace {

std::u16string Units(const char* ascii) {
    return std::u16string(ascii, ascii + std::char_traits<char>::length(ascii));
}

TEST(ResourceString, EveryFunctionHasItsPrototype) {
    for (uint32_t function = 1; function <= 19; ++function) {
        const std::u16string prototype =
            fmlib::LoadResourceString(VF_STR_PROTOTYPE_BASE + function);
        EXPECT_EQ(prototype.rfind(u"VFile_", 0), 0u) << "function " << function;
        EXPECT_NE(prototype.find(u'('), std::u16string::npos) << "function " << function;
        EXPECT_EQ(prototype.back(), u')') << "function " << function;
    }
}

TEST(ResourceString, NameDescriptionAndVersion) {
    EXPECT_EQ(fmlib::LoadResourceString(VF_STR_PLUGIN_NAME), u"Quorvel Vantafile Plug-In");
    EXPECT_EQ(fmlib::LoadResourceString(VF_STR_VERSION), Units(VF_VERSION_SHORT_TEXT));
    const std::u16string description = fmlib::LoadResourceString(VF_STR_DESCRIPTION);
    // Line breaks are real ones, and the version the build was made with closes it.
    EXPECT_NE(description.find(u"abilities.\nCopyright"), std::u16string::npos);
    const std::u16string ending = u"\nVersion " + Units(VF_VERSION_SHORT_TEXT);
    ASSERT_GE(description.size(), ending.size());
    EXPECT_EQ(description.substr(description.size() - ending.size()), ending);
}

TEST(ResourceString, CutToCapacityLessOneAsTheSystemLoaderDoes) {
    struct CutCase {
        size_t capacity;
        const char16_t* text;
    };
    const CutCase cases[] = {
        {0, u""},
        {1, u""},
        {2, u"Q"},
        {8, u"Quorvel"},
        {26, u"Quorvel Vantafile Plug-In"},
        {1024, u"Quorvel Vantafile Plug-In"},
    };
    for (const CutCase& c : cases) {
        EXPECT_EQ(fmlib::LoadResourceString(VF_STR_PLUGIN_NAME, c.capacity), c.text)
            << "capacity " << c.capacity;
    }
}

TEST(ResourceString, MissingIdsAreEmpty) {
    for (const uint32_t id : {0u, 4u, 99u, 100u, 120u, 65535u}) {
        EXPECT_EQ(fmlib::LoadResourceString(id), u"") << "id " << id;
    }
}

}  // namespace
