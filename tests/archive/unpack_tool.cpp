// Unpacks one archive with the reader, through the whole extraction pipeline in memory, and writes
// what it produced below a folder, for comparing with other tools' output.
//
//     unpack_tool ARCHIVE FOLDER
//
// Prints the failure ("<code> <message>") and exits with 1 when the archive is refused; files
// unpacked before the failure are written all the same.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "archive_test_support.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: unpack_tool ARCHIVE FOLDER\n");
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 2;
    }
    const std::vector<uint8_t> archive((std::istreambuf_iterator<char>(in)),
                                       std::istreambuf_iterator<char>());
    const archive_test::Outcome outcome = archive_test::Extract(archive);
    const std::filesystem::path folder(argv[2]);
    std::filesystem::create_directories(folder);
    for (const auto& [path, content] : outcome.tree) {
        if (content == "<dir>") {
            std::filesystem::create_directories(folder / path);
            continue;
        }
        std::filesystem::create_directories((folder / path).parent_path());
        std::ofstream(folder / path, std::ios::binary)
            .write(content.data(), static_cast<std::streamsize>(content.size()));
    }
    if (!outcome.failure.empty()) {
        std::printf("%s\n", outcome.failure.c_str());
        return 1;
    }
    return 0;
}
