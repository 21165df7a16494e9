// Where VFile_Read starts and how much it takes, where VFile_Write puts its bytes, folders, and
// the refusals of both functions.
#include "contents_fixture.h"

namespace contents_test {
namespace {

class Positions : public ContentsTest {};

TEST_F(Positions, ReadIndexAndLengthOnATenByteFile) {
    writeFile(u"ten.txt", "0123456789");
    struct Row {
        const char16_t* arguments;
        const char* result;
    };
    for (const Row& row : {
             Row{u"", "0123456789"},
             Row{u"\"utf-8\"", "0123456789"},
             Row{u"4 ; 3 ; \"utf-8\"", "456"},
             Row{u"-1 ; \"utf-8\"", "9"},  // the last byte
             Row{u"-3 ; 2 ; \"utf-8\"", "78"},
             Row{u"4", "456789"},
             Row{u"4 ; \"all\"", "456789"},
             Row{u"4 ; \" ALL \" ; \"utf-8\"", "456789"},
             Row{u"2 ; -1 ; \"utf-8\"", "23456789"},  // a negative length is unlimited
             Row{u"0 ; 0 ; \"utf-8\"", ""},
             Row{u"10 ; \"utf-8\"", ""},
             Row{u"-20 ; 2 ; \"utf-8\"", "01"},  // before the start is the start
             Row{u"1 ; 2 ; \"hex-dump\"", "31 32"},
             Row{u"2.9 ; 1.7 ; \"utf-8\"", "2"},  // whole bytes only
             Row{u"\" Hex-Dump \"", "30 31 32 33 34 35 36 37 38 39"},
         }) {
        EXPECT_EQ(read(u"ten.txt", row.arguments), row.result) << Narrow(row.arguments);
    }
}

TEST_F(Positions, WriteReplacesOverwritesInPlaceOrAppends) {
    struct Row {
        const char16_t* arguments;
        std::string content;
    };
    for (const Row& row : {
             Row{u"", "AB"}, Row{u"\"utf-8\"", "AB"}, Row{u"0 ; \"utf-8\"", "AB3456"},
             Row{u"-1 ; \"utf-8\"", "123456AB"}, Row{u"2", "12AB56"},
             Row{u"-2", "12345AB"},  // from the last byte on
             Row{u"5", "12345AB"},
             Row{u"8", std::string("123456\0\0AB", 10)},  // a gap the system fills
             Row{u"-10", "AB3456"},                       // before the start is the start
             Row{u"\"no-such-encoding\"", "AB"},          // unknown: UTF-8, not refused
         }) {
        writeFile(u"six.txt", "123456");
        EXPECT_EQ(write(u"six.txt", u"\"AB\"", row.arguments), Succeeded())
            << Narrow(row.arguments);
        EXPECT_EQ(bytesOf(u"six.txt"), row.content) << Narrow(row.arguments);
    }
    EXPECT_EQ(write(u"new.txt", u"\"x\"", u"3"), Succeeded());
    EXPECT_EQ(bytesOf(u"new.txt"), std::string("\0\0\0x", 4));
    EXPECT_EQ(write(u"number.txt", u"12.50"), Succeeded());
    EXPECT_EQ(bytesOf(u"number.txt"), "12.5");
}

TEST_F(Positions, AFolderReadsAsItsEntryNames) {
    makeFolder(u"folder");
    writeFile(u"folder\\b", "");
    writeFile(u"folder\\a", "");
    makeFolder(u"folder\\c");
    std::string listing = read(u"folder");
    std::replace(listing.begin(), listing.end(), '\r', ' ');
    std::vector<std::string> names;
    std::istringstream words(listing);
    for (std::string name; words >> name;) {
        names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(std::count(listing.begin(), listing.end(), ' '), 2);
    makeFolder(u"empty");
    EXPECT_EQ(read(u"empty"), "");
}

TEST_F(Positions, RefusalsChangeNothing) {
    writeFile(u"keep.txt", "keep");
    makeFolder(u"folder");
    const std::string invalid = Failed(-50, "Invalid parameters");
    struct Row {
        std::u16string calculation;
        std::string outcome;
    };
    for (const Row& row : {
             Row{u"VFile_Read( \"missing.txt\" )", Failed(-43, "File to read does not exist")},
             Row{u"VFile_Read( \"keep.txt\" ; \"latin-9\" )", invalid},
             Row{u"VFile_Read( \"keep.txt\" ; 0 ; \"most\" )", invalid},
             Row{u"VFile_Read( \"keep.txt\" ; 0 ; \"many\" ; \"utf-8\" )", invalid},
             Row{u"VFile_Read( \"keep.txt\" ; 0 ; 2 ; \"bogus\" )", invalid},
             Row{u"VFile_Read( 5 )", Failed(-50, "Path parameter must be text")},
             Row{u"VFile_Write( \"folder\" ; \"x\" )", Failed(-43, "Cannot write data to folder")},
             Row{u"VFile_Write( \"keep.txt\" ; \"4G\" ; \"hex-dump\" )",
                 Failed(-50, "Hex-dump text holds a character that is not a hex digit")},
             Row{u"VFile_Write( \"keep.txt\" ; \"41 4\" ; \"hex-dump\" )",
                 Failed(-50, "Hex-dump text holds a group with an odd number of digits")},
             Row{u"VFile_Write( \"keep.txt\" ; \"QU*J\" ; \"base64\" )",
                 Failed(-50, "Base64 text holds a character outside the Base64 alphabet")},
             Row{u"VFile_Write( \"keep.txt\" ; \"text\" ; \"png\" )",
                 Failed(-50, "Unknown encoding")},
             Row{u"VFile_Write( \"keep.txt\" ; \"text\" ; 0 ; \"file\" )",
                 Failed(-50, "Unknown encoding")},
         }) {
        EXPECT_EQ(call(row.calculation), row.outcome) << Narrow(row.calculation);
    }
    EXPECT_EQ(snapshot(), (items_test::Tree{{u"keep.txt", "keep"}, {u"folder", "<dir>"}}));
}

}  // namespace
}  // namespace contents_test
