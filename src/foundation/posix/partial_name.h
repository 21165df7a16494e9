#pragma once
// The name a copy is written under beside its target until it is whole:
// "~vf-<process>-<number>.partial", the shape the Windows build uses, so one clean-up rule finds
// what a killed copy left on either system. Kept here, in one place, until the file-contents
// bodies bring the portable temporary-name rule.

#include <string>

namespace slib {

// A fresh bare name, unique within the process.
std::string PartialName();

}  // namespace slib
