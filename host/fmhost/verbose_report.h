// fmhost's --verbose lines, all on standard error and prefixed "fmhost: ".
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "host_driver.h"

namespace fmhost::cli {

void ReportPlugin(std::FILE* err, const std::wstring& path, const driver::Plugin& plugin,
                  int16_t extensionVersion, int applicationKind,
                  const std::u16string& applicationVersion);
// Register and unregister calls from `from` on.
void ReportRegistrations(std::FILE* err, const std::vector<driver::Registration>& log, size_t from);
void ReportFunctions(std::FILE* err, const std::vector<driver::Registration>& functions);
// Why a plug-in is not running, for the error line that ends the run.
std::string DescribeFailure(const driver::Plugin& plugin);

}  // namespace fmhost::cli
