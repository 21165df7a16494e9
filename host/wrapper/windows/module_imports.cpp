#include "module_imports.h"

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <memory>

namespace fmwrapper {

namespace {

// Bounds-checked reads of an image file held in memory, addressed by relative virtual address.
class ImageFile {
  public:
    explicit ImageFile(std::vector<char> bytes) : bytes_(std::move(bytes)) {}

    template <typename T>
    const T* at(size_t offset) const {
        if (offset > bytes_.size() || bytes_.size() - offset < sizeof(T)) {
            return nullptr;
        }
        return reinterpret_cast<const T*>(bytes_.data() + offset);
    }

    bool readHeaders() {
        const auto* dos = at<IMAGE_DOS_HEADER>(0);
        if (dos == nullptr || dos->e_magic != IMAGE_DOS_SIGNATURE) {
            return false;
        }
        nt_ = at<IMAGE_NT_HEADERS64>(static_cast<size_t>(dos->e_lfanew));
        if (nt_ == nullptr || nt_->Signature != IMAGE_NT_SIGNATURE ||
            nt_->OptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR64_MAGIC) {
            return false;
        }
        sectionsAt_ = static_cast<size_t>(dos->e_lfanew) +
                      offsetof(IMAGE_NT_HEADERS64, OptionalHeader) +
                      nt_->FileHeader.SizeOfOptionalHeader;
        return true;
    }

    // The file offset of a relative virtual address; 0 when no section holds it.
    size_t offsetOf(DWORD rva) const {
        for (WORD i = 0; i < nt_->FileHeader.NumberOfSections; ++i) {
            const auto* section =
                at<IMAGE_SECTION_HEADER>(sectionsAt_ + i * sizeof(IMAGE_SECTION_HEADER));
            if (section == nullptr) {
                return 0;
            }
            const DWORD start = section->VirtualAddress;
            if (rva >= start && rva - start < section->SizeOfRawData) {
                return section->PointerToRawData + (rva - start);
            }
        }
        return 0;
    }

    std::string textAt(DWORD rva) const {
        const size_t offset = offsetOf(rva);
        if (offset == 0) {
            return {};
        }
        const size_t end = std::min(bytes_.size(), offset + 512);
        const char* begin = bytes_.data() + offset;
        return std::string(begin, strnlen(begin, end - offset));
    }

    DWORD importDirectory() const {
        return nt_->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    }

  private:
    std::vector<char> bytes_;
    const IMAGE_NT_HEADERS64* nt_ = nullptr;
    size_t sectionsAt_ = 0;
};

std::vector<char> FileBytes(const std::u16string& path) {
    std::vector<char> bytes;
    const std::unique_ptr<FILE, int (*)(FILE*)> file(
        _wfopen(reinterpret_cast<const wchar_t*>(path.c_str()), L"rb"), &fclose);
    if (!file) {
        return bytes;
    }
    char chunk[65536];
    size_t got = 0;
    while ((got = fread(chunk, 1, sizeof chunk, file.get())) > 0) {
        bytes.insert(bytes.end(), chunk, chunk + got);
    }
    return bytes;
}

constexpr char kHostLibrary[] = "FMWrapper.dll";

}  // namespace

std::vector<std::string> HostImports(const std::u16string& libraryPath) {
    std::vector<std::string> names;
    ImageFile image(FileBytes(libraryPath));
    if (!image.readHeaders() || image.importDirectory() == 0) {
        return names;
    }
    size_t descriptorAt = image.offsetOf(image.importDirectory());
    for (; descriptorAt != 0; descriptorAt += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
        const auto* descriptor = image.at<IMAGE_IMPORT_DESCRIPTOR>(descriptorAt);
        if (descriptor == nullptr || descriptor->Name == 0) {
            break;
        }
        if (_stricmp(image.textAt(descriptor->Name).c_str(), kHostLibrary) != 0) {
            continue;
        }
        const DWORD thunks = descriptor->OriginalFirstThunk != 0 ? descriptor->OriginalFirstThunk
                                                                 : descriptor->FirstThunk;
        for (size_t at = image.offsetOf(thunks); at != 0; at += sizeof(IMAGE_THUNK_DATA64)) {
            const auto* thunk = image.at<IMAGE_THUNK_DATA64>(at);
            if (thunk == nullptr || thunk->u1.AddressOfData == 0) {
                break;
            }
            if (!IMAGE_SNAP_BY_ORDINAL64(thunk->u1.Ordinal)) {
                // IMAGE_IMPORT_BY_NAME: a two-byte hint, then the name.
                names.push_back(image.textAt(static_cast<DWORD>(thunk->u1.AddressOfData) + 2));
            }
        }
    }
    return names;
}

}  // namespace fmwrapper
