// Keyword lookup, results, argument checks and resource texts against the emulated host.
#include <gtest/gtest.h>

#include <string>

#include "foundation/exception.h"
#include "host_test_support.h"
#include "resources/resource_ids.h"
#include "shell/arguments.h"
#include "shell/host_data.h"
#include "shell/host_text.h"
#include "shell/keyword_lookup.h"
#include "shell/resource_text.h"
#include "shell/result.h"

namespace {

using shelltest::HostFixture;

const char* const kItemKinds[] = {"file", "folder", "new", "files", "folders"};

class HostLayer : public ::testing::Test {
  protected:
    int32_t Lookup(const std::u16string& text) {
        return fmlib::LookupKeyword(*fmlib::MakeText(text), kItemKinds);
    }

    // The code and message of the slib::Exception `call` raises; {0, ""} when none.
    template <typename Call>
    std::pair<int32_t, std::string> Raised(Call call) {
        try {
            call();
        } catch (const slib::Exception& failure) {
            return {failure.error()->code(), failure.what()};
        }
        return {0, ""};
    }

    HostFixture host_;
};

TEST_F(HostLayer, KeywordsMatchWithoutRegardToCase) {
    const std::pair<const char16_t*, int32_t> cases[] = {
        {u"file", 0},     {u"FOLDER", 1}, {u"Files", 3},  {u"folders", 4},
        {u"folderx", -1}, {u"fold", -1},  {u" file", -1}, {u"", -1}};
    for (const auto& [text, index] : cases) {
        EXPECT_EQ(Lookup(text), index);
    }
    // The first keyword that matches wins.
    const char* const repeated[] = {"a", "B", "b"};
    EXPECT_EQ(fmlib::LookupKeyword(*fmlib::MakeText(u"b"), repeated), 1);
    // The argument itself is not changed by the lookup.
    fmlib::TextPtr upper = fmlib::MakeText(u"FILE");
    fmlib::LookupKeyword(*upper, kItemKinds);
    EXPECT_EQ(fmlib::TextUnits(*upper), u"FILE");
}

TEST_F(HostLayer, ResultsCarryTheirNativeType) {
    fmlib::DataPtr result = fmlib::NewData();
    fmlib::SetResultCode(*result, -50);
    EXPECT_EQ(fmlib::DataGetNativeType(*result), 2);
    EXPECT_EQ(host_.Print(*result), "-50");
    fmlib::SetResultCode(*result, 2400);
    EXPECT_EQ(host_.Print(*result), "2400");

    fmlib::SetResultText(*result, u"3.0");
    EXPECT_EQ(fmlib::DataGetNativeType(*result), 1) << "text, although it reads as a number";
    EXPECT_EQ(host_.Print(*result), "3.0");
}

TEST_F(HostLayer, ParameterChecks) {
    auto args = host_.Arguments({"\"a\"", "12", "Date ( 1 ; 2 ; 2020 )", "\"\""});
    EXPECT_EQ(Raised([&] { fmlib::RequireParameters(*args, 4); }).first, 0);
    EXPECT_EQ(Raised([&] { fmlib::RequireParameters(*args, 5); }),
              std::make_pair(-50, std::string("Not enough parameters")));
    EXPECT_EQ(Raised([&] { fmlib::RequireTextParameter(*args, 0); }).first, 0);
    EXPECT_EQ(Raised([&] { fmlib::RequireTextParameter(*args, 3); }).first, 0) << "empty text";
    for (uint32_t notText : {1u, 2u, 4u, 100u}) {
        EXPECT_EQ(Raised([&] { fmlib::RequireTextParameter(*args, notText); }),
                  std::make_pair(-50, std::string("Path parameter must be text")))
            << "argument " << notText;
    }
}

TEST_F(HostLayer, ResourceTextsAndFunctionNames) {
    fmlib::TextPtr text = fmlib::NewText();
    fmlib::LoadResourceText(119, *text, false);
    EXPECT_EQ(fmlib::TextUnits(*text), u"VFile_Run( path { ; arguments } )");
    fmlib::LoadResourceText(119, *text, true);
    EXPECT_EQ(fmlib::TextUnits(*text), u"VFile_Run");
    fmlib::LoadResourceText(118, *text, true);
    EXPECT_EQ(fmlib::TextUnits(*text), u"VFile_DeCompress");
    // Without a "(" the whole text is the name.
    fmlib::LoadResourceText(VF_STR_PLUGIN_NAME, *text, true);
    EXPECT_EQ(fmlib::TextUnits(*text), u"Quorvel Vantafile Plug-In");
    // A missing string gives empty text, and a small capacity truncates.
    fmlib::LoadResourceText(999, *text, true);
    EXPECT_EQ(fmlib::TextUnits(*text), u"");
    EXPECT_EQ(fmlib::LoadResourceString(VF_STR_PLUGIN_NAME, 8), u"Quorvel");
}

}  // namespace
