// A host with the fixture plug-in (HostFixture.fmx64, built beside the test). The test keeps
// its own reference to the fixture module, so the messages it recorded stay readable after the
// host has unloaded it.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "fmhost/host_driver.h"

namespace fixture_test {

inline std::wstring FixturePath() {
    wchar_t path[MAX_PATH * 4] = {};
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH * 4);
    std::wstring full(path, length);
    return full.substr(0, full.find_last_of(L"\\/") + 1) + L"HostFixture.fmx64";
}

class FixtureHost : public ::testing::Test {
  protected:
    void SetUp() override {
        for (const wchar_t* name :
             {L"HOST_FIXTURE_OPTIONS", L"HOST_FIXTURE_INIT", L"HOST_FIXTURE_LEAVE"}) {
            SetEnvironmentVariableW(name, nullptr);
        }
        host_ = std::make_unique<fmhost::driver::Host>();
    }

    void TearDown() override {
        host_.reset();
        if (module_ != nullptr)
            FreeLibrary(module_);
    }

    fmhost::driver::Plugin& Load(int16_t extnVersion = 77) {
        if (module_ == nullptr)
            module_ = LoadLibraryW(FixturePath().c_str());
        return host_->LoadPlugin(FixturePath(), extnVersion);
    }

    std::string Messages() const {
        using Reader = uint32_t (*)(char*, uint32_t);
        auto read = reinterpret_cast<Reader>(
            reinterpret_cast<void*>(GetProcAddress(module_, "HostFixture_Messages")));
        if (read == nullptr)
            return "(fixture not loaded)";
        std::string buffer(read(nullptr, 0) + 1, '\0');
        read(&buffer[0], static_cast<uint32_t>(buffer.size()));
        buffer.pop_back();
        return buffer;
    }

    // The calculation's printed value; a failure is reported as "error N".
    std::string Eval(const std::u16string& calculation) const {
        const fmhost::driver::Evaluation result = host_->Evaluate(calculation);
        return result.error != 0 ? "error " + std::to_string(result.error) : result.text;
    }

    std::unique_ptr<fmhost::driver::Host> host_;
    HMODULE module_ = nullptr;
};

}  // namespace fixture_test
