// Every entry point reports failures through the error slot and never lets one escape: null
// objects, bad arguments and injected faults.
#include <string>

#include "fmhost/host_driver.h"
#include "wrapper_test_support.h"

namespace {

using namespace wrapper_test;

// The binary interface passes references as pointers; a C caller can pass null for them.
using FixPtAddFn = void (*)(const void*, const FmxFixPt*, FmxFixPt*, FmxErr&);
using EvaluateFn = FmxErrcode (*)(const void*, const FmxText*, FmxData*, FmxErr&);

// As a C caller sees an export: with pointer parameters.
template <typename Fn, typename Declared>
Fn Export(Declared* function) {
    return reinterpret_cast<Fn>(reinterpret_cast<void*>(function));
}

TEST(ErrorSlot, NullObjectsAreAFailureOfTheCall) {
    Slot size;
    EXPECT_EQ(FM_Text_GetSize(nullptr, size), 0u);
    EXPECT_EQ(size.code(), kFmxErrOther);

    Slot text;
    EXPECT_EQ(FM_Data_GetAsText(nullptr, text), nullptr);
    EXPECT_EQ(text.code(), kFmxErrOther);

    FixPtPtr one = Number(1);
    Slot add;
    Export<FixPtAddFn> (&FM_FixPt_Add)(one.get(), one.get(), nullptr, add);
    EXPECT_EQ(add.code(), kFmxErrOther);

    ExprEnvPtr env(Checked([](FmxErr& e) { return FM_ExprEnv_Constructor1(e); }));
    Slot evaluate;
    Export<EvaluateFn> (&FM_ExprEnv_Evaluate)(env.get(), nullptr, nullptr, evaluate);
    EXPECT_EQ(evaluate.code(), kFmxErrOther);

    Slot assign;
    TextPtr target = MakeText(u"kept");
    FM_Text_AssignUnicode(target.get(), nullptr, assign);
    EXPECT_EQ(assign.code(), kFmxErrOther);
    EXPECT_EQ(TextChars(*target), u"kept");
}

TEST(ErrorSlot, BadArgumentsAreReportedNotObeyed) {
    QuadCharPtr code = Code("FNAM");
    Slot index;
    EXPECT_EQ(FM_QuadChar_operatorCAR(code.get(), 4, index), 0);
    EXPECT_EQ(index.code(), kFmxErrOther);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_QuadChar_operatorCAR(code.get(), 3, e); }), 'M');

    BinaryPtr bin(Checked([](FmxErr& e) { return FM_BinaryData_Constructor1(e); }));
    Slot type;
    FM_BinaryData_GetType(bin.get(), 0, *code, type);
    EXPECT_EQ(type.code(), kFmxErrOther);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_QuadChar_GetMacType(code.get(), e); }),
              0x464E414Du)
        << "the code is left as it was";
}

// A function registered by the test itself runs as plug-in code, so injected faults apply.
int32_t gCodes[3];
FmxErrcode ThreeCalls(int16_t, const FmxExprEnv&, const FmxDataVect&, FmxData&) {
    for (int32_t& code : gCodes) {
        Slot slot;
        FmxText* t = FM_Text_Constructor1(slot);
        code = slot.code();
        if (t != nullptr) {
            Slot release;
            FM_Text_Delete(t, release);
        }
    }
    return 0;
}

TEST(ErrorSlot, InjectedFaultsHitOnlyPluginCode) {
    fmhost::driver::Host host;
    QuadCharPtr id = Code("TsEs");
    TextPtr name = MakeText(u"T_ThreeCalls");
    ASSERT_EQ(Checked([&](FmxErr& e) {
                  return FM_ExprEnv_RegisterExternalFunction(*id, 1, *name, *name, 0, 0, 0,
                                                             ThreeCalls, e);
              }),
              0);
    host.FailCall(3, kFmxErrMemory, kFmhostFaultEachFunctionCall);
    TextPtr mine = MakeText(u"host-side calls are never counted");
    EXPECT_EQ(host.Evaluate(u"T_ThreeCalls ( )").error, 0);
    // Calls 1 to 6 of the function: new, delete, new (the 3rd: fails), new, delete.
    EXPECT_EQ(gCodes[0], 0);
    EXPECT_EQ(gCodes[1], kFmxErrMemory);
    EXPECT_EQ(gCodes[2], 0);
    host.FailCall(0, 0, kFmhostFaultEachFunctionCall);
    Checked([&](FmxErr& e) { return FM_ExprEnv_UnRegisterExternalFunction(*id, 1, e); });
}

}  // namespace
