// SPDX-License-Identifier: GPL-3.0-or-later
#include "SaveCommand.h"

#include "ChangedFileBox.h"
#include "ExportDialog.h"
#include "FailureBoxes.h"
#include "KeptState.h"
#include "Logger.h"
#include "LossQuestion.h"
#include "ObjectFacts.h"
#include "ObjectReferences.h"
#include "WritableObject.h"
#include "WriteJob.h"
#include "WriteWait.h"

#include <QFile>
#include <QFileInfo>

#include <utility>
#include <vector>

namespace TAMBO::app {

namespace {

FileCheck checkOf(const SavedPlaces::Place &place)
{
    return place.state ? checkFile(QFile::encodeName(place.file).toStdString(), *place.state)
                       : FileCheck();
}

} // namespace

SaveCommand::SaveCommand(SavedPlaces &places, Compound &object, QWidget *parent)
    : m_Places(places),
      m_Object(std::make_unique<ObjectReferences>(std::vector<Compound *>{&object})),
      m_Parent(parent)
{ }

SaveCommand::~SaveCommand() = default;

Compound *SaveCommand::object() const
{
    return m_Object->objects().empty() ? nullptr : m_Object->objects().front();
}

SaveCommand::Outcome SaveCommand::save()
{
    const Compound &saved = *object();
    const std::optional<SavedPlaces::Place> place = m_Places.ownFileOf(saved);
    if (!place)
        return saveAs();
    const std::shared_ptr<const WritableObject> content = WritableObject::asked(saved);
    if (content == nullptr)
        return {};
    if (!content->checkWritable(place->options))
        return saveAs();
    if (!m_Places.isUnsaved(saved) && checkOf(*place).change == FileChange::None)
        return {true, false, place->file};
    return saveTo(*place, true);
}

SaveCommand::Outcome SaveCommand::saveSafely()
{
    const std::optional<SavedPlaces::Place> place = m_Places.placeOf(*object());
    return place ? saveTo(*place, false) : saveAs();
}

SaveCommand::Outcome SaveCommand::saveAs()
{
    Compound *const chosen = object();
    if (chosen == nullptr)
        return {};
    ExportDialog dialog({chosen}, chosen, m_Parent);
    if (dialog.isGivenUp())
        return {};
    dialog.setPlaces(m_Places);
    const SavedPlaces::Place beside = m_Places.suggestionFor(*chosen);
    dialog.saveInstead(beside.file.isEmpty() ? QString() : QFileInfo(beside.file).absolutePath(),
                       beside.options.format);
    if (dialog.exec() == QDialog::Rejected || object() == nullptr)
        return {};
    const std::vector<ExportRuns::Order> written = dialog.takeWritten();
    const ExportRuns::Order &order = written.front();
    const QString file = order.job->path();
    m_Places.accept(*chosen, file, order.parts.front().losses);
    m_Places.noteSaved(*chosen, {file, order.options, true, false, order.job->written()},
                       *order.parts.front().state);
    return {true, true, file};
}

SaveCommand::Outcome SaveCommand::saveTo(SavedPlaces::Place place, bool asksAboutLosses)
{
    // Again when the file is changed while it is being written.
    for (;;) {
        const Choice onChange = askAboutChange(place, place.state);
        if (onChange == Choice::Stop || object() == nullptr)
            return {};
        std::shared_ptr<const WritableObject> content = WritableObject::asked(*object());
        if (content == nullptr)
            return {};
        const QStringList losses =
            asksAboutLosses ? m_Places.lossesIn(place, *object(), *content) : QStringList();
        const bool isNews = !m_Places.isAccepted(*object(), place.file, losses);
        const Choice onLosses =
            isNews && onChange == Choice::GoOn ? askAboutLosses(place, losses) : Choice::GoOn;
        if (onLosses == Choice::Stop || object() == nullptr)
            return {};
        if (onChange == Choice::SaveAs || onLosses == Choice::SaveAs)
            return saveAs();
        // What has come while the user was asked is saved, too.
        if (isNews)
            content = WritableObject::asked(*object());
        if (content == nullptr)
            return {};
        const QString name = nameText(*object());
        const std::unique_ptr<KeptState> state = m_Places.keepState(*object());
        WriteJob job(std::move(content), place.file, place.options);
        if (place.state)
            job.expect(*place.state);
        job.start();
        const Result<void> written = waitToTheEnd(job, tr("Save"), m_Parent);
        if (!written && written.error().kind == FailureKind::Cancelled)
            return {};
        if (!written && checkOf(place).change != FileChange::None)
            continue;
        if (!written) {
            tellFailure(name, QString::fromStdString(written.error().message()));
            return {};
        }
        Logger::Write(tr("Saved %1 to %2").arg(name, place.file));
        if (object() == nullptr)
            return {true, true, place.file};
        if (isNews)
            m_Places.accept(*object(), place.file, losses);
        for (const QString &loss : losses)
            Logger::Write(QFileInfo(place.file).fileName() + QStringLiteral(": ") + loss);
        for (const QString &sentence : m_Places.strangeNumbers(*object(), place.options))
            Logger::Write(QFileInfo(place.file).fileName() + QStringLiteral(": ") + sentence,
                          Logger::Severity::Warning);
        m_Places.noteSaved(*object(), {place.file, place.options, true, false, job.written()},
                           *state);
        return {true, true, place.file};
    }
}

SaveCommand::Choice SaveCommand::askAboutChange(const SavedPlaces::Place &place,
                                                std::optional<FileState> &expected) const
{
    const FileCheck check = checkOf(place);
    if (check.change != FileChange::None) {
        ChangedFileBox box(place.file, check, m_Parent);
        box.exec();
        if (box.answer() != ChangedFileBox::Answer::Overwrite)
            return box.answer() == ChangedFileBox::Answer::SaveAs ? Choice::SaveAs : Choice::Stop;
    }
    expected = check.now;
    return Choice::GoOn;
}

SaveCommand::Choice SaveCommand::askAboutLosses(const SavedPlaces::Place &place,
                                                const QStringList &losses) const
{
    LossQuestion question(nameText(*object()), place.file, losses, m_Parent);
    question.exec();
    switch (question.answer()) {
    case LossQuestion::Answer::Save:
        return Choice::GoOn;
    case LossQuestion::Answer::SaveAs:
        return Choice::SaveAs;
    case LossQuestion::Answer::Cancel:
        break;
    }
    return Choice::Stop;
}

void SaveCommand::tellFailure(const QString &name, const QString &cause) const
{
    Logger::Write(cause, Logger::Severity::Error);
    services::FailureBoxes::showOver(m_Parent, tr("%1 could not be saved.").arg(name), {cause});
}

} // namespace TAMBO::app
