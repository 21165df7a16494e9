#include "core/container.h"

#include <cstring>
#include <limits>

#include "core/case_mapping.h"
#include "core/picture_size.h"

namespace fmhost {

namespace ce = container_error;

namespace {

constexpr uint64_t kMaxStreamSize = std::numeric_limits<uint32_t>::max();

// The picture stream for a file name's extension, or FILE.
TypeCode StreamTypeFor(const Text& name) {
    const std::u16string lower = ToLower(name.Chars());
    const size_t dot = lower.rfind(u'.');
    const std::u16string extension = dot == std::u16string::npos ? u"" : lower.substr(dot + 1);
    if (extension == u"jpg" || extension == u"jpeg")
        return stream_type::kJpeg;
    if (extension == u"png")
        return stream_type::kPng;
    if (extension == u"gif")
        return stream_type::kGif;
    if (extension == u"bmp")
        return stream_type::kBmp;
    return stream_type::kFile;
}

}  // namespace

Container Container::FromFile(const Text& name, const uint8_t* bytes, size_t size) {
    Container out;
    TypeCode type = StreamTypeFor(name);
    if (type != stream_type::kFile) {
        const std::optional<PictureSize> picture = ReadPictureSize(bytes, size);
        if (picture && picture->width <= 0x7FFF && picture->height <= 0x7FFF) {
            out.AddPictureSize(static_cast<int16_t>(picture->width),
                               static_cast<int16_t>(picture->height));
        } else {
            type = stream_type::kFile;  // not the picture its name claims
        }
    }
    out.Add(type, bytes, size);
    out.AddFileName(name);
    return out;
}

int32_t Container::IndexOf(TypeCode type) const {
    for (size_t i = 0; i < streams_.size(); ++i) {
        if (streams_[i].type == type)
            return static_cast<int32_t>(i);
    }
    return -1;
}

uint64_t Container::TotalSize() const {
    uint64_t total = 0;
    for (const Stream& stream : streams_)
        total += stream.bytes->size();
    return total;
}

const Container::Stream* Container::StreamAt(int32_t index) const {
    if (index < 0 || index >= Count())
        return nullptr;
    return &streams_[static_cast<size_t>(index)];
}

TypeCode Container::TypeAt(int32_t index) const {
    const Stream* stream = StreamAt(index);
    return stream ? stream->type : TypeCode();
}

uint32_t Container::SizeAt(int32_t index) const {
    const Stream* stream = StreamAt(index);
    return stream ? static_cast<uint32_t>(stream->bytes->size()) : 0;
}

const Bytes* Container::BytesOf(TypeCode type) const {
    const Stream* stream = StreamAt(IndexOf(type));
    return stream ? stream->bytes.get() : nullptr;
}

int16_t Container::Read(int32_t index, uint32_t offset, uint32_t amount, void* buffer) const {
    const Stream* stream = StreamAt(index);
    if (!stream || uint64_t(offset) + amount > stream->bytes->size())
        return ce::kBadIndex;
    if (amount > 0)
        std::memcpy(buffer, stream->bytes->data() + offset, amount);
    return ce::kOk;
}

int16_t Container::Add(TypeCode type, const void* bytes, size_t size) {
    if (size == 0)
        return ce::kEmptyStream;
    if (size > kMaxStreamSize)
        return ce::kTooLarge;
    if (IndexOf(type) >= 0)
        return ce::kDuplicateType;
    const uint8_t* begin = static_cast<const uint8_t*>(bytes);
    streams_.push_back({type, std::make_shared<const Bytes>(begin, begin + size)});
    return ce::kOk;
}

bool Container::Remove(TypeCode type) {
    const int32_t index = IndexOf(type);
    if (index < 0)
        return false;
    streams_.erase(streams_.begin() + index);
    return true;
}

void Container::RemoveAll() {
    streams_.clear();
}

int16_t Container::AddFileName(const Text& fileName) {
    const std::string utf8 = fileName.ToUtf8();
    return Add(stream_type::kFileName, utf8.data(), utf8.size());
}

int16_t Container::GetFileName(Text& fileName) const {
    const Bytes* bytes = BytesOf(stream_type::kFileName);
    if (!bytes)
        return ce::kNoSuchStream;
    fileName = Text::FromUtf8(
        std::string_view(reinterpret_cast<const char*>(bytes->data()), bytes->size()));
    return ce::kOk;
}

int16_t Container::AddPictureSize(int16_t width, int16_t height) {
    const uint16_t w = static_cast<uint16_t>(width);
    const uint16_t h = static_cast<uint16_t>(height);
    const uint8_t layout[4] = {uint8_t(w & 0xFF), uint8_t(w >> 8), uint8_t(h & 0xFF),
                               uint8_t(h >> 8)};
    return Add(stream_type::kPictureSize, layout, sizeof layout);
}

int16_t Container::GetPictureSize(int16_t& width, int16_t& height) const {
    const Bytes* bytes = BytesOf(stream_type::kPictureSize);
    if (!bytes)
        return ce::kNoSuchStream;
    if (bytes->size() != 4)
        return ce::kMalformed;
    const Bytes& b = *bytes;
    width = static_cast<int16_t>(uint16_t(b[0] | (b[1] << 8)));
    height = static_cast<int16_t>(uint16_t(b[2] | (b[3] << 8)));
    return ce::kOk;
}

int16_t Container::BeginStream(TypeCode type, uint32_t& context) {
    if (IndexOf(type) >= 0)
        return ce::kDuplicateType;
    context = nextContext_++;
    pending_[context] = Pending{false, type, Text(), Bytes()};
    return ce::kOk;
}

int16_t Container::BeginFile(const Text& name, uint32_t& context) {
    context = nextContext_++;
    pending_[context] = Pending{true, TypeCode(), name, Bytes()};
    return ce::kOk;
}

int16_t Container::AppendStream(uint32_t context, const void* bytes, size_t size) {
    auto found = pending_.find(context);
    if (found == pending_.end())
        return ce::kBadContext;
    Bytes& data = found->second.bytes;
    if (data.size() + uint64_t(size) > kMaxStreamSize)
        return ce::kTooLarge;
    const uint8_t* begin = static_cast<const uint8_t*>(bytes);
    data.insert(data.end(), begin, begin + size);
    return ce::kOk;
}

int16_t Container::FinishStream(uint32_t context) {
    auto found = pending_.find(context);
    if (found == pending_.end())
        return ce::kBadContext;
    Pending pending = std::move(found->second);
    pending_.erase(found);
    if (!pending.isFile)
        return Add(pending.type, pending.bytes.data(), pending.bytes.size());
    const Container file = FromFile(pending.name, pending.bytes.data(), pending.bytes.size());
    for (const Stream& stream : file.streams_) {
        if (IndexOf(stream.type) >= 0)
            return ce::kDuplicateType;
    }
    streams_.insert(streams_.end(), file.streams_.begin(), file.streams_.end());
    return ce::kOk;
}

bool operator==(const Container& a, const Container& b) {
    if (a.streams_.size() != b.streams_.size())
        return false;
    for (size_t i = 0; i < a.streams_.size(); ++i) {
        if (a.streams_[i].type != b.streams_[i].type ||
            *a.streams_[i].bytes != *b.streams_[i].bytes) {
            return false;
        }
    }
    return true;
}

}  // namespace fmhost
