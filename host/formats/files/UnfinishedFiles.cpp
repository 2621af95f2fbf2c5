// SPDX-License-Identifier: GPL-3.0-or-later
#include "UnfinishedFiles.h"

#include "Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace TAMBO::formats {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kBegin = ".tambo-";
constexpr std::size_t kDigestSize = 16;

// FNV-1a: the same in every program, which the standard library's hashes need not be.
std::string digest(std::string_view text)
{
    std::uint64_t value = 0xcbf29ce484222325U;
    for (const char c : text) {
        value ^= static_cast<unsigned char>(c);
        value *= 0x100000001b3U;
    }
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result(kDigestSize, '0');
    for (auto at = result.rbegin(); at != result.rend(); ++at, value >>= 4U)
        *at = digits[value & 15U];
    return result;
}

std::string textOf(const char *file)
{
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// Numbers of processes mean the same only on one host and, in containers, in one name space.
std::string hostDigest()
{
    std::array<char, 256> name{};
    ::gethostname(name.data(), name.size() - 1);
    std::error_code error;
    const fs::path space = fs::read_symlink("/proc/self/ns/pid", error);
    return digest(std::string(name.data()) + '\n' + textOf("/etc/machine-id") + space.string());
}

// When the process began, also told apart from those before the system was last started, since
// numbers are used again. Nothing when the system does not tell.
std::optional<std::string> beginDigest(pid_t process)
{
    const std::string facts = textOf(("/proc/" + std::to_string(process) + "/stat").c_str());
    // The program's name, in parentheses, may hold anything; the 20th field behind it is meant.
    std::size_t at = facts.rfind(')');
    constexpr int fields = 20;
    for (int field = 0; field < fields && at != std::string::npos; ++field)
        at = facts.find(' ', at + 1);
    if (at == std::string::npos)
        return std::nullopt;
    return digest(facts.substr(at, facts.find(' ', at + 1) - at) +
                  textOf("/proc/sys/kernel/random/boot_id"));
}

bool isGone(pid_t process, std::string_view begin)
{
    if (::kill(process, 0) != 0 && errno == ESRCH)
        return true;
    const std::optional<std::string> now = beginDigest(process);
    return now && *now != begin;
}

bool isLeftBehind(std::string_view name, std::string_view host)
{
    const auto skip = [&name](std::string_view text) {
        const bool isThere = name.starts_with(text);
        name.remove_prefix(isThere ? text.size() : 0);
        return isThere;
    };
    if (!skip(kBegin) || !skip(host) || !skip("-"))
        return false;
    const std::optional<pid_t> process = takeNumber<pid_t>(name);
    if (!process || *process <= 0)
        return false;
    if (!skip("-") || name.size() <= kDigestSize || name[kDigestSize] != '-')
        return false;
    return isGone(*process, name.substr(0, kDigestSize));
}

bool isOwnFile(const fs::path &path)
{
    struct stat status
    {
    };
    return ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == ::geteuid();
}

} // namespace

std::string unfinishedName(const std::string &ending)
{
    static const std::string host = hostDigest();
    const pid_t process = ::getpid();
    std::random_device random;
    return std::string(kBegin) + host + '-' + std::to_string(process) + '-' +
           beginDigest(process).value_or(std::string(kDigestSize, '0')) + '-' +
           std::to_string(random()) + ending;
}

void removeUnfinished(const fs::path &folder)
{
    const std::string host = hostDigest();
    std::vector<fs::path> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with(kBegin) && isLeftBehind(name, host) && isOwnFile(entry->path()))
            found.push_back(entry->path());
    }
    for (const fs::path &path : found)
        fs::remove(path, error);
}

} // namespace TAMBO::formats
