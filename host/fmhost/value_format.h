// How fmhost prints a calculation's value: as UTF-8 text, every character as it is (a carriage
// return stays "\r"); a container as its stream list, e.g. [FNAM:a.txt, FILE:12 bytes].
#pragma once

#include <string>

#include "fmx_functions.h"

namespace fmhost::driver {

std::string FormatValue(const FmxData& data);
std::string FormatContainer(const FmxBinaryData& container);

std::string ToUtf8(const std::u16string& text);
std::u16string FromUtf8(const std::string& text);

}  // namespace fmhost::driver
