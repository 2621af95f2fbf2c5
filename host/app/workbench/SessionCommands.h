// SPDX-License-Identifier: GPL-3.0-or-later
// Sessions in files, as the user saves and opens them from the main window. Owned by the workbench.
#pragma once

#include "SessionOpening.h"

#include <QObject>

namespace TAMBO::app {

struct LoadReport;
class RecentFiles;
class SessionSaving;

class SessionCommands : public QObject
{
    Q_OBJECT

public:
    // All of them outlive this.
    struct Parts
    {
        SessionOpening::Parts opening;
        SessionSaving &saving;
        RecentFiles &recentFiles;
    };
    struct Actions
    {
        std::function<void()> endKeeping;
        std::function<void()> beginKeeping;
        std::function<void()> showFirstAlignment;
        std::function<bool(const QStringList &files)> startWorkbench;
        std::function<void(const QString &headline, const QStringList &causes)> tellFailure;
    };

    SessionCommands(const Parts &parts, Actions actions);
    ~SessionCommands() override;

    // Of files that are to be opened, those that are sessions are taken out.
    [[nodiscard]] static QStringList takeSessions(QStringList &files);
    // Later, from the event loop: whoever asks may stand in a window that is going to be closed.
    // others are files that came with them. then is called unless the user has called it off, with
    // what has failed, and those of the others that are to be opened here.
    using Then = std::function<void(const LoadReport &report, const QStringList &others)>;
    void open(const QStringList &sessions, const QStringList &others, Then then,
              std::function<void()> calledOff = {});
    // Into its file. False when it is not saved.
    bool save() { return save(false); }
    bool saveAs() { return save(true); }

private:
    [[nodiscard]] bool openNow(const QStringList &sessions, QStringList &others,
                               LoadReport &report);
    bool save(bool isElsewhere);
    void remember(const QString &file, const QString &text);
    void showTitle();

    Parts m_Parts;
    Actions m_Actions;
    SessionOpening m_Opening;
};

} // namespace TAMBO::app
