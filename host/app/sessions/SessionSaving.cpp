// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionSaving.h"

#include "ChangedFileBox.h"
#include "Compound.h"
#include "ConfigStore.h"
#include "FailureBoxes.h"
#include "FileName.h"
#include "FileWriter.h"
#include "History.h"
#include "KeptValues.h"
#include "Logger.h"
#include "LongWork.h"
#include "ObjectSources.h"
#include "ObjectSpace.h"
#include "SessionDocument.h"
#include "SessionFile.h"
#include "WriteJob.h"
#include "WriteWait.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

#include <memory>
#include <utility>

namespace TAMBO::app {

namespace {

using sessions::SessionContent;

constexpr const char *kFilesSection = "Files";
constexpr const char *kSessionsKey = "SessionDirectory";

std::filesystem::path pathOf(const QString &file)
{
    return QFile::encodeName(file).toStdString();
}

} // namespace

bool SessionSaving::save(QWidget *parent)
{
    return m_Document.hasFile() ? saveTo(m_Document.file(), parent) : saveAs(parent);
}

bool SessionSaving::saveAs(QWidget *parent)
{
    const QString file = askFile(parent);
    return !file.isEmpty() && saveTo(file, parent);
}

bool SessionSaving::saveTo(const QString &file, QWidget *parent)
{
    // Again when the file is changed while it is being written.
    for (;;) {
        std::optional<FileState> expected;
        const Choice choice = askAboutChange(file, expected, parent);
        if (choice != Choice::GoOn)
            return choice == Choice::SaveAs && saveAs(parent);
        // What comes while it is written is not in it.
        const std::uint64_t state = m_History.state();
        const Result<std::optional<FileState>> written = write(file, expected, parent);
        if (written) {
            Logger::Write(tr("Saved the session to %1").arg(file));
            m_Document.noteFile(file, written.value(), state);
            return true;
        }
        if (written.error().kind == FailureKind::Cancelled)
            return false;
        if (checkOf(file).change != FileChange::None)
            continue;
        const QString cause = QString::fromStdString(written.error().message());
        Logger::Write(cause, Logger::Severity::Error);
        services::FailureBoxes::showOver(parent, tr("The session could not be saved."), {cause});
        return false;
    }
}

void SessionSaving::noteSaved(const std::filesystem::path &file)
{
    const QString name = QFile::decodeName(QByteArray::fromStdString(file.string()));
    Logger::Write(tr("Saved the session to %1").arg(name));
    const auto isSame = [&] {
        std::error_code error;
        return std::filesystem::equivalent(pathOf(m_Document.file()), file, error) && !error;
    };
    if (!m_Document.hasFile() || isSame())
        m_Document.noteFile(m_Document.hasFile() ? m_Document.file() : name, lookAt(file),
                            m_History.state());
}

Result<std::optional<FileState>> SessionSaving::write(const QString &file,
                                                      const std::optional<FileState> &expected,
                                                      QWidget *parent) const
{
    const auto origin =
        sessions::SessionOrigin::now(QCoreApplication::applicationVersion().toStdString());
    auto kept = values();
    if (!kept)
        return Failure(FailureKind::Cancelled, {});
    Result<SessionContent> taken =
        sessions::takeSession(ObjectSpace::get(), m_History, std::move(*kept), origin);
    if (!taken)
        return taken.error();
    const auto content = std::make_shared<SessionContent>(std::move(taken).value());
    WriteJob job(
        [content](const QString &path, WriteAids &aids) {
            return sessions::writeSession(std::move(*content), pathOf(path), aids);
        },
        file);
    if (expected)
        job.expect(*expected);
    job.start();
    if (const Result<void> written = waitToTheEnd(job, tr("Save Session"), parent); !written)
        return written.error();
    return job.written();
}

std::optional<std::vector<sessions::NamedValue>> SessionSaving::values() const
{
    LongWork work("Saving the session", 1, LongWork::Kind::Reading);
    while (m_Values.prepare()) {
        if (!work.goesOnAt(0))
            return std::nullopt;
    }
    return m_Values.store();
}

// ---- The file

FileCheck SessionSaving::checkOf(const QString &file) const
{
    const bool isKnown = file == m_Document.file() && m_Document.fileState();
    return isKnown ? checkFile(pathOf(file), *m_Document.fileState()) : FileCheck();
}

SessionSaving::Choice SessionSaving::askAboutChange(const QString &file,
                                                    std::optional<FileState> &expected,
                                                    QWidget *parent) const
{
    const FileCheck check = checkOf(file);
    if (check.change != FileChange::None) {
        ChangedFileBox box(file, check, parent);
        box.exec();
        if (box.answer() != ChangedFileBox::Answer::Overwrite)
            return box.answer() == ChangedFileBox::Answer::SaveAs ? Choice::SaveAs : Choice::Stop;
    }
    expected = check.now;
    return Choice::GoOn;
}

QString SessionSaving::askFile(QWidget *parent) const
{
    services::ConfigStore &store = services::ConfigStore::instance();
    const QString ending = QString::fromLatin1(sessions::kSessionEnding);
    QFileDialog dialog(parent, tr("Save Session"));
    dialog.setObjectName(QStringLiteral("SessionFileDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({tr("Sessions") + QStringLiteral(" (*%1)").arg(ending)});
    dialog.setDefaultSuffix(ending.mid(1));
    const QFileInfo suggested(suggestedFile());
    dialog.setDirectory(suggested.absolutePath());
    dialog.selectFile(suggested.fileName());
    if (dialog.exec() == QDialog::Rejected || dialog.selectedFiles().isEmpty())
        return {};
    store.setValue(kFilesSection, kSessionsKey, dialog.directory().absolutePath().toStdString());
    store.saveOrLog();
    const QString file = dialog.selectedFiles().front();
    if (file.endsWith(ending))
        return file;
    // The dialog has asked about another name.
    const QString whole = file + ending;
    if (!QFileInfo::exists(whole))
        return whole;
    QMessageBox box(
        QMessageBox::Question, tr("Save Session"),
        tr("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(whole).fileName()),
        QMessageBox::Yes | QMessageBox::No, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? whole : QString();
}

// Beside the first file that is open, of those in folders that can be written; beside the last
// session when there is none.
QString SessionSaving::suggestedFolder() const
{
    for (const Compound *const object : ObjectSpace::get()) {
        const std::filesystem::path file = m_Sources.fileOf(*object);
        if (file.empty())
            continue;
        const QFileInfo folder(
            QFileInfo(QFile::decodeName(QByteArray::fromStdString(file.string()))).absolutePath());
        if (folder.isDir() && folder.isWritable())
            return folder.filePath();
    }
    return QString::fromStdString(services::ConfigStore::instance()
                                      .value(kFilesSection, kSessionsKey)
                                      .value_or(std::string()));
}

// After what it is about when it has no file yet.
QString SessionSaving::suggestedFile() const
{
    if (m_Document.hasFile())
        return m_Document.file();
    const ObjectSpace &space = ObjectSpace::get();
    const Compound *named = space.objectCount() == 0 ? nullptr : space.object(0);
    for (std::size_t i = 0; i < space.objectCount(); ++i) {
        if (space.object(i)->Kind() == CompoundKind::Alignment) {
            named = space.object(i);
            break;
        }
    }
    const std::string name = named == nullptr ? "session" : fileNameOf(named->Name());
    return QFileInfo(suggestedFolder(),
                     QString::fromStdString(name) + QString::fromLatin1(sessions::kSessionEnding))
        .filePath();
}

} // namespace TAMBO::app
