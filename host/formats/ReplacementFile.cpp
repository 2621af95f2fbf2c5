// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReplacementFile.h"

#include "FormatText.h"

#include <zlib.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

namespace TAMBO::formats {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBufferSize = std::size_t{1} << 18U;

// ".sto.gz" of "x.sto.gz": readers may look at it.
std::string endingOf(const fs::path &file)
{
    const std::string last = file.extension().string();
    return last == ".gz" ? file.stem().extension().string() + last : last;
}

// Writes everything, whatever the system takes at a time; the error otherwise.
int writeAll(int file, const char *bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t count = ::write(file, bytes, size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno;
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return 0;
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

ReplacementFile::ReplacementFile(const fs::path &target)
    : m_FileName(cleanText(target.filename().string())), m_Target(target)
{
    struct stat status
    {
    };
    if (::stat(target.c_str(), &status) == 0) {
        if (S_ISDIR(status.st_mode)) {
            m_Failure = failureOf(m_FileName, "cannot be written: it is a folder");
            return;
        }
        if (::access(target.c_str(), W_OK) != 0) {
            fail(errno);
            return;
        }
        m_TargetIsPlain = S_ISREG(status.st_mode);
        m_Mode = status.st_mode & 07777U;
        // The file that a link leads to is replaced, not the link.
        std::error_code error;
        fs::path linked = fs::canonical(target, error);
        if (!error && m_TargetIsPlain)
            m_Target = std::move(linked);
    }
    if (endingOf(target).ends_with(".gz")) {
        m_Deflater = std::make_unique<Deflater>();
        if (!m_Deflater->isReady()) {
            fail(ENOMEM);
            return;
        }
    }
    m_Buffer.reserve(kBufferSize);
    open();
}

ReplacementFile::~ReplacementFile()
{
    close();
    if (!m_Path.empty())
        ::unlink(m_Path.c_str());
}

void ReplacementFile::open()
{
    std::error_code error;
    const fs::path folder =
        m_TargetIsPlain ? m_Target.parent_path() : fs::temp_directory_path(error);
    if (error)
        return fail(error.value());
    std::random_device random;
    constexpr int attempts = 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const fs::path path =
            folder / (".tambo-" + std::to_string(random()) + endingOf(m_Target.filename()));
        m_File = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_File >= 0) {
            m_Path = path;
            // Not worth failing for: the file is written all the same.
            if (m_Mode && m_TargetIsPlain)
                static_cast<void>(::fchmod(m_File, *m_Mode));
            return;
        }
        if (errno != EEXIST)
            break;
    }
    fail(errno);
}

void ReplacementFile::write(std::string_view text)
{
    if (m_Failure)
        return;
    if (m_Buffer.size() + text.size() > kBufferSize) {
        writeBytes(m_Buffer.data(), m_Buffer.size());
        m_Buffer.clear();
    }
    if (text.size() > kBufferSize)
        writeBytes(text.data(), text.size());
    else
        m_Buffer += text;
}

void ReplacementFile::writeBytes(const char *bytes, std::size_t size)
{
    const auto put = [this](const char *from, std::size_t count) {
        if (const int error = m_Failure ? 0 : writeAll(m_File, from, count))
            fail(error);
    };
    if (m_Deflater)
        m_Deflater->add({bytes, size}, false, put);
    else
        put(bytes, size);
}

bool ReplacementFile::complete()
{
    if (m_Failure)
        return false;
    writeBytes(m_Buffer.data(), m_Buffer.size());
    m_Buffer = {};
    if (m_Deflater) {
        m_Deflater->add({}, true, [this](const char *from, std::size_t count) {
            if (const int error = m_Failure ? 0 : writeAll(m_File, from, count))
                fail(error);
        });
        m_Deflater.reset();
    }
    // The old file must not go before the new one is safe.
    if (!m_Failure && ::fsync(m_File) != 0)
        fail(errno);
    if (!m_Failure && ::close(m_File) != 0)
        fail(errno);
    m_File = -1;
    return !m_Failure;
}

bool ReplacementFile::putInPlace()
{
    if (m_Failure)
        return false;
    if (!m_TargetIsPlain) {
        copyToTarget();
    } else if (::rename(m_Path.c_str(), m_Target.c_str()) != 0) {
        fail(errno);
    } else {
        m_Path.clear();
    }
    return !m_Failure;
}

void ReplacementFile::copyToTarget()
{
    const int from = ::open(m_Path.c_str(), O_RDONLY | O_CLOEXEC);
    const int to = ::open(m_Target.c_str(), O_WRONLY | O_CLOEXEC);
    if (from < 0 || to < 0)
        fail(errno);
    m_Buffer.resize(kBufferSize);
    while (!m_Failure) {
        const ssize_t count = ::read(from, m_Buffer.data(), m_Buffer.size());
        if (count == 0)
            break;
        if (count < 0)
            fail(errno);
        else if (const int error = writeAll(to, m_Buffer.data(), static_cast<std::size_t>(count)))
            fail(error);
    }
    if (from >= 0)
        ::close(from);
    if (to >= 0 && ::close(to) != 0 && !m_Failure)
        fail(errno);
}

void ReplacementFile::close()
{
    if (m_File >= 0)
        ::close(m_File);
    m_File = -1;
}

void ReplacementFile::fail(int error)
{
    m_Failure = failureOf(m_FileName, std::string("cannot be written: ") + std::strerror(error));
}

} // namespace TAMBO::formats
