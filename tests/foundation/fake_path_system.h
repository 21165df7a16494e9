#pragma once
// Test double for the system queries of slib::Path: answers from tables the test fills in.

#include <map>
#include <optional>
#include <set>
#include <string>

#include "foundation/path_system.h"

namespace slib::testing {

class FakePathSystem : public PathSystem {
  public:
    std::u16string current = u"C:\\Work";
    std::u16string profile = u"C:\\Users\\ada";
    std::map<std::u16string, std::u16string> longNames;
    std::map<std::u16string, std::u16string> shortNames;
    std::set<std::u16string> folders;

    std::u16string currentDirectory() const override { return current; }
    std::u16string profileFolder() const override { return profile; }
    std::optional<std::u16string> longPathName(const std::u16string& path) const override {
        return Find(longNames, path);
    }
    std::optional<std::u16string> shortPathName(const std::u16string& path) const override {
        return Find(shortNames, path);
    }
    bool isExistingFolder(const std::u16string& path) const override {
        return folders.count(path) != 0;
    }

  private:
    static std::optional<std::u16string> Find(const std::map<std::u16string, std::u16string>& map,
                                              const std::u16string& key) {
        const auto found = map.find(key);
        if (found == map.end()) {
            return std::nullopt;
        }
        return found->second;
    }
};

}  // namespace slib::testing
