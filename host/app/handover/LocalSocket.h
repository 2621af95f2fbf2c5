// SPDX-License-Identifier: GPL-3.0-or-later
// What both ends of a local socket need of the system.
#pragma once

#include <QString>

#include <optional>
#include <sys/un.h>

namespace TAMBO::app {

// Nothing when the path is longer than the system allows.
[[nodiscard]] std::optional<sockaddr_un> localAddress(const QString &path);
// Whether who is at the other end runs as this process does.
[[nodiscard]] bool isOfUser(int socket);

} // namespace TAMBO::app
