// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChangedFileBox.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QPushButton>

namespace TAMBO::app {

namespace {

QString timeText(const FileCheck &check)
{
    if (!check.now)
        return {};
    constexpr qint64 nanosecondsAMillisecond = 1'000'000;
    return QDateTime::fromMSecsSinceEpoch(check.now->changed / nanosecondsAMillisecond)
        .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString headlineOf(const QString &name, FileChange change)
{
    switch (change) {
    case FileChange::Gone:
        return ChangedFileBox::tr("%1 is not there any more.").arg(name);
    case FileChange::Replaced:
        return ChangedFileBox::tr("Another file stands in the place of %1.").arg(name);
    case FileChange::Content:
    case FileChange::None:
        break;
    }
    return ChangedFileBox::tr("%1 was changed by another program.").arg(name);
}

} // namespace

QString changeText(const FileCheck &check)
{
    const QString time = timeText(check);
    switch (check.change) {
    case FileChange::Gone:
        return ChangedFileBox::tr("It was deleted, renamed or moved after it was opened or saved "
                                  "here.");
    case FileChange::Replaced:
        return time.isEmpty()
                   ? ChangedFileBox::tr("It is no plain file any more.")
                   : ChangedFileBox::tr("It was replaced after it was opened or saved here; what "
                                        "is there now was last changed at %1.")
                         .arg(time);
    case FileChange::Content:
        return ChangedFileBox::tr("It was changed at %1, after it was opened or saved here.")
            .arg(time);
    case FileChange::None:
        break;
    }
    return {};
}

ChangedFileBox::ChangedFileBox(const QString &file, const FileCheck &check, QWidget *parent)
    : QMessageBox(QMessageBox::Warning, tr("Save"), QString(), QMessageBox::NoButton, parent)
{
    setObjectName(QStringLiteral("ChangedFileBox"));
    // Names of files are no markup.
    setTextFormat(Qt::PlainText);
    const bool isGone = check.change == FileChange::Gone;
    setText(headlineOf(QFileInfo(file).fileName(), check.change));
    setInformativeText(
        changeText(check) + u' ' +
        (isGone ? tr("Save writes it anew.") : tr("Overwrite replaces what is there now.")));
    m_SaveAs = addButton(tr("Save &As…"), QMessageBox::ActionRole);
    m_SaveAs->setObjectName(QStringLiteral("SaveAs"));
    m_Overwrite = addButton(isGone ? tr("&Save") : tr("&Overwrite"),
                            isGone ? QMessageBox::AcceptRole : QMessageBox::DestructiveRole);
    m_Overwrite->setObjectName(QStringLiteral("Overwrite"));
    setEscapeButton(addButton(QMessageBox::Cancel));
    // Nothing can be lost by either.
    setDefaultButton(isGone ? m_Overwrite : m_SaveAs);
}

ChangedFileBox::~ChangedFileBox() = default;

ChangedFileBox::Answer ChangedFileBox::answer() const
{
    if (clickedButton() == m_SaveAs)
        return Answer::SaveAs;
    return clickedButton() == m_Overwrite ? Answer::Overwrite : Answer::Cancel;
}

} // namespace TAMBO::app

#include "moc_ChangedFileBox.cpp"
