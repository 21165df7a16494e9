// A minute of the cases as Windows' SYSTEMTIME, and back.
#pragma once

#include <windows.h>

#include "attributes/zone_dates.h"

namespace items_test {

inline SYSTEMTIME ToSystemTime(const Minute& time) {
    SYSTEMTIME system{};
    system.wYear = static_cast<WORD>(time.year);
    system.wMonth = static_cast<WORD>(time.month);
    system.wDay = static_cast<WORD>(time.day);
    system.wHour = static_cast<WORD>(time.hour);
    system.wMinute = static_cast<WORD>(time.minute);
    return system;
}

inline std::string FormatSystemTime(const SYSTEMTIME& time) {
    return Format({time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute});
}

}  // namespace items_test
