// Value lists (function arguments) and row lists (query results).
#include "data_views.h"
#include "guard.h"
#include "objects.h"

using fmwrapper::Guard;
using fmwrapper::Ref;

namespace {

FmxDataVect& VectOf(void* self) {
    return Ref<FmxDataVect>(self);
}
const FmxDataVect& VectOf(const void* self) {
    return Ref<FmxDataVect>(self);
}

// Positions past the end are a failure of the call, not undefined behaviour.
const FmxData& At(const void* self, uint32_t position) {
    const FmxDataVect& vect = VectOf(self);
    if (position >= vect.items.size())
        throw std::out_of_range("value list position");
    return *vect.items[position];
}

}  // namespace

extern "C" {

FmxDataVect* FM_DataVect_Constructor1(FmxErr& err) {
    return Guard(err, [] { return new FmxDataVect(); });
}

void FM_DataVect_Delete(void* self, FmxErr& err) {
    Guard(err, [&] { delete static_cast<FmxDataVect*>(self); });
}

uint32_t FM_DataVect_Size(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<uint32_t>(VectOf(self).items.size()); });
}

void FM_DataVect_Clear(void* self, FmxErr& err) {
    Guard(err, [&] { VectOf(self).items.clear(); });
}

bool FM_DataVect_IsEmpty(const void* self, FmxErr& err) {
    return Guard(err, [&] { return VectOf(self).items.empty(); });
}

// The list keeps its own copy.
void FM_DataVect_PushBack(void* self, const FmxData& data, FmxErr& err) {
    Guard(err, [&] {
        auto copy = std::make_unique<FmxData>(Ref(data));
        VectOf(self).items.push_back(std::move(copy));
    });
}

// The caller owns the returned value and frees it with FM_Data_Delete; null when empty.
FmxData* FM_DataVect_PopBack(void* self, FmxErr& err) {
    return Guard(err, [&]() -> FmxData* {
        FmxDataVect& vect = VectOf(self);
        if (vect.items.empty())
            return nullptr;
        FmxData* last = vect.items.back().release();
        vect.items.pop_back();
        return last;
    });
}

const FmxData* FM_DataVect_At(const void* self, uint32_t position, FmxErr& err) {
    return Guard(err, [&] { return &At(self, position); });
}

const FmxText* FM_DataVect_AtAsText(const void* self, uint32_t position, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::TextView(At(self, position)); });
}

const FmxFixPt* FM_DataVect_AtAsNumber(const void* self, uint32_t position, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::NumberView(At(self, position)); });
}

const FmxDateTime* FM_DataVect_AtAsDate(const void* self, uint32_t position, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::DateView(At(self, position)); });
}

const FmxDateTime* FM_DataVect_AtAsTime(const void* self, uint32_t position, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::TimeView(At(self, position)); });
}

const FmxDateTime* FM_DataVect_AtAsTimeStamp(const void* self, uint32_t position, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::TimestampView(At(self, position)); });
}

bool FM_DataVect_AtAsBoolean(const void* self, uint32_t position, FmxErr& err) {
    return Guard(err, [&] { return At(self, position).value.AsBoolean(); });
}

const FmxBinaryData* FM_DataVect_AtAsBinaryData(const void* self, uint32_t position, FmxErr& err) {
    return Guard(err, [&] { return fmwrapper::BinaryView(At(self, position)); });
}

FmxRowVect* FM_RowVect_Constructor1(FmxErr& err) {
    return Guard(err, [] { return new FmxRowVect(); });
}

void FM_RowVect_Delete(void* self, FmxErr& err) {
    Guard(err, [&] { delete static_cast<FmxRowVect*>(self); });
}

uint32_t FM_RowVect_Size(const void* self, FmxErr& err) {
    return Guard(err, [&] { return static_cast<uint32_t>(Ref<FmxRowVect>(self).rows.size()); });
}

bool FM_RowVect_IsEmpty(const void* self, FmxErr& err) {
    return Guard(err, [&] { return Ref<FmxRowVect>(self).rows.empty(); });
}

const FmxDataVect* FM_RowVect_At(const void* self, uint32_t position, FmxErr& err) {
    return Guard(err, [&] {
        const FmxRowVect& rows = Ref<FmxRowVect>(self);
        if (position >= rows.rows.size())
            throw std::out_of_range("row position");
        return static_cast<const FmxDataVect*>(rows.rows[position].get());
    });
}

}  // extern "C"
