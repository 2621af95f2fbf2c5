// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocalSocket.h"

#include <QFile>

#include <cstring>
#include <sys/socket.h>
#include <unistd.h>

namespace TAMBO::app {

std::optional<sockaddr_un> localAddress(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.isEmpty() || name.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        return std::nullopt;
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    return address;
}

bool isOfUser(int socket)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == ::geteuid();
}

} // namespace TAMBO::app
