#pragma once
// The account's home folder, for the file manager and the path system alike.

#include <string>

namespace slib {

// The effective user's home from the account database, without a trailing "/". Throws
// "Cannot get home folder of user" when the account has none.
std::u16string HomeFolder();

}  // namespace slib
