// SPDX-License-Identifier: GPL-3.0-or-later
#include "HandedFiles.h"

#include "HandoverSocket.h"
#include "LocalSocket.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTimer>

#include <array>
#include <cerrno>
#include <optional>
#include <sys/socket.h>
#include <unistd.h>

namespace TAMBO::app {

namespace {

// Longer than any caller waits.
constexpr auto kLongestSilence = std::chrono::seconds(5);
constexpr std::size_t kMostCallers = 16;

int listenAt(const QString &path)
{
    const std::optional<sockaddr_un> address = localAddress(path);
    if (!address)
        return -1;
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0)
        return -1;
    // Left behind by a process that had the same number.
    QFile::remove(path);
    if (::bind(socket, reinterpret_cast<const sockaddr *>(&*address), sizeof *address) == 0 &&
        ::listen(socket, static_cast<int>(kMostCallers)) == 0)
        return socket;
    ::close(socket);
    return -1;
}

// Empty when it is no request.
QStringList filesOf(const QByteArray &request)
{
    QStringList files;
    for (const QByteArray &name : request.split('\0')) {
        if (name.isEmpty())
            continue;
        const QString file = QFile::decodeName(name);
        if (!QDir::isAbsolutePath(file))
            return {};
        files << file;
    }
    return files;
}

} // namespace

struct HandedFiles::Caller
{
    Caller(int socket, HandedFiles &owner) : notifier(socket, QSocketNotifier::Read)
    {
        connect(&notifier, &QSocketNotifier::activated, &owner,
                [&owner, socket] { owner.hear(socket); });
        silence.setSingleShot(true);
        silence.callOnTimeout(&owner, [&owner, socket] { owner.hangUp(socket); });
        silence.start(kLongestSilence);
    }

    QSocketNotifier notifier;
    QTimer silence;
    QByteArray said;
    QStringList files;
};

HandedFiles::HandedFiles(const QString &folder)
    : m_Path(handoverSocket(folder, QCoreApplication::applicationPid()))
{
    if (m_Path.isEmpty())
        return;
    m_Socket = listenAt(m_Path);
    if (m_Socket < 0)
        return;
    m_Notifier = std::make_unique<QSocketNotifier>(m_Socket, QSocketNotifier::Read);
    connect(m_Notifier.get(), &QSocketNotifier::activated, this, &HandedFiles::accept);
}

HandedFiles::~HandedFiles()
{
    while (!m_Callers.empty())
        hangUp(m_Callers.begin()->first);
    m_Notifier.reset();
    if (m_Socket < 0)
        return;
    QFile::remove(m_Path);
    ::close(m_Socket);
}

void HandedFiles::accept()
{
    const int socket = ::accept4(m_Socket, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (socket < 0)
        return;
    if (!isOfUser(socket) || m_Callers.size() >= kMostCallers) {
        ::close(socket);
        return;
    }
    m_Callers.emplace(socket, std::make_unique<Caller>(socket, *this));
}

void HandedFiles::hear(int socket)
{
    Caller &caller = *m_Callers.at(socket);
    std::array<char, 4096> bytes{};
    const ssize_t got = ::recv(socket, bytes.data(), bytes.size(), 0);
    if (got < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (got <= 0)
        return hangUp(socket);
    caller.said.append(bytes.data(), got);
    if (caller.files.isEmpty()) {
        if (caller.said.size() > kLongestRequest)
            return hangUp(socket);
        if (!caller.said.endsWith(QByteArray(2, '\0')))
            return;
        caller.files = filesOf(caller.said);
        caller.said.clear();
        const char ready = kReady;
        if (caller.files.isEmpty() || ::send(socket, &ready, 1, MSG_NOSIGNAL) != 1)
            hangUp(socket);
        return;
    }
    const QStringList files = caller.files;
    const bool isTaken = caller.said == QByteArray(1, kGo);
    hangUp(socket);
    if (isTaken)
        emit taken(files);
}

void HandedFiles::hangUp(int socket)
{
    // The notifier may be what has called.
    const auto found = m_Callers.find(socket);
    found->second->notifier.setEnabled(false);
    found->second->silence.stop();
    std::shared_ptr<Caller> gone = std::move(found->second);
    m_Callers.erase(found);
    QTimer::singleShot(0, this, [gone] {});
    ::close(socket);
}

} // namespace TAMBO::app

#include "moc_HandedFiles.cpp"
