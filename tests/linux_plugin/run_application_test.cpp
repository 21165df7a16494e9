// VFile_Run's start of a program on Linux: the program gets exactly the argument lines, the call
// does not wait for it, and a program that cannot start is the one defined failure.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#include "foundation/error.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/utf_conversion.h"

namespace {

class RunApplication : public ::testing::Test {
  protected:
    void SetUp() override {
        char pattern[] = "/tmp/vf-run-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        folder_ = pattern;
    }
    void TearDown() override { std::system(("rm -rf '" + folder_ + "'").c_str()); }

    // A script that writes each argument on a line of `out`, then `done` beside it.
    std::string writeRecorder() {
        const std::string script = folder_ + "/record.sh";
        std::ofstream(script) << "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\n' \"$a\"; done > '"
                              << folder_ << "/out'\n: > '" << folder_ << "/done'\n";
        chmod(script.c_str(), 0700);
        return script;
    }

    // What the recorder wrote, once it has finished (a safety limit, not a speed check).
    std::string recorded() {
        for (int i = 0; i < 3000 && access((folder_ + "/done").c_str(), F_OK) != 0; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        std::ifstream in(folder_ + "/out");
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }

    std::string folder_;
};

slib::String Text(const std::string& utf8) {
    return slib::String(slib::Utf8ToUtf16(utf8));
}

TEST_F(RunApplication, PassesEachLineAsOneArgument) {
    struct ArgumentsCase {
        const char* lines;
        const char* recorded;
    };
    const ArgumentsCase cases[] = {
        {"", ""},
        {"one", "one\n"},
        {"a b\r\"q\" \\x\r", "a b\n\"q\" \\x\n\n"},
        {"$HOME\r*", "$HOME\n*\n"},
        {"r\xC3\xA9sum\xC3\xA9", "r\xC3\xA9sum\xC3\xA9\n"},
    };
    const std::string recorder = writeRecorder();
    for (const ArgumentsCase& c : cases) {
        unlink((folder_ + "/done").c_str());
        slib::FileManager().runApplication(Text(recorder), Text(c.lines));
        EXPECT_EQ(recorded(), c.recorded) << c.lines;
    }
}

TEST_F(RunApplication, LeavesNoChildOfItsOwn) {
    slib::FileManager().runApplication(Text(writeRecorder()), Text("x"));
    recorded();
    // The program was a grandchild, started through a child already reaped.
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(RunApplication, ProgramThatCannotStartFails) {
    const std::string notExecutable = folder_ + "/plain.txt";
    std::ofstream(notExecutable) << "text";
    for (const std::string& program : {folder_ + "/missing", notExecutable, folder_}) {
        try {
            slib::FileManager().runApplication(Text(program), Text(""));
            ADD_FAILURE() << program << " started";
        } catch (const slib::Exception& failure) {
            EXPECT_EQ(failure.error()->code(), 2400) << program;
            EXPECT_EQ(failure.message(), "Cannot run the application") << program;
        }
    }
}

}  // namespace
