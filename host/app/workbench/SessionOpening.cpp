// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionOpening.h"

#include "BaseWindow.h"
#include "ChangeScope.h"
#include "FileCheck.h"
#include "History.h"
#include "KeptValues.h"
#include "LoadedWork.h"
#include "Loader.h"
#include "Logger.h"
#include "MainWindow.h"
#include "ObjectCommands.h"
#include "ObjectIndex.h"
#include "ObjectReferences.h"
#include "ObjectSpace.h"
#include "Publisher.h"
#include "SessionDocument.h"
#include "SessionReading.h"
#include "StoreReader.h"
#include "UnsavedQuestion.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include <memory>
#include <utility>
#include <vector>

namespace TAMBO::app {

namespace {

const Failure kCalledOff{FailureKind::Cancelled, {}};

// Those that show what is going to be closed.
void closeWindowsBeside(const MainWindow &window)
{
    std::vector<QPointer<QWidget>> windows;
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (widget != &window && widget->isVisible() && qobject_cast<BaseWindow *>(widget))
            windows.emplace_back(widget);
    }
    for (const QPointer<QWidget> &one : windows) {
        if (one)
            one->close();
    }
}

} // namespace

SessionOpening::Outcome SessionOpening::open(const QStringList &files, const QStringList &others)
{
    Outcome outcome;
    for (qsizetype i = 0; i < files.size(); ++i) {
        const bool isLast = i + 1 == files.size();
        const Result<Place> done = openOne(files[i], isLast ? others : QStringList());
        if (done) {
            outcome.areOthersElsewhere = isLast && done.value() == Place::Elsewhere;
            continue;
        }
        if (done.error().kind == FailureKind::Cancelled) {
            outcome.isCancelled = true;
            break;
        }
        Logger::Write(QString::fromStdString(done.error().message()), Logger::Severity::Error);
        outcome.failures.push_back(done.error());
    }
    return outcome;
}

bool SessionOpening::isEmpty() const
{
    return ObjectSpace::get().objectCount() == 0 && !m_Parts.loader.isBusy();
}

Result<SessionOpening::Place> SessionOpening::openOne(const QString &file,
                                                      const QStringList &others)
{
    if (isChanging() || Publisher::isPublishing())
        return Failure(FailureKind::Refused, "cannot be opened in the middle of a change",
                       {file.toStdString()});
    auto session = sessions::openSession(QFile::encodeName(file).toStdString());
    if (!session)
        return session.error();
    const Choice choice = isEmpty() ? Choice::Replace : ask(file);
    if (choice == Choice::Cancel)
        return kCalledOff;
    if (choice == Choice::New) {
        if (Result<void> started = openInNewWorkbench(QStringList(file) + others); !started)
            return started.error();
        return Place::Elsewhere;
    }
    // Nothing is given up for a session that cannot be opened.
    if (!isEmpty() || m_Parts.history.size() > 0) {
        if (Result<void> checked = sessions::checkSession(*session.value()); !checked)
            return checked.error();
    }
    if (m_Parts.mayAsk && !m_Parts.question.mayCloseAll(&m_Parts.window))
        return kCalledOff;
    // It may be the file that what is open was just saved to.
    session = sessions::openSession(QFile::encodeName(file).toStdString());
    if (!session)
        return session.error();
    if (!closeAll())
        return kCalledOff;
    if (Result<void> loaded = load(file, *session.value()); !loaded)
        return loaded.error();
    return Place::Here;
}

SessionOpening::Choice SessionOpening::ask(const QString &file) const
{
    if (!m_Parts.mayAsk)
        return Choice::Cancel;
    QMessageBox box(QMessageBox::Question, tr("Open Session"),
                    tr("Close what is open and open %1?").arg(QFileInfo(file).fileName()),
                    QMessageBox::NoButton, &m_Parts.window);
    box.setObjectName(QStringLiteral("SessionQuestion"));
    // Names of files are no markup.
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(
        tr("A session has a workbench for itself. It can also be opened in a new "
           "one, beside this."));
    QPushButton *const replace = box.addButton(tr("&Close and Open"), QMessageBox::DestructiveRole);
    replace->setObjectName(QStringLiteral("Replace"));
    QPushButton *const another = box.addButton(tr("Open in &New"), QMessageBox::AcceptRole);
    another->setObjectName(QStringLiteral("New"));
    box.setEscapeButton(box.addButton(QMessageBox::Cancel));
    box.setDefaultButton(another);
    box.exec();
    if (box.clickedButton() == replace)
        return Choice::Replace;
    return box.clickedButton() == another ? Choice::New : Choice::Cancel;
}

Result<void> SessionOpening::openInNewWorkbench(const QStringList &files) const
{
    QStringList paths;
    for (const QString &file : files)
        paths << QFileInfo(file).absoluteFilePath();
    if (m_Actions.startWorkbench(paths))
        return {};
    return Failure(FailureKind::System, "cannot be opened: a new workbench does not start",
                   {files.front().toStdString()});
}

bool SessionOpening::closeAll()
{
    ObjectSpace &space = ObjectSpace::get();
    ObjectCommands::Objects objects(space.begin(), space.end());
    for (Compound *const object : objects) {
        if (lockOn(*object) != nullptr) {
            m_Parts.window.sayOfLock(
                tr("%1 is locked").arg(QString::fromStdString(object->Name())),
                std::make_shared<const ObjectReferences>(std::vector<Compound *>{object}));
            return false;
        }
    }
    // What is still to be opened is closed with all else.
    m_Parts.loader.cancelAll();
    closeWindowsBeside(m_Parts.window);
    ObjectCommands::destroy(objects);
    if (space.objectCount() != 0)
        return false;
    m_Actions.endKeeping();
    m_Parts.history.clear();
    space.reset();
    m_Parts.values.clear();
    return true;
}

Result<void> SessionOpening::load(const QString &file, sessions::StoreReader &session)
{
    ObjectSpace &space = ObjectSpace::get();
    // As it is before it is read: what is changed meanwhile is noticed when it is saved.
    const std::optional<FileState> state = lookAt(QFile::encodeName(file).toStdString());
    ObjectIndex index;
    m_Actions.endKeeping();
    Result<void> done = sessions::readSession(session, space, m_Parts.history, index);
    if (done) {
        loadValues(session, index, m_Parts.values);
        m_Parts.document.noteFile(file, state, m_Parts.history.state());
        Logger::Write(tr("Opened the session %1").arg(file));
    }
    m_Actions.beginKeeping();
    if (done)
        m_Actions.opened(file);
    return done;
}

} // namespace TAMBO::app
