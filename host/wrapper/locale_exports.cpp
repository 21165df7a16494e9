// Locales. The host core has one set of formatting rules, so a locale is only its type number,
// carried along with the values that use it.
#include "guard.h"
#include "objects.h"

using fmwrapper::Guard;
using fmwrapper::Ref;

extern "C" {

FmxLocale* FM_Locale_Constructor1(int32_t inputType, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::New(FmxLocale{inputType}); });
}

FmxLocale* FM_Locale_Constructor2(const FmxLocale& copyConstruct, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::New(Ref(copyConstruct)); });
}

FmxLocale* FM_Locale_operatorAS(void* self, const FmxLocale& rhs, FmxErr& err) {
    return Guard(err, [&] {
        FmxLocale& target = Ref<FmxLocale>(self);
        target.type = Ref(rhs).type;
        return &target;
    });
}

void FM_Locale_Delete(void* self, FmxErr& err) {
    Guard(err, [&] { delete static_cast<FmxLocale*>(self); });
}

}  // extern "C"
