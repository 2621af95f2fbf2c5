// SPDX-License-Identifier: GPL-3.0-or-later
// One run of the program fasttree, in a folder of its own. Nothing of it stays behind: it ends with
// this, and when the workbench ends, however that happens.
#pragma once

#include "ProgramFolder.h"

#include <QFile>
#include <QObject>
#include <QProcess>

#include <string>
#include <string_view>

namespace companion {

class FastTreeRun : public QObject
{
    Q_OBJECT

public:
    // The file of the program; empty when there is none on the search path.
    [[nodiscard]] static QString program();

    FastTreeRun();
    ~FastTreeRun() override;

    // The rows one after the other, under labels of our own: no name can confuse the program. The
    // program knows the twenty amino acids and gaps; any other letter becomes X.
    void addRow(std::string_view letters);
    // When all rows are there. What goes wrong is told by failed().
    void start();

    [[nodiscard]] qint64 processId() const { return m_Process.processId(); }
    // Of the row that a label stands for, which are counted from 0.
    [[nodiscard]] static std::string labelOf(std::size_t row);

signals:
    void started();
    // The last line of its progress.
    void said(const QString &line);
    void finished(const QByteArray &newick);
    // A whole sentence; empty when somebody has ended it who need not be told.
    void failed(const QString &cause);

private:
    void readErrors();
    void end(QProcess::ExitStatus status, int code);

    ProgramFolder m_Folder;
    QFile m_Rows;
    std::size_t m_Count = 0;
    bool m_CannotWrite = false;
    QProcess m_Process;
    QString m_LastLine;
};

} // namespace companion
