#include "shell/host_objects.h"

#include <utility>

#include "shell/host_error.h"

namespace fmlib {

namespace {

// The object is owned before the slot is checked, so one the host hands back together with a
// failure report is still released. A host that gives nothing without saying why is treated as
// out of memory.
template <typename Owner, typename Constructor, typename... Args>
Owner Construct(Constructor constructor, Args&&... args) {
    FmxErr slot{kFmxErrSlotVersion, kFmxErrNone};
    Owner owner(constructor(std::forward<Args>(args)..., slot));
    ThrowIfHostFailed(slot);
    if (!owner) {
        throw HostAllocationError();
    }
    return owner;
}

}  // namespace

TextPtr NewText() {
    return Construct<TextPtr>(FM_Text_Constructor1);
}

DataPtr NewData() {
    return Construct<DataPtr>(FM_Data_Constructor1);
}

QuadCharPtr NewQuadChar() {
    return Construct<QuadCharPtr>(FM_QuadChar_Constructor1);
}

QuadCharPtr NewQuadChar(char c0, char c1, char c2, char c3) {
    return Construct<QuadCharPtr>(FM_QuadChar_Constructor2, c0, c1, c2, c3);
}

FixPtPtr NewFixPt(int32_t value, int32_t precision) {
    return Construct<FixPtPtr>(FM_FixPt_Constructor1, value, precision);
}

CharacterStylePtr NewCharacterStyle() {
    return Construct<CharacterStylePtr>(FM_CharacterStyle_Constructor1);
}

ColorPtr NewColor(uint8_t red, uint8_t green, uint8_t blue) {
    return Construct<ColorPtr>(FM_Color_Constructor2, red, green, blue, uint8_t{255});
}

BinaryDataPtr NewBinaryData() {
    return Construct<BinaryDataPtr>(FM_BinaryData_Constructor1);
}

DateTimePtr NewDateTime() {
    return Construct<DateTimePtr>(FM_DateTime_Constructor1);
}

}  // namespace fmlib
