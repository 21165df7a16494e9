#include "shell/container_value.h"

#include "foundation/utf16_string.h"

namespace fmlib {

const ContainerValue::Stream* ContainerValue::findStream(const std::string& type) const {
    for (const Stream& stream : streams_) {
        if (stream.type == type) {
            return &stream;
        }
    }
    return nullptr;
}

std::shared_ptr<const slib::String> ContainerValue::description() const {
    std::string text = "container:";
    for (const Stream& stream : streams_) {
        text += ' ';
        text += stream.type;
    }
    return slib::String::FromUtf8(text);
}

}  // namespace fmlib
