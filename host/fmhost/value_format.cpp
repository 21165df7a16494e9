#include "value_format.h"

#include <vector>

#include "host_objects.h"

namespace fmhost::driver {
namespace {

constexpr int32_t kContainerType = 6;

std::string TypeName(const FmxQuadChar& type) {
    std::string name;
    for (int i = 0; i < 4; ++i) {
        const uint8_t c =
            Checked([&](FmxErr& err) { return FM_QuadChar_operatorCAR(&type, i, err); });
        name.push_back(static_cast<char>(c));
    }
    while (!name.empty() && name.back() == ' ')
        name.pop_back();  // "PDF " prints as PDF
    return name;
}

std::string StreamText(const FmxBinaryData& container, int32_t index, const std::string& type) {
    if (type == "FNAM") {
        TextPtr name = MakeText(u"");
        Checked([&](FmxErr& err) { return FM_BinaryData_GetFNAMData(&container, *name, err); });
        return ToUtf8(TextChars(*name));
    }
    if (type == "SIZE") {
        int16_t width = 0;
        int16_t height = 0;
        Checked(
            [&](FmxErr& err) { return FM_BinaryData_GetSIZEData(&container, width, height, err); });
        return std::to_string(width) + "x" + std::to_string(height);
    }
    const uint32_t size =
        Checked([&](FmxErr& err) { return FM_BinaryData_GetSize(&container, index, err); });
    return std::to_string(size) + (size == 1 ? " byte" : " bytes");
}

}  // namespace

std::string FormatContainer(const FmxBinaryData& container) {
    const int32_t count =
        Checked([&](FmxErr& err) { return FM_BinaryData_GetCount(&container, err); });
    QuadCharPtr type(Checked([](FmxErr& err) { return FM_QuadChar_Constructor1(err); }));
    std::string out = "[";
    for (int32_t i = 0; i < count; ++i) {
        Checked([&](FmxErr& err) { FM_BinaryData_GetType(&container, i, *type, err); });
        const std::string name = TypeName(*type);
        if (i > 0)
            out += ", ";
        out += name + ":" + StreamText(container, i, name);
    }
    return out + "]";
}

std::string FormatValue(const FmxData& data) {
    const int32_t type = Checked([&](FmxErr& err) { return FM_Data_GetNativeType(&data, err); });
    if (type == kContainerType) {
        const FmxBinaryData* container =
            Checked([&](FmxErr& err) { return FM_Data_GetBinaryData(&data, err); });
        return FormatContainer(*container);
    }
    const FmxText* text = Checked([&](FmxErr& err) { return FM_Data_GetAsText(&data, err); });
    return ToUtf8(TextChars(*text));
}

}  // namespace fmhost::driver
