#include "core/calc/depth_guard.h"

namespace fmhost::calc {

thread_local int DepthGuard::depth_ = 0;

}  // namespace fmhost::calc
