#include "setup/UserName.h"

#include <pwd.h>
#include <unistd.h>

#include <vector>

namespace setup {

QString fullUserName() {
    passwd entry{};
    passwd* found = nullptr;
    std::vector<char> buffer(16384);
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found)
        return qEnvironmentVariable("USER");
    const QString full =
        QString::fromLocal8Bit(found->pw_gecos ? found->pw_gecos : "").section(',', 0, 0).trimmed();
    return full.isEmpty() ? QString::fromLocal8Bit(found->pw_name) : full;
}

}  // namespace setup
