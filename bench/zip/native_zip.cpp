// VFile_Compress and VFile_DeCompress as the Linux plug-in runs them, without a host, for the
// benchmark's native run: `native_zip compress SOURCE TARGET`, `native_zip decompress ARCHIVE
// FOLDER`, or `native_zip idle` (start-up alone). Prints 0, or the failure and exits 1.
#include <cstdio>
#include <cstring>
#include <string>

#include "archive/zip_operations.h"
#include "foundation/exception.h"
#include "foundation/file_name_bytes.h"

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "idle") == 0) {
        std::puts("0");
        return 0;
    }
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s compress|decompress SOURCE TARGET | idle\n", argv[0]);
        return 2;
    }
    const slib::String source(slib::FileNameBytesToText(argv[2]));
    const slib::String target(slib::FileNameBytesToText(argv[3]));
    try {
        if (std::strcmp(argv[1], "compress") == 0) {
            archive::CompressItem(source, target);
        } else {
            archive::DecompressArchive(source, target);
        }
    } catch (const slib::Exception& e) {
        std::printf("%d %s\n", e.error()->code(), e.message().c_str());
        return 1;
    }
    std::puts("0");
    return 0;
}
