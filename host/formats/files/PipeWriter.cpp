// SPDX-License-Identifier: GPL-3.0-or-later
#include "PipeWriter.h"

#include "FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <vector>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kPipeBuffer = std::size_t{1} << 18U;
// Between two looks at whether it is to go on.
constexpr int kPipePatience = 20;

class PipeWriter
{
public:
    using Step = std::function<bool(std::uint64_t, std::uint64_t)>;

    PipeWriter(const Step &step, std::uint64_t total) : m_Step(step), m_Total(total) { }

    [[nodiscard]] int open(const std::filesystem::path &path)
    {
        for (;;) {
            m_Pipe = FileDescriptor(
                ::open(path.c_str(), O_WRONLY | O_CLOEXEC | (m_Step ? O_NONBLOCK : 0)));
            // Nobody has the other end of it open.
            if (m_Pipe.isOpen() || errno != ENXIO || !m_Step)
                return m_Pipe.isOpen() ? 0 : errno;
            if (!goesOn())
                return ECANCELED;
            ::poll(nullptr, 0, kPipePatience);
        }
    }

    [[nodiscard]] int write(const char *bytes, std::size_t size)
    {
        while (size > 0) {
            if (!goesOn())
                return ECANCELED;
            const ssize_t count = ::write(m_Pipe.number(), bytes, size);
            if (count < 0 && errno == EAGAIN) {
                pollfd pipe{m_Pipe.number(), POLLOUT, 0};
                ::poll(&pipe, 1, kPipePatience);
            } else if (count < 0 && errno != EINTR) {
                return errno;
            } else if (count > 0) {
                bytes += count;
                size -= static_cast<std::size_t>(count);
                m_Done += static_cast<std::uint64_t>(count);
            }
        }
        return 0;
    }

    [[nodiscard]] int close() noexcept { return m_Pipe.close(); }

private:
    [[nodiscard]] bool goesOn() const { return !m_Step || m_Step(m_Done, m_Total); }

    const Step &m_Step;
    std::uint64_t m_Total;
    std::uint64_t m_Done = 0;
    FileDescriptor m_Pipe;
};

} // namespace

int sendFile(const std::filesystem::path &from, const std::filesystem::path &to,
             const std::function<bool(std::uint64_t done, std::uint64_t total)> &step)
{
    const FileDescriptor source(::open(from.c_str(), O_RDONLY | O_CLOEXEC));
    if (!source.isOpen())
        return errno;
    std::error_code unknown;
    const std::uintmax_t size = std::filesystem::file_size(from, unknown);
    PipeWriter pipe(step, unknown ? 0 : size);
    if (const int error = pipe.open(to))
        return error;
    std::vector<char> buffer(kPipeBuffer);
    int error = 0;
    for (std::size_t count = buffer.size(); error == 0 && count == buffer.size();) {
        error = source.read(buffer.data(), buffer.size(), count);
        if (error == 0)
            error = pipe.write(buffer.data(), count);
    }
    const int closing = pipe.close();
    return error != 0 ? error : closing;
}

} // namespace TAMBO::formats
