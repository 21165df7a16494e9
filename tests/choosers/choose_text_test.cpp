// The pure parts of the choosers: the dialog filter, the names the open dialog writes back, and
// the options of VFile_Choose.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/choose_options.h"
#include "foundation/chooser_filter.h"
#include "foundation/chosen_names.h"
#include "foundation/exception.h"
#include "foundation/utf_conversion.h"

namespace slib {
namespace {

using Texts = std::vector<std::u16string>;

TEST(AllowedFilesFilter, ListsEachExtensionAsAPattern) {
    const std::pair<Texts, std::u16string> rows[] = {
        {{u"txt", u"csv"}, u"Allowed files:|*.txt;*.csv|"},
        {{u"pdf"}, u"Allowed files:|*.pdf|"},
        {{u"a", u"b", u"c"}, u"Allowed files:|*.a;*.b;*.c|"},
    };
    for (const auto& [extensions, filter] : rows) {
        EXPECT_EQ(AllowedFilesFilter(extensions), filter);
    }
}

TEST(AllowedFilesFilter, DialogGetsZerosForBarsAndAClosingEmptyString) {
    const std::u16string buffer = DialogFilterBuffer(u"Allowed files:|*.txt;*.csv|");
    EXPECT_EQ(buffer, std::u16string(u"Allowed files:\0*.txt;*.csv\0\0", 28));
}

std::vector<std::u16string> Split(const std::u16string& buffer) {
    return SplitChosenNames(buffer.data(), buffer.size());
}

TEST(ChosenNames, OneFileOrAFolderAndItsNamesInTheDialogsOrder) {
    using namespace std::string_literals;
    const std::pair<std::u16string, Texts> rows[] = {
        {u"C:\\d\\a.txt\0\0\0\0"s, {u"C:\\d\\a.txt"}},
        {u"C:\\d\0c\0a\0b\0\0\0"s, {u"C:\\d\\c", u"C:\\d\\a", u"C:\\d\\b"}},
        // A drive's root already ends in its separator.
        {u"C:\\\0a\0b\0\0"s, {u"C:\\a", u"C:\\b"}},
        {u"\0\0\0"s, {}},
        // Filled to the last unit without a terminator: nothing is read past the end.
        {u"C:\\d\0a\0bc"s, {u"C:\\d\\a", u"C:\\d\\bc"}},
        {u"C:\\d\\a.txt"s, {u"C:\\d\\a.txt"}},
    };
    for (const auto& [buffer, paths] : rows) {
        EXPECT_EQ(Split(buffer), paths);
    }
}

TEST(ChooseOptions, SplitsExtensionListsOnEverySeparatorAndDropsDots) {
    const std::pair<std::u16string, Texts> rows[] = {
        {u"txt", {u"txt"}},
        {u"txt csv,pdf;doc\rxml", {u"txt", u"csv", u"pdf", u"doc", u"xml"}},
        {u".txt, *.PDF ;;  ", {u"txt", u"PDF"}},
        {u"tar.gz", {u"tar.gz"}},
        {u" , ; . *", {}},
        {u"", {}},
    };
    for (const auto& [list, extensions] : rows) {
        EXPECT_EQ(SplitExtensionList(list), extensions) << Utf16ToUtf8(list);
    }
}

TEST(ChooseOptions, ReadsNamesWithoutRegardToCase) {
    const ChooseOptions options = ParseChooseOptions(
        {u"TITLE", u"Pick one", u"Folder", u"~\\Documents", u"eXtensions", u"pdf txt"});
    EXPECT_EQ(options.title, u"Pick one");
    // Index 3 is the fourth text: the call's argument 4, counting the item kind.
    EXPECT_EQ(options.folderValue, std::optional<size_t>(3));
    EXPECT_EQ(options.extensions, (Texts{u"pdf", u"txt"}));
}

TEST(ChooseOptions, EmptyValuesLaterPairsAndATrailingName) {
    const ChooseOptions none = ParseChooseOptions({});
    EXPECT_FALSE(none.title || none.folderValue || !none.extensions.empty());

    const ChooseOptions options =
        ParseChooseOptions({u"title", u"first", u"title", u"second", u"folder", u"", u"extensions",
                            u"txt", u"extensions", u"csv", u"nonsense"});
    EXPECT_EQ(options.title, u"second");
    EXPECT_FALSE(options.folderValue);
    EXPECT_EQ(options.extensions, Texts{u"csv"});

    EXPECT_FALSE(ParseChooseOptions({u"title", u""}).title);
}

TEST(ChooseOptions, AnUnknownNameIsABadParameterThatNamesIt) {
    const std::pair<Texts, std::string> rows[] = {
        {{u"colour", u"red"}, "Unknown option: colour"},
        {{u"title", u"t", u"filter", u"txt"}, "Unknown option: filter"},
        // The name is shown as it was given, quotes and all.
        {{u"say \"hi\"", u"x"}, "Unknown option: say \"hi\""},
        {{u"", u"x"}, "Unknown option: "},
    };
    for (const auto& [pairs, message] : rows) {
        try {
            ParseChooseOptions(pairs);
            ADD_FAILURE() << "no failure for " << message;
        } catch (const Exception& failure) {
            EXPECT_EQ(failure.error()->code(), -50);
            EXPECT_STREQ(failure.what(), message.c_str());
        }
    }
}

}  // namespace
}  // namespace slib
