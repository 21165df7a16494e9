// Container contents: typed streams of bytes, plus the file-name (FNAM) and picture-size (SIZE)
// streams, whose layout the host core defines.
#include <algorithm>
#include <limits>

#include "guard.h"
#include "objects.h"

using fmhost::Container;
using fmwrapper::Guard;
using fmwrapper::Ref;

namespace {

Container& ContainerOf(void* self) {
    return Ref<FmxBinaryData>(self).container;
}
const Container& ContainerOf(const void* self) {
    return Ref<FmxBinaryData>(self).container;
}

const uint8_t* BytesOf(const void* buffer, uint32_t amount) {
    if (buffer == nullptr && amount != 0)
        throw std::invalid_argument("null buffer");
    return static_cast<const uint8_t*>(buffer);
}

}  // namespace

extern "C" {

FmxBinaryData* FM_BinaryData_Constructor1(FmxErr& err) {
    return Guard(err, [] { return fmwrapper::New(FmxBinaryData{}); });
}

FmxBinaryData* FM_BinaryData_Constructor2(const FmxBinaryData& sourceData, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::New(FmxBinaryData{Ref(sourceData).container}); });
}

// A whole container for a file's bytes: the host picks the streams from the name's extension.
FmxBinaryData* FM_BinaryData_Constructor3(const FmxText& name, uint32_t amount, void* buffer,
                                          FmxErr& err) {
    return Guard(err, [&] {
        return fmwrapper::New(
            FmxBinaryData{Container::FromFile(Ref(name).text, BytesOf(buffer, amount), amount)});
    });
}

FmxBinaryData* FM_BinaryData_Constructor4(const FmxText& name, uint32_t* context, FmxErr& err) {
    return Guard(err, [&] {
        if (context == nullptr)
            throw std::invalid_argument("null context");
        auto created = std::make_unique<FmxBinaryData>();
        if (created->container.BeginFile(Ref(name).text, *context) != 0) {
            throw std::runtime_error("cannot begin the file");
        }
        return created.release();
    });
}

void FM_BinaryData_Delete(void* self, FmxErr& err) {
    Guard(err, [&] { delete static_cast<FmxBinaryData*>(self); });
}

FmxBinaryData* FM_BinaryData_operatorAS(void* self, const FmxBinaryData& source, FmxErr& err) {
    return Guard(err, [&] {
        FmxBinaryData& target = Ref<FmxBinaryData>(self);
        target.container = Ref(source).container;
        return &target;
    });
}

bool FM_BinaryData_operatorEQ(const void* self, const FmxBinaryData& compareData, FmxErr& err) {
    return Guard(err, [&] { return ContainerOf(self) == Ref(compareData).container; });
}

bool FM_BinaryData_operatorNE(const void* self, const FmxBinaryData& compareData, FmxErr& err) {
    return Guard(err, [&] { return ContainerOf(self) != Ref(compareData).container; });
}

int32_t FM_BinaryData_GetCount(const void* self, FmxErr& err) {
    return Guard(err, [&] { return ContainerOf(self).Count(); });
}

int32_t FM_BinaryData_GetIndex(const void* self, const FmxQuadChar& dataType, FmxErr& err) {
    return Guard(err, [&] { return ContainerOf(self).IndexOf(Ref(dataType).code); });
}

uint32_t FM_BinaryData_GetTotalSize(const void* self, FmxErr& err) {
    return Guard(err, [&] {
        const uint64_t total = ContainerOf(self).TotalSize();
        return static_cast<uint32_t>(
            std::min<uint64_t>(total, std::numeric_limits<uint32_t>::max()));
    });
}

void FM_BinaryData_GetType(const void* self, int32_t index, FmxQuadChar& dataType, FmxErr& err) {
    Guard(err, [&] {
        const Container& container = ContainerOf(self);
        if (container.StreamAt(index) == nullptr)
            throw std::out_of_range("stream index");
        Ref(dataType).code = container.TypeAt(index);
    });
}

uint32_t FM_BinaryData_GetSize(const void* self, int32_t index, FmxErr& err) {
    return Guard(err, [&] { return ContainerOf(self).SizeAt(index); });
}

FmxErrcode FM_BinaryData_GetData(const void* self, int32_t index, uint32_t offset, uint32_t amount,
                                 void* buffer, FmxErr& err) {
    return Guard(err, [&] {
        if (buffer == nullptr && amount != 0)
            throw std::invalid_argument("null buffer");
        return ContainerOf(self).Read(index, offset, amount, buffer);
    });
}

FmxErrcode FM_BinaryData_Add(void* self, const FmxQuadChar& dataType, uint32_t amount, void* buffer,
                             FmxErr& err) {
    return Guard(err, [&] {
        return ContainerOf(self).Add(Ref(dataType).code, BytesOf(buffer, amount), amount);
    });
}

bool FM_BinaryData_Remove(void* self, const FmxQuadChar& dataType, FmxErr& err) {
    return Guard(err, [&] { return ContainerOf(self).Remove(Ref(dataType).code); });
}

void FM_BinaryData_RemoveAll(void* self, FmxErr& err) {
    Guard(err, [&] { ContainerOf(self).RemoveAll(); });
}

FmxErrcode FM_BinaryData_GetFNAMData(const void* self, FmxText& filepathlist, FmxErr& err) {
    return Guard(err, [&] { return ContainerOf(self).GetFileName(Ref(filepathlist).text); });
}

FmxErrcode FM_BinaryData_AddFNAMData(void* self, const FmxText& filepathlist, FmxErr& err) {
    return Guard(err, [&] { return ContainerOf(self).AddFileName(Ref(filepathlist).text); });
}

FmxErrcode FM_BinaryData_GetSIZEData(const void* self, int16_t& width, int16_t& height,
                                     FmxErr& err) {
    return Guard(err, [&] { return ContainerOf(self).GetPictureSize(Ref(width), Ref(height)); });
}

FmxErrcode FM_BinaryData_AddSIZEData(void* self, int16_t width, int16_t height, FmxErr& err) {
    return Guard(err, [&] { return ContainerOf(self).AddPictureSize(width, height); });
}

FmxErrcode FM_BinaryData_AddBegin(void* self, const FmxQuadChar& dataType, uint32_t* context,
                                  FmxErr& err) {
    return Guard(err, [&] {
        if (context == nullptr)
            throw std::invalid_argument("null context");
        return ContainerOf(self).BeginStream(Ref(dataType).code, *context);
    });
}

FmxErrcode FM_BinaryData_AddAppend(void* self, uint32_t context, uint32_t amount, void* buffer,
                                   FmxErr& err) {
    return Guard(err, [&] {
        return ContainerOf(self).AppendStream(context, BytesOf(buffer, amount), amount);
    });
}

FmxErrcode FM_BinaryData_AddFinish(void* self, uint32_t context, FmxErr& err) {
    return Guard(err, [&] { return ContainerOf(self).FinishStream(context); });
}

}  // extern "C"
