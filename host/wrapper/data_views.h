// The borrowed objects a Data value lends out (as text, number, date, ...). Each is kept inside
// the value and refreshed on every request, so its address stays the same.
#pragma once

#include "objects.h"

namespace fmwrapper {

const FmxText* TextView(const FmxData& data);
const FmxFixPt* NumberView(const FmxData& data);
const FmxDateTime* DateView(const FmxData& data);
const FmxDateTime* TimeView(const FmxData& data);
const FmxDateTime* TimestampView(const FmxData& data);
const FmxBinaryData* BinaryView(const FmxData& data);
const FmxLocale* LocaleView(const FmxData& data);

}  // namespace fmwrapper
