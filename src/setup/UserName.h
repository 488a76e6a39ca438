#pragma once

#include <QString>

namespace setup {

// The account's full name from the password database (the first comma field of GECOS), else
// the login name.
QString fullUserName();

}  // namespace setup
