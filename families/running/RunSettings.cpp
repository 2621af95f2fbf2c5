// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunSettings.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace TAMBO::families {

namespace fs = std::filesystem;

fs::path programOnPath(const std::string &name)
{
    const char *const path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');) {
        const fs::path candidate = fs::path(folder) / name;
        std::error_code error;
        if (fs::is_regular_file(candidate, error) && access(candidate.c_str(), X_OK) == 0)
            return fs::absolute(candidate, error);
    }
    return {};
}

int jobsOfComputer(int megabytes)
{
    constexpr double kMegabyte = 1024.0 * 1024.0;
    const double memory =
        double(sysconf(_SC_PHYS_PAGES)) * double(sysconf(_SC_PAGESIZE)) / kMegabyte;
    const auto processors = double(std::max(1U, std::thread::hardware_concurrency()));
    return int(std::max(1.0, std::min(processors, memory / std::max(1, megabytes))));
}

} // namespace TAMBO::families
