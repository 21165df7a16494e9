// The random-call soak's calculations: seeded, so a failing run can be replayed exactly.
//
// Every data function is called with random argument counts and values: paths relative to the
// calculating database (missing, nested, non-ASCII, reserved names, 300+ characters, "." and
// ".."), keywords, texts, numbers huge and negative, dates, containers, empty values and nested
// calls. A relative path never climbs above the scratch folder, one level above the database's
// folder, so whatever a function writes (now or once it is built) lands inside it.
//
// Left out: calls that open windows or start programs (VFile_Choose, VFile_Open, VFile_Reveal,
// VFile_Run), the licensing call (VFile_Register) and the network (VFile_Mount, VFile_Unmount).
#pragma once

#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace vf::soak {

class CallGenerator {
  public:
    // `scratchHostPath`: the scratch folder in the host's path syntax ("file:/C:/.../s/"), for
    // absolute paths into it.
    CallGenerator(uint64_t seed, std::string scratchHostPath);

    // One calculation, answering "@@<n>@@" when the call returns any value (n its length), so
    // the answers can be counted in output a misdirected write might garble.
    std::string next();

  private:
    uint32_t below(uint32_t bound);
    bool chance(uint32_t percent) { return below(100) < percent; }
    template <typename T>
    const T& pick(const std::vector<T>& items) {
        return items[below(static_cast<uint32_t>(items.size()))];
    }

    std::string call(int nesting);
    std::string argument(int nesting);
    std::string path();
    std::string text();
    std::string number();

    std::mt19937_64 random_;
    std::string scratch_;
};

// Every name the generated paths give an item, as the system stores it (trailing dots and
// blanks dropped, ASCII in lower case): an item of such a name outside the scratch folder is an
// escape, any other is not the soak's.
std::set<std::string> ItemNames();
std::string StoredName(std::string name);

// A text constant of the calculation language holding `text` exactly.
std::string Quoted(const std::string& text);

}  // namespace vf::soak
