// In-process host for the shell's own tests: the emulated FMWrapper.dll answers the shell's
// host calls directly, with no plug-in loaded. Values are made by evaluating calculations.
#pragma once

#include <memory>
#include <string>

#include "fmhost/host_driver.h"
#include "fmx_functions.h"
#include "shell/host_objects.h"

namespace shelltest {

using ExprEnvPtr = std::unique_ptr<FmxExprEnv, fmlib::HostDeleter<FmxExprEnv, FM_ExprEnv_Delete>>;
using DataVectPtr =
    std::unique_ptr<FmxDataVect, fmlib::HostDeleter<FmxDataVect, FM_DataVect_Delete>>;

class HostFixture {
  public:
    HostFixture();
    // An environment nobody filled: it evaluates in the host's own context and session.
    const FmxExprEnv& env() const { return *env_; }
    // The value of a calculation; fails the test when the calculation does.
    fmlib::DataPtr Value(const std::string& calculation) const;
    // An argument list holding the values of the calculations, in order.
    DataVectPtr Arguments(std::initializer_list<const char*> calculations) const;
    // A value as the host prints it.
    std::string Print(const FmxData& data) const;
    std::string Print(const std::string& calculation) const { return Print(*Value(calculation)); }

  private:
    fmhost::driver::Host host_;
    ExprEnvPtr env_;
};

}  // namespace shelltest
