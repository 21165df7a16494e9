// Typed values, value lists and container streams through the plug-in interface.
#include <cstring>

#include "wrapper_test_support.h"

namespace {

using namespace wrapper_test;

int32_t TypeOf(const FmxData* data) {
    return Checked([&](FmxErr& e) { return FM_Data_GetNativeType(data, e); });
}

TEST(DataExports, TextIsStoredAsTheRequestedTypeOrRefused) {
    DataPtr data = NewData();
    EXPECT_EQ(TypeOf(data.get()), 0);
    LocalePtr locale(Checked([](FmxErr& e) { return FM_Locale_Constructor1(1, e); }));
    TextPtr digits = MakeText(u"42.5");
    EXPECT_EQ(
        Checked([&](FmxErr& e) { return FM_Data_SetAsText(data.get(), *digits, *locale, 2, e); }),
        0);
    EXPECT_EQ(TypeOf(data.get()), 2);
    const FmxFixPt* number = Checked([&](FmxErr& e) { return FM_Data_GetAsNumber(data.get(), e); });
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_FixPt_AsFloat(number, e); }), 42.5);

    TextPtr word = MakeText(u"not a date");
    EXPECT_NE(
        Checked([&](FmxErr& e) { return FM_Data_SetAsText(data.get(), *word, *locale, 3, e); }), 0);
    EXPECT_EQ(TypeOf(data.get()), 2) << "a refused text changes nothing";
    EXPECT_EQ(DataText(*data), u"42.5");

    Checked([&](FmxErr& e) { FM_Data_ConvertData(data.get(), 1, e); });
    EXPECT_EQ(TypeOf(data.get()), 1);
    Checked([&](FmxErr& e) { FM_Data_Clear(data.get(), 5, e); });
    EXPECT_EQ(TypeOf(data.get()), 5);
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_Data_IsEmpty(data.get(), e); }));
    Slot bad;
    FM_Data_Clear(data.get(), 8, bad);
    EXPECT_EQ(bad.code(), kFmxErrOther);
}

TEST(DataExports, LentViewsKeepTheirAddressAndFollowTheValue) {
    DataPtr data = NewData();
    FixPtPtr seven = Number(7);
    Checked([&](FmxErr& e) { FM_Data_SetAsNumber(data.get(), *seven, 2, e); });
    const FmxText* first = Checked([&](FmxErr& e) { return FM_Data_GetAsText(data.get(), e); });
    FixPtPtr eight = Number(8);
    Checked([&](FmxErr& e) { FM_Data_SetAsNumber(data.get(), *eight, 2, e); });
    const FmxText* second = Checked([&](FmxErr& e) { return FM_Data_GetAsText(data.get(), e); });
    EXPECT_EQ(first, second);
    EXPECT_EQ(TextChars(*second), u"8");
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_Data_GetAsBoolean(data.get(), e); }));
}

TEST(DataExports, DateTimeValuesKeepTheirKind) {
    DataPtr data = NewData();
    DateTimePtr when(Checked([](FmxErr& e) { return FM_DateTime_Constructor1(e); }));
    Checked([&](FmxErr& e) { return FM_DateTime_SetNormalizedDate1(when.get(), 7, 4, 1976, e); });
    Checked([&](FmxErr& e) { return FM_DateTime_SetNormalizedTime1(when.get(), 9, 5, 0, 0, e); });
    Checked([&](FmxErr& e) { FM_Data_SetDateTime(data.get(), *when, 5, 5, e); });
    EXPECT_EQ(DataText(*data), u"7/4/1976 9:05:00");
    Checked([&](FmxErr& e) { FM_Data_SetAsDate(data.get(), *when, 3, e); });
    EXPECT_EQ(DataText(*data), u"7/4/1976");
    Slot bad;
    FM_Data_SetDateTime(data.get(), *when, 2, 2, bad);
    EXPECT_EQ(bad.code(), kFmxErrOther) << "2 is no date/time kind";
}

TEST(DataVectExports, ListsCopyOnPushAndHandOverOnPop) {
    DataVectPtr list(Checked([](FmxErr& e) { return FM_DataVect_Constructor1(e); }));
    DataPtr value = NewData();
    FixPtPtr five = Number(5);
    Checked([&](FmxErr& e) { FM_Data_SetAsNumber(value.get(), *five, 2, e); });
    Checked([&](FmxErr& e) { FM_DataVect_PushBack(list.get(), *value, e); });
    FixPtPtr six = Number(6);
    Checked([&](FmxErr& e) { FM_Data_SetAsNumber(value.get(), *six, 2, e); });
    Checked([&](FmxErr& e) { FM_DataVect_PushBack(list.get(), *value, e); });
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DataVect_Size(list.get(), e); }), 2u);
    EXPECT_EQ(
        TextChars(*Checked([&](FmxErr& e) { return FM_DataVect_AtAsText(list.get(), 0, e); })),
        u"5");

    Slot outside;
    EXPECT_EQ(FM_DataVect_At(list.get(), 2, outside), nullptr);
    EXPECT_EQ(outside.code(), kFmxErrOther);

    DataPtr popped(Checked([&](FmxErr& e) { return FM_DataVect_PopBack(list.get(), e); }));
    ASSERT_NE(popped, nullptr);
    EXPECT_EQ(DataText(*popped), u"6");
    Checked([&](FmxErr& e) { FM_DataVect_Clear(list.get(), e); });
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_DataVect_IsEmpty(list.get(), e); }));
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_DataVect_PopBack(list.get(), e); }), nullptr);
}

BinaryPtr NewBinary() {
    return BinaryPtr(Checked([](FmxErr& e) { return FM_BinaryData_Constructor1(e); }));
}

TEST(BinaryDataExports, StreamsAreAddedFoundReadAndRemoved) {
    BinaryPtr bin = NewBinary();
    char bytes[] = "file contents";
    QuadCharPtr file = Code("FILE");
    QuadCharPtr pdf = Code("PDF ");
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_BinaryData_Add(bin.get(), *file, 13, bytes, e); }),
              0);
    EXPECT_NE(Checked([&](FmxErr& e) { return FM_BinaryData_Add(bin.get(), *file, 3, bytes, e); }),
              0)
        << "one stream per type";
    EXPECT_NE(Checked([&](FmxErr& e) { return FM_BinaryData_Add(bin.get(), *pdf, 0, bytes, e); }),
              0)
        << "no empty streams";
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_BinaryData_GetIndex(bin.get(), *file, e); }), 0);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_BinaryData_GetIndex(bin.get(), *pdf, e); }), -1);

    char out[8] = {};
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_BinaryData_GetData(bin.get(), 0, 5, 4, out, e); }),
              0);
    EXPECT_STREQ(out, "cont");
    EXPECT_NE(
        Checked([&](FmxErr& e) { return FM_BinaryData_GetData(bin.get(), 0, 10, 4, out, e); }), 0)
        << "a range past the end of the stream";

    QuadCharPtr type = Code("????");
    Checked([&](FmxErr& e) { FM_BinaryData_GetType(bin.get(), 0, *type, e); });
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_QuadChar_operatorEQ(type.get(), *file, e); }));
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_QuadChar_GetMacType(file.get(), e); }),
              0x46494C45u);
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_BinaryData_Remove(bin.get(), *file, e); }));
    EXPECT_FALSE(Checked([&](FmxErr& e) { return FM_BinaryData_Remove(bin.get(), *file, e); }));
}

TEST(BinaryDataExports, FileNameAndPictureSizeGoThroughTheirAccessors) {
    BinaryPtr bin = NewBinary();
    TextPtr name = MakeText(u"Résumé.pdf");
    Checked([&](FmxErr& e) { return FM_BinaryData_AddFNAMData(bin.get(), *name, e); });
    Checked([&](FmxErr& e) { return FM_BinaryData_AddSIZEData(bin.get(), 640, 480, e); });
    TextPtr readBack = MakeText(u"");
    EXPECT_EQ(
        Checked([&](FmxErr& e) { return FM_BinaryData_GetFNAMData(bin.get(), *readBack, e); }), 0);
    EXPECT_EQ(TextChars(*readBack), u"Résumé.pdf");
    int16_t width = 0, height = 0;
    EXPECT_EQ(
        Checked([&](FmxErr& e) { return FM_BinaryData_GetSIZEData(bin.get(), width, height, e); }),
        0);
    EXPECT_EQ(width, 640);
    EXPECT_EQ(height, 480);
    BinaryPtr empty = NewBinary();
    EXPECT_NE(
        Checked([&](FmxErr& e) { return FM_BinaryData_GetFNAMData(empty.get(), *readBack, e); }),
        0);
}

TEST(BinaryDataExports, PiecewiseStreamsAppearOnlyWhenFinished) {
    BinaryPtr bin = NewBinary();
    QuadCharPtr file = Code("FILE");
    uint32_t context = 0;
    Checked([&](FmxErr& e) { return FM_BinaryData_AddBegin(bin.get(), *file, &context, e); });
    char part1[] = "abc";
    char part2[] = "defg";
    Checked([&](FmxErr& e) { return FM_BinaryData_AddAppend(bin.get(), context, 3, part1, e); });
    Checked([&](FmxErr& e) { return FM_BinaryData_AddAppend(bin.get(), context, 4, part2, e); });
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_BinaryData_GetCount(bin.get(), e); }), 0);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_BinaryData_AddFinish(bin.get(), context, e); }),
              0);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_BinaryData_GetTotalSize(bin.get(), e); }), 7u);
    EXPECT_NE(Checked([&](FmxErr& e) { return FM_BinaryData_AddFinish(bin.get(), context, e); }), 0)
        << "a finished context is gone";
}

TEST(BinaryDataExports, AFileBecomesACompleteContainer) {
    // The smallest PNG header the host reads dimensions from: 3 x 2 pixels.
    const unsigned char png[] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A, 0, 0,
                                 0,    13,  'I', 'H', 'D',  'R',  0,    0,    0, 3,
                                 0,    0,   0,   2,   8,    6,    0,    0,    0};
    TextPtr name = MakeText(u"dot.png");
    BinaryPtr bin(Checked([&](FmxErr& e) {
        return FM_BinaryData_Constructor3(*name, sizeof(png), const_cast<unsigned char*>(png), e);
    }));
    QuadCharPtr pngType = Code("PNGf");
    EXPECT_GE(Checked([&](FmxErr& e) { return FM_BinaryData_GetIndex(bin.get(), *pngType, e); }),
              0);
    int16_t width = 0, height = 0;
    Checked([&](FmxErr& e) { return FM_BinaryData_GetSIZEData(bin.get(), width, height, e); });
    EXPECT_EQ(width, 3);
    EXPECT_EQ(height, 2);

    DataPtr data = NewData();
    Checked([&](FmxErr& e) { FM_Data_SetBinaryData(data.get(), *bin, true, e); });
    EXPECT_EQ(TypeOf(data.get()), 6);
    EXPECT_EQ(DataText(*data), u"dot.png");
    const FmxBinaryData* lent =
        Checked([&](FmxErr& e) { return FM_Data_GetBinaryData(data.get(), e); });
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_BinaryData_operatorEQ(lent, *bin, e); }));
}

}  // namespace
