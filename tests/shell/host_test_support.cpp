#include "host_test_support.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "fmhost/value_format.h"
#include "shell/host_env.h"
#include "shell/host_error.h"
#include "shell/host_text.h"
#include "shell/newer_host_functions.h"

namespace shelltest {

HostFixture::HostFixture() : env_(fmlib::HostCall(FM_ExprEnv_Constructor1)) {
    // What the init message would have told the plug-in: a current host, with every call.
    fmlib::RememberHostExtensionVersion(77);
}

fmlib::DataPtr HostFixture::Value(const std::string& calculation) const {
    fmlib::DataPtr data = fmlib::NewData();
    fmlib::TextPtr text = fmlib::MakeText(fmhost::driver::FromUtf8(calculation));
    const FmxErrcode error = fmlib::ExprEnvEvaluate(*env_, *text, *data);
    if (error != 0) {
        ADD_FAILURE() << calculation << " failed with " << error;
    }
    return data;
}

DataVectPtr HostFixture::Arguments(std::initializer_list<const char*> calculations) const {
    DataVectPtr args(fmlib::HostCall(FM_DataVect_Constructor1));
    for (const char* calculation : calculations) {
        fmlib::HostCall(FM_DataVect_PushBack, args.get(), *Value(calculation));
    }
    return args;
}

std::string HostFixture::Print(const FmxData& data) const {
    return fmhost::driver::FormatValue(data);
}

}  // namespace shelltest
