// SPDX-License-Identifier: GPL-3.0-or-later
// The files that new calls of the program hand over to the workbench that runs.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QStringList>

#include <map>
#include <memory>

namespace TAMBO::app {

// Listens from its construction on, as long as it exists. Who is not the user, says nothing for a
// while, or says what is no request is hung up on.
class HandedFiles : public QObject
{
    Q_OBJECT

public:
    // The folder is the user's own. Where no socket can be had, nothing is handed over, and a new
    // call opens a workbench of its own.
    explicit HandedFiles(const QString &folder);
    ~HandedFiles() override;
    HandedFiles(const HandedFiles &) = delete;
    HandedFiles &operator=(const HandedFiles &) = delete;

    [[nodiscard]] bool isListening() const noexcept { return m_Socket >= 0; }

signals:
    // Absolute names, at least one; the caller has been told, and has ended.
    void taken(const QStringList &files);

private:
    struct Caller;

    void accept();
    void hear(int socket);
    void hangUp(int socket);

    QString m_Path;
    int m_Socket = -1;
    std::unique_ptr<QSocketNotifier> m_Notifier;
    std::map<int, std::unique_ptr<Caller>> m_Callers;
};

} // namespace TAMBO::app
