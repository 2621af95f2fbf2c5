// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReplacementFile.h"

#include "BackupFiles.h"
#include "FileCheck.h"
#include "FileRights.h"
#include "FormatTable.h"
#include "FormatText.h"
#include "InPlaceCopy.h"
#include "PipeWriter.h"
#include "UnfinishedFiles.h"

#include <zlib.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace TAMBO::formats {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kWriteBuffer = std::size_t{1} << 18U;
// What is brought to the disk at a time.
constexpr off_t kSyncPiece = off_t{1} << 22U;

// ".sto.gz" of "x.sto.gz": readers may look at it.
std::string endingOf(const fs::path &file)
{
    const std::string last = file.extension().string();
    const std::string ending =
        last == kCompressedEnding ? file.stem().extension().string() + last : last;
    // A name has 255 bytes, some of them for what stands before the ending.
    constexpr std::size_t longest = 100;
    if (ending.size() <= longest)
        return ending;
    return last == kCompressedEnding ? last : std::string();
}

// Where a link leads to of which the end is not there yet: that is what is to be made.
int followLinks(fs::path &path)
{
    constexpr int most = 40;
    std::error_code error;
    for (int count = 0; fs::is_symlink(fs::symlink_status(path, error)); ++count) {
        if (count == most)
            return ELOOP;
        fs::path next = fs::read_symlink(path, error);
        if (error)
            return error.value();
        path = next.is_absolute() ? std::move(next) : path.parent_path() / next;
    }
    return 0;
}

// Whether the file may be written, as the system sees it.
int tryWriting(const fs::path &path, bool isPlain)
{
    // Opening a pipe waits for its reader, and a device may do something.
    if (!isPlain)
        return ::access(path.c_str(), W_OK) == 0 ? 0 : errno;
    return FileDescriptor(::open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC)).isOpen() ? 0
                                                                                          : errno;
}

// A file can be written all the same.
bool refusesReplacing(int error)
{
    return error == EACCES || error == EPERM || error == EROFS || error == EBUSY;
}

// False when nobody can tell.
bool holdSame(const fs::path &one, const fs::path &other)
{
    std::error_code error;
    if (fs::file_size(one, error) != fs::file_size(other, error) || error)
        return false;
    const std::optional<FileState> first = lookAt(one);
    const std::optional<FileState> second = lookAt(other);
    return first && second && first->hash && first->hash == second->hash;
}

// A file's new name is on the disk only when its folder is. The error, 0 for none; a system that
// cannot do it says so, which nobody can change.
int syncFolder(const fs::path &folder)
{
    const FileDescriptor directory(
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory.isOpen() || ::fsync(directory.number()) == 0)
        return 0;
    return errno == EINVAL || errno == ENOTSUP || errno == EROFS ? 0 : errno;
}

} // namespace

class ReplacementFile::Deflater
{
public:
    Deflater()
    {
        // 16: with a gzip header.
        m_Ready = deflateInit2(&m_Stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, 16 + MAX_WBITS, 8,
                               Z_DEFAULT_STRATEGY) == Z_OK;
    }
    ~Deflater()
    {
        if (m_Ready)
            deflateEnd(&m_Stream);
    }
    Deflater(const Deflater &) = delete;
    Deflater &operator=(const Deflater &) = delete;

    [[nodiscard]] bool isReady() const noexcept { return m_Ready; }

    // Calls put with what has become of the text; the last one ends the stream.
    template <typename Put> void add(std::string_view text, bool isLast, Put put)
    {
        // The library takes no constant input, but leaves it as it is.
        m_Stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(text.data()));
        m_Stream.avail_in = static_cast<uInt>(text.size());
        do {
            m_Stream.next_out = reinterpret_cast<Bytef *>(m_Packed.data());
            m_Stream.avail_out = static_cast<uInt>(m_Packed.size());
            deflate(&m_Stream, isLast ? Z_FINISH : Z_NO_FLUSH);
            put(m_Packed.data(), m_Packed.size() - m_Stream.avail_out);
        } while (m_Stream.avail_out == 0);
    }

private:
    z_stream m_Stream{};
    bool m_Ready = false;
    std::array<char, 65536> m_Packed{};
};

ReplacementFile::ReplacementFile(const fs::path &target, Scratch scratch)
    : m_FileName(cleanText(target.filename().string())),
      m_Target(target),
      m_Scratch(std::move(scratch))
{
    look();
    if (m_Outcome && endingOf(target).ends_with(kCompressedEnding)) {
        m_Deflater = std::make_unique<Deflater>();
        if (!m_Deflater->isReady())
            fail(ENOMEM);
    }
    if (!m_Outcome)
        return;
    m_Buffer.reserve(kWriteBuffer);
    open();
}

ReplacementFile::~ReplacementFile()
{
    if (!m_Path.empty())
        ::unlink(m_Path.c_str());
}

// What is at the target, and how it can be written.
void ReplacementFile::look()
{
    struct stat status
    {
    };
    if (::stat(m_Target.c_str(), &status) != 0) {
        const int error = errno == ENOENT ? followLinks(m_Target) : errno;
        return error == 0 ? void() : fail(error);
    }
    if (S_ISDIR(status.st_mode)) {
        m_Outcome =
            Failure{FailureKind::Refused, "cannot be written: it is a folder", {m_FileName}};
        return;
    }
    const bool isPlain = S_ISREG(status.st_mode);
    if (const int error = tryWriting(m_Target, isPlain))
        return fail(error);
    if (!isPlain) {
        m_Way = Way::Send;
        return;
    }
    m_Old = status;
    // The file that a link leads to is replaced, not the link.
    std::error_code error;
    fs::path linked = fs::canonical(m_Target, error);
    if (!error)
        m_Target = std::move(linked);
    if (status.st_nlink > 1)
        writeInPlace("it has several links");
}

void ReplacementFile::writeInPlace(const char *reason)
{
    m_Way = Way::Overwrite;
    m_Reason = reason;
}

void ReplacementFile::open()
{
    int error = m_Way == Way::Replace ? openIn(m_Target.parent_path()) : openIn(scratchFolder());
    if (error != 0 && m_Way == Way::Replace && m_Old && refusesReplacing(error)) {
        writeInPlace("nothing can be made in its folder");
        error = openIn(scratchFolder());
    }
    if (error != 0)
        fail(error);
}

fs::path ReplacementFile::scratchFolder() const
{
    if (m_Scratch)
        return m_Scratch();
    std::error_code error;
    fs::path folder = fs::temp_directory_path(error);
    return error ? fs::path("/tmp") : folder;
}

int ReplacementFile::openIn(const fs::path &folder)
{
    removeUnfinished(folder.empty() ? "." : folder);
    constexpr int attempts = 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const fs::path path = folder / unfinishedName(endingOf(m_Target.filename()));
        // Until it has the rights of the old one, nobody else need see it.
        m_File = FileDescriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                       m_Way == Way::Replace && !m_Old ? 0666 : 0600));
        if (m_File.isOpen()) {
            m_Path = path;
            return 0;
        }
        if (errno != EEXIST)
            break;
    }
    return errno;
}

void ReplacementFile::write(std::string_view text)
{
    if (!m_Outcome)
        return;
    if (m_Buffer.size() + text.size() > kWriteBuffer) {
        writeBytes(m_Buffer.data(), m_Buffer.size());
        m_Buffer.clear();
    }
    if (text.size() > kWriteBuffer)
        writeBytes(text.data(), text.size());
    else
        m_Buffer += text;
}

void ReplacementFile::writeBytes(const char *bytes, std::size_t size)
{
    if (m_Deflater)
        m_Deflater->add({bytes, size}, false,
                        [this](const char *from, std::size_t count) { put(from, count); });
    else
        put(bytes, size);
}

void ReplacementFile::put(const char *bytes, std::size_t size)
{
    if (const int error = m_Outcome ? m_File.write(bytes, size) : 0)
        fail(error);
}

Result<void> ReplacementFile::complete(const Step &step)
{
    if (!m_Outcome)
        return m_Outcome;
    writeBytes(m_Buffer.data(), m_Buffer.size());
    // Assigning an empty one would keep the room.
    std::string().swap(m_Buffer);
    if (m_Deflater) {
        m_Deflater->add({}, true,
                        [this](const char *from, std::size_t count) { put(from, count); });
        m_Deflater.reset();
    }
    // The old file must not go before the new one is safe.
    if (m_Outcome && step)
        sync(step);
    if (m_Outcome && ::fsync(m_File.number()) != 0)
        fail(errno);
    return m_Outcome;
}

// Piece by piece, so that whoever waits for a slow disk need not wait for all of it. What goes
// wrong is told by what comes afterwards.
void ReplacementFile::sync(const Step &step)
{
    struct stat status
    {
    };
    if (::fstat(m_File.number(), &status) != 0)
        return;
    for (off_t done = 0; done < status.st_size; done += kSyncPiece) {
        if (!step(static_cast<std::uint64_t>(done), static_cast<std::uint64_t>(status.st_size)))
            return cancel();
        static_cast<void>(::sync_file_range(m_File.number(), done, kSyncPiece,
                                            SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE |
                                                SYNC_FILE_RANGE_WAIT_AFTER));
    }
}

Result<void> ReplacementFile::putInPlace(const Step &step)
{
    if (m_Outcome && step && !step(0, 1))
        cancel();
    if (!m_Outcome)
        return m_Outcome;
    if (m_Way == Way::Replace)
        replace();
    // Not else: a file may turn out not to be replaceable.
    if (m_Way == Way::Overwrite)
        overwrite(step);
    if (m_Way == Way::Send)
        send(step);
    return m_Outcome;
}

void ReplacementFile::replace()
{
    if (m_Old)
        takeOverRights(m_File.number(), *m_Old);
    if (const int error = m_File.close())
        return fail(error);
    BackupFiles backups(m_Target);
    if (!backUp(backups))
        return;
    if (::rename(m_Path.c_str(), m_Target.c_str()) == 0) {
        m_Path.clear();
        backups.keep();
        if (const int error = syncFolder(m_Target.parent_path()))
            m_Remark = m_FileName + ": was written, but may not outlast a sudden end of the " +
                       "system: " + std::strerror(error);
        return;
    }
    // In a folder of all users, only a file's owner may replace it.
    if (m_Old && refusesReplacing(errno))
        return writeInPlace("its folder does not let it be replaced");
    fail(errno);
}

// A file that is to hold what it holds already has no version to be kept.
bool ReplacementFile::backUp(BackupFiles &backups)
{
    if (!m_KeepsBackups || !m_Old)
        return true;
    if (holdSame(m_Target, m_Path))
        return true;
    const int error = backups.add(m_Way == Way::Replace);
    if (error != 0)
        m_Outcome =
            Failure{FailureKind::System,
                    std::string("was not written, because its old version cannot be kept: ") +
                        std::strerror(error),
                    {m_FileName}};
    return error == 0;
}

void ReplacementFile::overwrite(const Step &step)
{
    static_cast<void>(m_File.close());
    BackupFiles backups(m_Target);
    if (!backUp(backups))
        return;
    bool isDamaged = false;
    const Result<void> copied = copyInPlace(m_Path, m_Target, scratchFolder(), isDamaged, step);
    const bool isCancelled = !copied && copied.error().kind == FailureKind::Cancelled;
    // A version is worth most when the file is damaged.
    if (copied || isDamaged)
        backups.keep();
    if (isCancelled)
        cancel();
    else if (!copied)
        fail(copied.error().cause);
    else
        m_Remark = m_FileName + ": was written in place, because " + m_Reason;
}

void ReplacementFile::send(const Step &step)
{
    static_cast<void>(m_File.close());
    const int error = sendFile(m_Path, m_Target, step);
    if (error == ECANCELED)
        cancel();
    else if (error != 0)
        fail(error);
}

void ReplacementFile::cancel()
{
    m_Outcome = Failure{FailureKind::Cancelled, {}};
}

void ReplacementFile::fail(int error)
{
    fail(std::strerror(error));
}

void ReplacementFile::fail(const std::string &cause)
{
    m_Outcome = Failure{FailureKind::System, "cannot be written: " + cause, {m_FileName}};
}

} // namespace TAMBO::formats
