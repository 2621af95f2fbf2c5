// SPDX-License-Identifier: GPL-3.0-or-later
// Where a running workbench takes files from a new call of the program: a local socket in a folder
// that only the user can look into.
#pragma once

#include <QString>
#include <QStringList>

#include <chrono>

namespace TAMBO::app {

// What both sides say to each other: the caller a request (files, absolute, one behind the other
// with a null behind each, and another null), the workbench kReady, the caller kGo. A workbench
// that is busy for longer than the caller waits finds no kGo, and does nothing.
inline constexpr char kReady = 'r';
inline constexpr char kGo = 'g';
// A longer request is no request.
inline constexpr qsizetype kLongestRequest = 1 << 20;

// The socket of a process, for the screen that the call is for: who works on another one would not
// see the files come. Empty when it would be longer than the system allows.
[[nodiscard]] QString handoverSocket(const QString &folder, qint64 process);
// Those of all processes on that screen, the one that was made last first.
[[nodiscard]] QStringList handoverSockets(const QString &folder);

// True when a workbench has taken the files within that time; the sockets of the dead are removed.
// files: names as the user gave them, at least one.
[[nodiscard]] bool handOver(const QString &folder, const QStringList &files,
                            std::chrono::milliseconds most = std::chrono::seconds(1));

} // namespace TAMBO::app
