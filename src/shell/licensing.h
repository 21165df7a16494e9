// The licensing seam. This build is fully licensed: the check always passes and there is no
// registration state. What the shell needs of licensing is kept to these five calls so that a
// licensing component can be put behind them without touching the shell.
#pragma once

#include <cstdint>

namespace licensing {

// At initialisation, with the init message's one-byte parameter (the host's application kind).
void Initialize(uint8_t applicationKind);
// At the start of a licensed function call. A refusal would raise slib::Exception with a
// message beginning "Registration is not valid: ".
void CheckLicence();
// The recheck timer's whole job: forget the cached outcome of the last check.
void ForgetCachedCheck();
// The preferences action: the registration and about window (here a modal about box).
void OpenRegistrationWindow();
// VFile_Register's answer for a registration code: 0, accepted.
int32_t Register();

}  // namespace licensing
