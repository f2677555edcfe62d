#include "host/stage/host/StateFolder.h"

#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <system_error>
#include <unistd.h>

namespace stage {

namespace fs = std::filesystem;

namespace {

fs::path AbsoluteFromEnvironment(const char* variable) {
    const char* value = std::getenv(variable);
    const fs::path path = value != nullptr ? value : "";
    return path.is_absolute() ? path : fs::path();
}

fs::path Home() {
    const fs::path home = AbsoluteFromEnvironment("HOME");
    const passwd* user = home.empty() ? getpwuid(getuid()) : nullptr;
    return user != nullptr && user->pw_dir != nullptr ? fs::path(user->pw_dir) : home;
}

} // namespace

std::string UserStateFolder() {
    fs::path base = AbsoluteFromEnvironment("XDG_STATE_HOME");
    if (base.empty()) {
        const fs::path home = Home();
        base = home.is_absolute() ? home / ".local" / "state" : fs::path();
    }
    if (base.empty()) {
        return "";
    }
    const fs::path folder = base / "stage";
    std::error_code ignored; // whoever writes there tells what is wrong with it
    if (fs::create_directories(folder, ignored)) {
        fs::permissions(folder, fs::perms::owner_all, ignored);
    }
    return folder.string();
}

} // namespace stage
