// VFile_Set's picture staging and rights words, in-process against the emulated host: what a
// call leaves in its session's option set, which the picture copy takes later.

#include <gtest/gtest.h>

#include <variant>
#include <vector>

#include "bridge/item_selectors.h"
#include "bridge/staged_picture_options.h"
#include "fmhost/host_driver.h"
#include "fmhost/host_objects.h"
#include "functions/handlers.h"
#include "shell/host_data.h"
#include "shell/host_objects.h"
#include "shell/host_text.h"
#include "shell/newer_host_functions.h"

namespace {

using fmhost::driver::Checked;
using Argument = std::variant<const char16_t*, int>;
using DataVectPtr =
    std::unique_ptr<FmxDataVect, fmhost::driver::HostDeleter<FmxDataVect, FM_DataVect_Delete>>;

class SetStaging : public ::testing::Test {
  protected:
    // Sessions are named from extension version 56 on; the plug-in learns the version at init.
    void SetUp() override { fmlib::RememberHostExtensionVersion(77); }
    void TearDown() override {
        for (uint64_t session : {uint64_t{0}, kFirst, kSecond}) {
            bridge::StagedPictureOptions::EndSession(session);
        }
        fmlib::RememberHostExtensionVersion(0);
    }

    static constexpr uint64_t kFirst = 1;  // the emulated host's first session
    static constexpr uint64_t kSecond = 2;

    // Calls VFile_Set with the arguments; returns the result as text ("" when left empty).
    std::u16string set(const std::vector<Argument>& arguments) {
        const fmlib::LocalePtr locale(
            Checked([](FmxErr& err) { return FM_Locale_Constructor1(0, err); }));
        const DataVectPtr args(Checked([](FmxErr& err) { return FM_DataVect_Constructor1(err); }));
        for (const Argument& argument : arguments) {
            const fmlib::DataPtr data = fmlib::NewData();
            if (const auto* text = std::get_if<const char16_t*>(&argument)) {
                fmlib::DataSetAsText(*data, *fmlib::MakeText(*text), *locale, 1);
            } else {
                fmlib::DataSetAsNumber(*data, *fmlib::NewFixPt(std::get<int>(argument), 16), 2);
            }
            Checked([&](FmxErr& err) { FM_DataVect_PushBack(args.get(), *data, err); });
        }
        const fmhost::driver::ExprEnvPtr env(
            Checked([](FmxErr& err) { return FM_ExprEnv_Constructor1(err); }));
        const fmlib::DataPtr result = fmlib::NewData();
        EXPECT_EQ(VFile_Set(11, *env, *args, *result), 0);
        return fmlib::TextUnits(fmlib::DataGetAsText(*result));
    }

    fmhost::driver::Host host_;
};

using Options = bridge::PictureOptionMap;

TEST_F(SetStaging, ConvertStagesTheSizesGivenAndRotateAddsTheTurn) {
    const struct {
        std::vector<std::vector<Argument>> calls;
        Options staged;
    } cases[] = {
        {{{u"convert", u"ignored", 100, 50}}, {{u"width", 100}, {u"height", 50}}},
        {{{u"CONVERT", 7, 300}}, {{u"width", 300}}},
        // No sizes: nothing staged, and yet the set exists, so the next copy converts.
        {{{u"Convert", u""}}, {}},
        {{{u"rotate", u""}}, {{u"exif-rotate", 1}}},
        // Calls add up; a later size replaces an earlier one.
        {{{u"convert", u"", 10, 20}, {u"rotate", u"x"}, {u"convert", u"", 30}},
         {{u"width", 30}, {u"height", 20}, {u"exif-rotate", 1}}},
    };
    for (const auto& c : cases) {
        for (const auto& call : c.calls) {
            EXPECT_EQ(set(call), u"");
        }
        const std::optional<Options> staged = bridge::StagedPictureOptions::Take(kFirst);
        ASSERT_TRUE(staged.has_value());
        EXPECT_EQ(*staged, c.staged);
    }
    // An attribute selector stages nothing, even when it fails.
    set({u"size", u"a.txt", 5});
    EXPECT_TRUE(bridge::StagedPictureOptions::IsEmpty(kFirst));
}

TEST_F(SetStaging, EachSessionStagesItsOwnSetAndAnEndedOneHasNone) {
    set({u"convert", u"", 10});
    ASSERT_TRUE(host_.UseSession(kSecond));
    EXPECT_TRUE(bridge::StagedPictureOptions::IsEmpty(kSecond));
    set({u"rotate", u""});
    EXPECT_EQ(bridge::StagedPictureOptions::Take(kFirst), (Options{{u"width", 10}}));
    set({u"convert", u"", 20});
    bridge::StagedPictureOptions::EndSession(kSecond);
    EXPECT_TRUE(bridge::StagedPictureOptions::IsEmpty(kSecond));
    EXPECT_TRUE(bridge::StagedPictureOptions::IsEmpty(kFirst));
}

// A host older than extension version 56 names no session: every call shares set 0.
TEST_F(SetStaging, AHostWithoutSessionsSharesOneSet) {
    fmlib::RememberHostExtensionVersion(55);
    set({u"rotate", u""});
    ASSERT_TRUE(host_.UseSession(kSecond));
    set({u"convert", u"", 5});
    EXPECT_EQ(bridge::StagedPictureOptions::Take(0), (Options{{u"exif-rotate", 1}, {u"width", 5}}));
    EXPECT_TRUE(bridge::StagedPictureOptions::IsEmpty(kFirst));
}

TEST_F(SetStaging, RightsWordsAreFoundAnywhereInAnyCase) {
    const std::pair<const char16_t*, uint32_t> cases[] = {
        {u"read, write", 6}, {u"none", 0},     {u"EXECUTE", 1},
        {u"rea d", 0},       {u"write-up", 2}, {u"read|execute", 5}};
    for (const auto& [text, rights] : cases) {
        EXPECT_EQ(bridge::RightsFromWords(*fmlib::MakeText(text)), rights);
    }
    const char16_t* const kText[] = {
        u"",     u"execute",      u"write",      u"write|execute",
        u"read", u"read|execute", u"read|write", u"read|write|execute"};
    for (uint32_t rights = 0; rights < 8; ++rights) {
        EXPECT_EQ(bridge::RightsText(rights), kText[rights]);
    }
}

}  // namespace
