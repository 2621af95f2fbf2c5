// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProcessLife.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <ctime>
#include <fstream>
#include <iterator>
#include <limits>
#include <sstream>
#include <sys/types.h>
#include <unistd.h>

namespace TAMBO::families {

namespace {

// The clock may have been set meanwhile, and numbers come again after a long time only.
constexpr double kSlack = 60;

double secondsOf(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

} // namespace

std::string hostName()
{
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return name.data();
}

bool isAlive(long process, double started)
{
    // A number that is none would be one of all processes, or of a group of them.
    if (process <= 0 || process > std::numeric_limits<pid_t>::max() ||
        (kill(pid_t(process), 0) != 0 && errno == ESRCH))
        return false;
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    // The name of the program stands between brackets, and may have some.
    const std::size_t end = text.rfind(')');
    if (end == std::string::npos)
        return true;
    std::istringstream fields(text.substr(end + 1));
    std::string state;
    fields >> state;
    constexpr int kFieldsBetween = 18;
    std::string skipped;
    for (int i = 0; i < kFieldsBetween; ++i)
        fields >> skipped;
    double ticks = 0;
    fields >> ticks;
    if (state == "Z" || state == "X")
        return false;
    const double age = secondsOf(CLOCK_BOOTTIME) - ticks / double(sysconf(_SC_CLK_TCK));
    return std::abs(secondsOf(CLOCK_REALTIME) - age - started) <= kSlack;
}

} // namespace TAMBO::families
