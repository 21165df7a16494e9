// What a function handler uses to turn its path arguments into native paths. One context per
// call: the anchor is asked of the host once, when the first path needs it, and never kept.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "fmx_functions.h"
#include "foundation/path.h"
#include "foundation/utf16_string.h"

namespace bridge {

class PathContext {
  public:
    explicit PathContext(const FmxExprEnv& env) : env_(env) {}

    // The anchor of this call (ResolveAnchor), computed on first use.
    const slib::Path& anchor();

    // Argument `index` checked to be text (-50 "Path parameter must be text"), then resolved
    // against the anchor: the check comes before the host is asked for the anchor. A path that
    // resolves to nothing (an "fsspec:" form naming no item) is refused: -43 "Empty string is
    // not valid path".
    slib::String pathArgument(const FmxDataVect& args, uint32_t index);

    // A path argument naming an item the call may create: pathArgument, then, when nothing is
    // there yet, a name Windows would not let be used afterwards is refused (-50, the problem
    // named) before anything is made.
    slib::String newItemArgument(const FmxDataVect& args, uint32_t index);

    // Arguments 0 and 1 as a source and a target path, both checked to be text before either is
    // resolved, so a wrong second argument fails before the host is asked anything. The target
    // is a new item (newItemArgument).
    std::pair<slib::String, slib::String> sourceAndTarget(const FmxDataVect& args);

    // -50 `message` when `path` is the anchor folder (the database's own) or a folder holding it:
    // what a delete or move must never take. Nothing to refuse without an anchor folder.
    void refuseAnchorHolder(const slib::String& path, const char* message);

  private:
    const FmxExprEnv& env_;
    std::optional<slib::Path> anchor_;
};

}  // namespace bridge
