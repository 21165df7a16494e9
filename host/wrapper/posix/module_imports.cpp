#include "module_imports.h"

#include <elf.h>

#include <cstring>
#include <fstream>

#include "core/utf.h"

namespace fmwrapper {
namespace {

// Bounds-checked reads of an ELF file held in memory, addressed by file offset.
class ElfFile {
  public:
    explicit ElfFile(std::vector<char> bytes) : bytes_(std::move(bytes)) {}

    template <typename T>
    const T* at(uint64_t offset) const {
        if (offset > bytes_.size() || bytes_.size() - offset < sizeof(T))
            return nullptr;
        return reinterpret_cast<const T*>(bytes_.data() + offset);
    }

    bool readHeader() {
        header_ = at<Elf64_Ehdr>(0);
        return header_ != nullptr && std::memcmp(header_->e_ident, ELFMAG, SELFMAG) == 0 &&
               header_->e_ident[EI_CLASS] == ELFCLASS64 &&
               header_->e_shentsize == sizeof(Elf64_Shdr);
    }

    const Elf64_Shdr* section(uint32_t index) const {
        if (index >= header_->e_shnum)
            return nullptr;
        return at<Elf64_Shdr>(header_->e_shoff + uint64_t{index} * sizeof(Elf64_Shdr));
    }

    // A zero-terminated name inside the string table `strings`; empty when it leaves the table.
    std::string textAt(const Elf64_Shdr& strings, uint32_t offset) const {
        if (offset >= strings.sh_size || strings.sh_offset > bytes_.size() ||
            bytes_.size() - strings.sh_offset < strings.sh_size)
            return {};
        const char* begin = bytes_.data() + strings.sh_offset + offset;
        return std::string(begin, strnlen(begin, strings.sh_size - offset));
    }

    uint16_t sectionCount() const { return header_->e_shnum; }

  private:
    std::vector<char> bytes_;
    const Elf64_Ehdr* header_ = nullptr;
};

std::vector<char> FileBytes(const std::u16string& path) {
    // One read of the whole file: a plug-in built with debug information is tens of megabytes,
    // which a character-by-character copy takes seconds over in a sanitizer build.
    std::ifstream file(fmhost::Utf16ToUtf8(path), std::ios::binary | std::ios::ate);
    const std::streamoff size = file ? static_cast<std::streamoff>(file.tellg()) : -1;
    if (size <= 0) {
        return {};
    }
    std::vector<char> bytes(static_cast<size_t>(size));
    file.seekg(0);
    if (!file.read(bytes.data(), size)) {
        return {};
    }
    return bytes;
}

}  // namespace

std::vector<std::string> HostImports(const std::u16string& libraryPath) {
    std::vector<std::string> names;
    ElfFile elf(FileBytes(libraryPath));
    if (!elf.readHeader())
        return names;
    for (uint16_t i = 0; i < elf.sectionCount(); ++i) {
        const Elf64_Shdr* symbols = elf.section(i);
        if (symbols == nullptr || symbols->sh_type != SHT_DYNSYM ||
            symbols->sh_entsize != sizeof(Elf64_Sym))
            continue;
        const Elf64_Shdr* strings = elf.section(symbols->sh_link);
        if (strings == nullptr)
            break;
        const uint64_t count = symbols->sh_size / sizeof(Elf64_Sym);
        // Entry 0 is the reserved null symbol.
        for (uint64_t k = 1; k < count; ++k) {
            const auto* symbol = elf.at<Elf64_Sym>(symbols->sh_offset + k * sizeof(Elf64_Sym));
            if (symbol == nullptr)
                break;
            if (symbol->st_shndx != SHN_UNDEF || symbol->st_name == 0)
                continue;
            std::string name = elf.textAt(*strings, symbol->st_name);
            if (!name.empty())
                names.push_back(std::move(name));
        }
    }
    return names;
}

}  // namespace fmwrapper
