// Owned host objects for the driver side: each is made and freed through the plug-in
// interface, exactly as a plug-in would, and every call's error slot is checked.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "fmx_functions.h"

namespace fmhost::driver {

// A fresh error slot per call; a failure reported in it becomes an exception.
class ErrorSlot {
  public:
    FmxErr& operator*() { return slot_; }
    operator FmxErr&() { return slot_; }  // NOLINT: passed straight to the interface
    void Check() const {
        if (slot_.code == kFmxErrMemory)
            throw std::bad_alloc();
        if (slot_.code != kFmxErrNone) {
            throw std::runtime_error("host call failed with error-slot code " +
                                     std::to_string(slot_.code));
        }
    }

  private:
    FmxErr slot_{kFmxErrSlotVersion, kFmxErrNone};
};

template <typename T, void (*Delete)(void*, FmxErr&)>
struct HostDeleter {
    void operator()(T* object) const {
        FmxErr err{kFmxErrSlotVersion, kFmxErrNone};
        Delete(object, err);
    }
};

using TextPtr = std::unique_ptr<FmxText, HostDeleter<FmxText, FM_Text_Delete>>;
using DataPtr = std::unique_ptr<FmxData, HostDeleter<FmxData, FM_Data_Delete>>;
using ExprEnvPtr = std::unique_ptr<FmxExprEnv, HostDeleter<FmxExprEnv, FM_ExprEnv_Delete>>;
using QuadCharPtr = std::unique_ptr<FmxQuadChar, HostDeleter<FmxQuadChar, FM_QuadChar_Delete>>;

// Runs one interface call with its own slot and checks it.
template <typename Call>
auto Checked(Call&& call) {
    ErrorSlot err;
    if constexpr (std::is_void_v<decltype(call(*err))>) {
        call(*err);
        err.Check();
    } else {
        auto result = call(*err);
        err.Check();
        return result;
    }
}

TextPtr MakeText(const std::u16string& chars);
std::u16string TextChars(const FmxText& text);

}  // namespace fmhost::driver
