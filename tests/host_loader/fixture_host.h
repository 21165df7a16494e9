// A host with the fixture plug-in (HostFixture.fmx64, or .fmx on Linux, built beside the test). The
// test keeps its own reference to the fixture module, so the messages it recorded stay readable
// after the host has unloaded it.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "fixture_library.h"
#include "fmhost/host_driver.h"

namespace fixture_test {

class FixtureHost : public ::testing::Test {
  protected:
    void SetUp() override {
        for (const char* name : {"HOST_FIXTURE_OPTIONS", "HOST_FIXTURE_INIT", "HOST_FIXTURE_LEAVE"})
            SetSetting(name, nullptr);
        host_ = std::make_unique<fmhost::driver::Host>();
    }

    void TearDown() override {
        host_.reset();
        if (module_ != nullptr)
            CloseFixture(module_);
    }

    fmhost::driver::Plugin& Load(int16_t extnVersion = 77) {
        if (module_ == nullptr)
            module_ = OpenFixture();
        return host_->LoadPlugin(FixturePath(), extnVersion);
    }

    std::string Messages() const {
        using Reader = uint32_t (*)(char*, uint32_t);
        auto read = module_ != nullptr
                        ? reinterpret_cast<Reader>(FixtureSymbol(module_, "HostFixture_Messages"))
                        : nullptr;
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
    void* module_ = nullptr;
};

}  // namespace fixture_test
