// SPDX-License-Identifier: GPL-3.0-or-later
#include "ByteSource.h"

#include "FormatText.h"

#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 18U;

Failure openingFailure(const std::string &fileName)
{
    const bool isMissing = errno == ENOENT || errno == ENOTDIR;
    return {isMissing ? FailureKind::NotFound : FailureKind::System,
            std::string("cannot be opened: ") + std::strerror(errno),
            {fileName}};
}

} // namespace

// The state of the decompression between two calls.
class ByteSource::Inflater
{
public:
    Inflater() : m_Input(kPiece)
    {
        // 16: a gzip header is expected.
        m_Ready = inflateInit2(&m_Stream, 16 + MAX_WBITS) == Z_OK;
    }
    ~Inflater()
    {
        if (m_Ready)
            inflateEnd(&m_Stream);
    }
    Inflater(const Inflater &) = delete;
    Inflater &operator=(const Inflater &) = delete;

    void give(const char *bytes, std::size_t count)
    {
        std::copy_n(bytes, count, m_Input.data());
        have(count);
    }
    void have(std::size_t count)
    {
        m_Stream.next_in = reinterpret_cast<Bytef *>(m_Input.data());
        m_Stream.avail_in = static_cast<uInt>(count);
    }

    std::vector<char> m_Input;
    z_stream m_Stream{};
    bool m_Ready = false;
    bool m_AtMemberEnd = false;
    bool m_Finished = false;
};

ByteSource::ByteSource(const std::filesystem::path &path, const ReadProgress &progress)
    : m_FileName(cleanText(path.filename().string())), m_Progress(progress)
{
    m_File = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (m_File < 0) {
        m_Outcome = openingFailure(m_FileName);
        return;
    }
    struct stat status
    {
    };
    if (::fstat(m_File, &status) == 0 && S_ISDIR(status.st_mode))
        m_Outcome = failureOf(m_FileName, "is a folder, not a file");
    m_State = stateOf(m_File);
}

ByteSource::~ByteSource()
{
    if (m_File >= 0)
        ::close(m_File);
}

// A file that grew or shrank meanwhile has another size than what was read of it.
std::optional<FileState> ByteSource::state() const
{
    std::optional<FileState> state = m_State;
    if (state && m_Outcome && m_Done == state->size)
        state->hash = m_Hash.value();
    return state;
}

std::size_t ByteSource::read(char *room, std::size_t size)
{
    if (!m_Outcome)
        return 0;
    std::size_t got = 0;
    if (!m_Started) {
        m_Started = true;
        if (!reportProgress())
            return 0;
        got = readFile(room, std::min(size, kPiece));
        const bool gzip = got >= 2 && std::memcmp(room, "\x1f\x8b", 2) == 0;
        if (gzip) {
            m_Inflater = std::make_unique<Inflater>();
            m_Inflater->give(room, got);
            got = 0;
        }
    }
    if (m_Inflater)
        return readCompressed(room, size);
    while (got < size && m_Outcome) {
        const std::size_t more = readFile(room + got, std::min(size - got, kPiece));
        if (more == 0)
            break;
        got += more;
    }
    return m_Outcome ? got : 0;
}

// Up to size bytes as they stand in the file.
std::size_t ByteSource::readFile(char *room, std::size_t size)
{
    std::size_t got = 0;
    while (got < size) {
        const ssize_t count = ::read(m_File, room + got, size - got);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0) {
            m_Outcome = Failure{FailureKind::System,
                                std::string("cannot be read: ") + std::strerror(errno),
                                {m_FileName}};
            return 0;
        }
        if (count == 0)
            break;
        got += static_cast<std::size_t>(count);
    }
    m_Done += got;
    m_Hash.add({room, got});
    if (got > 0 && !reportProgress())
        return 0;
    return got;
}

std::size_t ByteSource::readCompressed(char *room, std::size_t size)
{
    // A few bytes may hold a great deal of text.
    if (!goesOn())
        return 0;
    Inflater &inflater = *m_Inflater;
    z_stream &stream = inflater.m_Stream;
    stream.next_out = reinterpret_cast<Bytef *>(room);
    stream.avail_out = static_cast<uInt>(std::min(size, kPiece));
    const std::size_t wanted = stream.avail_out;
    if (!inflater.m_Ready)
        m_Outcome =
            Failure{FailureKind::System, "cannot be decompressed: out of memory", {m_FileName}};
    while (stream.avail_out > 0 && !inflater.m_Finished && m_Outcome) {
        if (stream.avail_in == 0) {
            const std::size_t count = readFile(inflater.m_Input.data(), kPiece);
            inflater.have(count);
            if (count == 0 && m_Outcome) {
                inflater.m_Finished = true;
                if (!inflater.m_AtMemberEnd)
                    m_Outcome = failureOf(m_FileName, "the compressed data stop before their end");
            }
            continue;
        }
        if (inflater.m_AtMemberEnd) {
            // Several compressed files may follow one another; padding after the last is none.
            if (*stream.next_in != 0x1f) {
                inflater.m_Finished = true;
                continue;
            }
            inflateReset(&stream);
            inflater.m_AtMemberEnd = false;
        }
        const int state = inflate(&stream, Z_NO_FLUSH);
        if (state == Z_STREAM_END)
            inflater.m_AtMemberEnd = true;
        else if (state != Z_OK && state != Z_BUF_ERROR)
            m_Outcome = failureOf(m_FileName,
                                  std::string("the compressed data are damaged (") +
                                      (stream.msg != nullptr ? stream.msg : "unknown cause") + ')');
    }
    return m_Outcome ? wanted - stream.avail_out : 0;
}

bool ByteSource::reportProgress()
{
    if (!m_Progress || m_Progress(m_Done, size()))
        return true;
    m_Outcome = Failure{FailureKind::Cancelled, {}};
    return false;
}

} // namespace TAMBO::formats
