// Archives built and unpacked in memory, and a target that records what extraction made of them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "archive/extract_target.h"

namespace archive_test {

struct Item {
    std::u16string name;
    std::string content;  // ignored for folders
    bool folder = false;
    int64_t listedSize = -1;  // the size the writer is told; -1: the content's own
};
// An archive written by ZipWriter with two workers, items in the given order.
std::vector<uint8_t> Build(const std::vector<Item>& items);

// What unpacking left: "/"-joined path to content ("<dir>" for folders), plus the failure
// ("<code> <message>", empty on success) and how many files were thrown away unfinished.
struct Outcome {
    std::map<std::string, std::string> tree;
    std::string failure;
    int discarded = 0;
};
Outcome Extract(const std::vector<uint8_t>& archive);

// Keeps `archive` as a seed of the reader's fuzz target (native builds only).
void SaveSeed(const std::string& name, const std::vector<uint8_t>& archive);

// Deterministic filler: compressible text or incompressible bytes.
std::string Text(size_t size, uint32_t seed);
std::string Noise(size_t size, uint32_t seed);

}  // namespace archive_test
