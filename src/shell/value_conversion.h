// Host values to foundation values. Only a timestamp becomes a date: a date-only or time-only
// value is taken as text on purpose, as is anything of a type without its own mapping.
#pragma once

#include <memory>
#include <string>

#include "fmx_functions.h"
#include "foundation/attributed_string.h"
#include "foundation/date.h"
#include "foundation/object.h"
#include "foundation/utf16_string.h"
#include "shell/container_value.h"

namespace fmlib {

// Number -> slib::Number, timestamp -> slib::Date, container -> fmlib::ContainerValue, anything
// else -> slib::AttributedString. With an environment, a styled text's font id is turned into
// the font's name; without one the font is left out.
std::shared_ptr<slib::Object> ToFoundationValue(const FmxData& data,
                                                const FmxExprEnv* env = nullptr);

// The host's date and time fields as they stand (wall-clock time, no zone applied).
std::shared_ptr<slib::Date> ToFoundationDate(const FmxDateTime& value);

// The four-character type of the container's stream at `index`, e.g. "JPEG", "PDF ".
std::string ContainerStreamType(const FmxBinaryData& data, int32_t index);

// Every stream of a container, in the host's order.
std::shared_ptr<ContainerValue> ToContainerValue(const FmxBinaryData& data);

// Exactly the text's UTF-16 units.
std::shared_ptr<slib::String> ToFoundationString(const FmxText& text);

// The plain string plus the character style at position 0 (the only one read). `fontSource` and
// `env` resolve font ids; either may be null, and then no font is set.
std::shared_ptr<slib::AttributedString> ToFoundationStyledText(const FmxText& text,
                                                               const FmxData* fontSource = nullptr,
                                                               const FmxExprEnv* env = nullptr);

}  // namespace fmlib
