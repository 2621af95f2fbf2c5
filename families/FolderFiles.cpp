// SPDX-License-Identifier: GPL-3.0-or-later
#include "FolderFiles.h"

#include "FileDescriptor.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TAMBO::families {

namespace {

namespace fs = std::filesystem;
using formats::FileDescriptor;

// A list of a million targets has as many.
constexpr off_t kMostBytes = off_t{1} << 28U;

Failure systemFailure(const fs::path &file, const char *what, int error)
{
    return {error == ENOENT ? FailureKind::NotFound : FailureKind::System,
            std::string(what) + ": " + std::strerror(error),
            {file.string()}};
}

// Of this process, beside the file.
fs::path besideOf(const fs::path &file)
{
    return file.parent_path() /
           ('.' + file.filename().string() + '.' + std::to_string(getpid()) + ".part");
}

int writeAll(const fs::path &file, std::string_view text, mode_t rights)
{
    FileDescriptor opened(
        open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, rights));
    if (!opened.isOpen())
        return errno;
    const int error = opened.write(text.data(), text.size());
    const int closed = opened.close();
    return error != 0 ? error : closed;
}

} // namespace

Result<std::string> readText(const fs::path &file)
{
    constexpr const char *kUnreadable = "cannot be read";
    const FileDescriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!opened.isOpen())
        return systemFailure(file, kUnreadable, errno);
    struct stat state
    {
    };
    if (fstat(opened.number(), &state) != 0)
        return systemFailure(file, kUnreadable, errno);
    if (!S_ISREG(state.st_mode))
        return Failure{FailureKind::BadInput, "is no plain file", {file.string()}};
    if (state.st_size > kMostBytes)
        return Failure{FailureKind::BadInput, "is too large", {file.string()}};
    std::string text(std::size_t(state.st_size), '\0');
    std::size_t size = 0;
    if (const int error = opened.read(text.data(), text.size(), size); error != 0)
        return systemFailure(file, kUnreadable, error);
    text.resize(size);
    return text;
}

Result<void> placeText(const fs::path &file, std::string_view text, bool isProgram)
{
    constexpr mode_t kFile = 0666;
    constexpr mode_t kProgram = 0777;
    const fs::path beside = besideOf(file);
    int error = writeAll(beside, text, isProgram ? kProgram : kFile);
    if (error == 0 && std::rename(beside.c_str(), file.c_str()) != 0)
        error = errno;
    if (error == 0)
        return {};
    unlink(beside.c_str());
    return systemFailure(file, "cannot be written", error);
}

Result<void> removeFile(const fs::path &file)
{
    if (unlink(file.c_str()) != 0 && errno != ENOENT)
        return systemFailure(file, "cannot be removed", errno);
    return {};
}

Result<void> makeFolder(const fs::path &folder)
{
    std::error_code error;
    fs::create_directories(folder, error);
    if (!error && !fs::is_directory(folder, error))
        return Failure{
            FailureKind::Refused, "is a file where a folder is needed", {folder.string()}};
    if (error)
        return systemFailure(folder, "cannot be made", error.value());
    return {};
}

} // namespace TAMBO::families
