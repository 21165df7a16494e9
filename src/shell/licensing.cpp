#include "shell/licensing.h"

#include <atomic>
#include <string>

#include "resources/resource_ids.h"
#include "shell/about_box.h"
#include "shell/resource_text.h"

namespace licensing {

namespace {

// Written by the thread-less timer's callback, which runs outside the call mutex.
std::atomic<bool> gCheckCached{false};

}  // namespace

void Initialize(uint8_t /*applicationKind*/) {
    gCheckCached = false;
}

void CheckLicence() {
    gCheckCached = true;
}

void ForgetCachedCheck() {
    gCheckCached = false;
}

void OpenRegistrationWindow() {
    const std::u16string name = fmlib::LoadResourceString(VF_STR_PLUGIN_NAME);
    const std::u16string body = name + u" " + fmlib::LoadResourceString(VF_STR_VERSION) + u"\n\n" +
                                fmlib::LoadResourceString(VF_STR_DESCRIPTION);
    fmlib::ShowAboutBox(name, body);
}

int32_t Register() {
    return 0;
}

}  // namespace licensing
