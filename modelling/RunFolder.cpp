// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunFolder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace kestram {

namespace {

namespace fs = std::filesystem;
using TAMBO::Failure;
using TAMBO::FailureKind;
using TAMBO::Result;
using TAMBO::formats::FileDescriptor;

constexpr std::chrono::milliseconds kBetweenTries{50};

Failure cannotBeMade(const fs::path &path, int error)
{
    return Failure{FailureKind::System,
                   std::string("the engine's folder cannot be made: ") + std::strerror(error),
                   {path.string()}};
}

bool isSameFile(int descriptor, const fs::path &path)
{
    struct stat opened
    {
    };
    struct stat named
    {
    };
    return fstat(descriptor, &opened) == 0 && stat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

} // namespace

Result<std::unique_ptr<RunFolder>> RunFolder::make(const fs::path &parent)
{
    std::string name = (parent / "kestram-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        return cannotBeMade(parent, errno);
    return std::unique_ptr<RunFolder>(new RunFolder(name));
}

Result<std::unique_ptr<RunFolder>> RunFolder::makeFor(const fs::path &model,
                                                      std::chrono::milliseconds patience)
{
    const std::string name = '.' + model.stem().string();
    std::unique_ptr<RunFolder> folder(new RunFolder(model.parent_path() / (name + ".work")));
    folder->m_LockPath = model.parent_path() / (name + ".lock");
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (true) {
        Result<bool> isLocked = folder->lock();
        if (!isLocked)
            return isLocked.error();
        if (isLocked.value())
            break;
        if (std::chrono::steady_clock::now() >= deadline)
            return Failure{FailureKind::Refused,
                           "is being built by another run of kestram",
                           {model.filename().string()}};
        std::this_thread::sleep_for(kBetweenTries);
    }
    std::error_code error;
    fs::remove_all(folder->m_Path, error);
    if (!error)
        fs::create_directory(folder->m_Path, error);
    if (error)
        return cannotBeMade(folder->m_Path, error.value());
    return folder;
}

Result<bool> RunFolder::lock()
{
    m_Lock = FileDescriptor(::open(m_LockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666));
    if (!m_Lock.isOpen())
        return cannotBeMade(m_Path, errno);
    if (flock(m_Lock.number(), LOCK_EX | LOCK_NB) != 0) {
        // Where there are no locks, nobody has one.
        const bool isTaken = errno == EWOULDBLOCK || errno == EINTR;
        if (isTaken)
            m_Lock = FileDescriptor();
        return !isTaken;
    }
    // Who had it before may have removed it meanwhile.
    if (isSameFile(m_Lock.number(), m_LockPath))
        return true;
    m_Lock = FileDescriptor();
    return false;
}

RunFolder::~RunFolder()
{
    remove();
}

Result<void> RunFolder::write(const std::string &name, const std::string &text) const
{
    FileDescriptor file(
        ::open((m_Path / name).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    int error = file.isOpen() ? file.write(text.data(), text.size()) : errno;
    if (error == 0)
        error = file.close();
    if (error != 0)
        return Failure{FailureKind::System,
                       std::string("cannot be written: ") + std::strerror(error),
                       {(m_Path / name).string()}};
    return {};
}

void RunFolder::remove() const
{
    // It may be another run's by now.
    if (!m_LockPath.empty() && !isSameFile(m_Lock.number(), m_LockPath))
        return;
    std::error_code ignored;
    fs::remove_all(m_Path, ignored);
    if (!m_LockPath.empty())
        fs::remove(m_LockPath, ignored);
}

} // namespace kestram
