// SPDX-License-Identifier: GPL-3.0-or-later
#include "HandoverSocket.h"

#include "LocalSocket.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace TAMBO::app {

namespace {

using Clock = std::chrono::steady_clock;

// Short, whatever the name of the screen is.
QString screenName()
{
    const QByteArray screen =
        qgetenv("WAYLAND_DISPLAY") + '\0' + qgetenv("DISPLAY") + '\0' + qgetenv("QT_QPA_PLATFORM");
    const QByteArray hash = QCryptographicHash::hash(screen, QCryptographicHash::Sha256);
    return QString::fromLatin1(hash.toHex().left(8));
}

QString socketsOfScreen()
{
    return QStringLiteral("workbench-%1-").arg(screenName());
}

class Connection
{
public:
    explicit Connection(const QString &path)
        : m_Socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
    {
        const std::optional<sockaddr_un> address = localAddress(path);
        if (m_Socket < 0 || !address)
            return;
        m_IsConnected = ::connect(m_Socket, reinterpret_cast<const sockaddr *>(&*address),
                                  sizeof *address) == 0;
        m_IsDead = !m_IsConnected && errno == ECONNREFUSED;
    }
    ~Connection()
    {
        if (m_Socket >= 0)
            ::close(m_Socket);
    }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    // Nobody listens, and nobody will.
    [[nodiscard]] bool isDead() const noexcept { return m_IsDead; }
    [[nodiscard]] bool isConnected() const noexcept { return m_IsConnected; }

    [[nodiscard]] bool isOfUser() const { return TAMBO::app::isOfUser(m_Socket); }

    [[nodiscard]] bool send(const QByteArray &bytes, Clock::time_point end) const
    {
        qsizetype sent = 0;
        while (sent < bytes.size()) {
            const ssize_t now = ::send(m_Socket, bytes.constData() + sent,
                                       static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
            if (now > 0)
                sent += now;
            else if (errno != EINTR && (errno != EAGAIN || !waitFor(POLLOUT, end)))
                return false;
        }
        return true;
    }

    [[nodiscard]] bool receives(char expected, Clock::time_point end) const
    {
        while (waitFor(POLLIN, end)) {
            char byte = 0;
            const ssize_t got = ::recv(m_Socket, &byte, 1, 0);
            if (got >= 0)
                return got == 1 && byte == expected;
            if (errno != EINTR && errno != EAGAIN)
                return false;
        }
        return false;
    }

private:
    [[nodiscard]] bool waitFor(short event, Clock::time_point end) const
    {
        for (;;) {
            const auto left =
                std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
            pollfd waiting{m_Socket, event, 0};
            const int ready = ::poll(&waiting, 1, static_cast<int>(std::max<long>(left, 0)));
            if (ready >= 0 || errno != EINTR)
                return ready > 0;
        }
    }

    int m_Socket;
    bool m_IsConnected = false;
    bool m_IsDead = false;
};

QByteArray requestFor(const QStringList &files)
{
    QByteArray request;
    for (const QString &file : files)
        request += QFile::encodeName(QFileInfo(file).absoluteFilePath()) + '\0';
    return request + '\0';
}

} // namespace

QString handoverSocket(const QString &folder, qint64 process)
{
    const QString path = QStringLiteral("%1/%2%3").arg(folder, socketsOfScreen()).arg(process);
    const bool fits =
        QFile::encodeName(path).size() < static_cast<qsizetype>(sizeof(sockaddr_un::sun_path));
    return fits ? path : QString();
}

QStringList handoverSockets(const QString &folder)
{
    QStringList paths;
    for (const QFileInfo &entry :
         QDir(folder).entryInfoList({socketsOfScreen() + u'*'}, QDir::System, QDir::Time))
        paths << entry.filePath();
    return paths;
}

bool handOver(const QString &folder, const QStringList &files, std::chrono::milliseconds most)
{
    const auto end = Clock::now() + most;
    const QByteArray request = requestFor(files);
    if (request.size() > kLongestRequest)
        return false;
    for (const QString &path : handoverSockets(folder)) {
        const Connection workbench(path);
        if (workbench.isDead())
            QFile::remove(path);
        if (workbench.isConnected() && workbench.isOfUser() && workbench.send(request, end) &&
            workbench.receives(kReady, end) && workbench.send(QByteArray(1, kGo), end))
            return true;
    }
    return false;
}

} // namespace TAMBO::app
