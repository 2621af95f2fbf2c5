// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelsReader.h"

#include "BuiltModel.h"
#include "ChangeScope.h"
#include "DataAdder.h"
#include "Logger.h"
#include "LongWork.h"
#include "RowsForModels.h"
#include "Space.h"
#include "StepName.h"

#include <QPointer>
#include <QThread>

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <utility>

namespace TAMBO::app {

namespace {

// The name of the last model comes behind it.
std::string stepNameOfModels(std::size_t models)
{
    return models == 1 ? "Open model" : "Open " + std::to_string(models) + " models, the last one";
}

std::set<std::string> rowsOfModels(const std::vector<ReadModel> &models)
{
    std::set<std::string> rows;
    for (const ReadModel &model : models) {
        rows.insert(model.job.templateRow.name);
        rows.insert(model.job.target.name);
    }
    return rows;
}

void appendReport(LoadReport &report, LoadReport &&part)
{
    const auto move = [](auto &to, auto &from) { std::ranges::move(from, std::back_inserter(to)); };
    move(report.read, part.read);
    move(report.failures, part.failures);
    move(report.structures, part.structures);
    move(report.structureOrigins, part.structureOrigins);
    move(report.alignments, part.alignments);
    move(report.alignmentOrigins, part.alignmentOrigins);
}

} // namespace

ModelsReader::ModelsReader(Loader &loader, QObject *parent) : QObject(parent), m_Loader(loader) { }

ModelsReader::~ModelsReader()
{
    if (m_Thread == nullptr)
        return;
    *m_Cancelled = true;
    m_Thread->wait();
    delete m_Thread;
}

bool ModelsReader::open(std::vector<ModelFiles> models)
{
    if (isBusy() || models.empty())
        return false;
    m_Cancelled = std::make_shared<std::atomic<bool>>(false);
    const auto job = std::make_shared<ModelsJob>(std::move(models));
    const auto outcome = std::make_shared<Result<ModelsOutcome>>(ModelsOutcome());
    m_Thread = QThread::create([this, job, outcome, cancelled = m_Cancelled] {
        int told = -1;
        *outcome = job->run([&](const std::string &name, double fraction) {
            if (const int percent = int(fraction * 100); percent != told) {
                told = percent;
                emit progressed(QString::fromStdString(name), fraction);
            }
            return !cancelled->load();
        });
    });
    // From the reading thread's end into the thread of the reader.
    connect(m_Thread, &QThread::finished, this, [this, outcome] { readingEnded(outcome); });
    emit started();
    m_Thread->start();
    return true;
}

void ModelsReader::cancel()
{
    if (isBusy())
        *m_Cancelled = true;
}

void ModelsReader::readingEnded(const std::shared_ptr<Result<ModelsOutcome>> &outcome)
{
    std::exchange(m_Thread, nullptr)->deleteLater();
    m_IsArriving = true;
    whenNothingIsPublished([reader = QPointer(this), outcome] {
        if (reader == nullptr)
            return;
        reader->m_IsArriving = false;
        const bool isCancelled = *reader->m_Cancelled || !*outcome;
        const LoadReport report =
            isCancelled ? Loader::cancelledReport() : reader->makeObjects(outcome->value());
        emit reader->finished(report);
    });
}

LoadReport ModelsReader::makeObjects(ModelsOutcome &outcome)
{
    LoadReport report;
    report.failures = std::move(outcome.failures);
    for (const FileFailure &failure : report.failures)
        Logger::Write(QString::fromStdString(failure.failure.message()), Logger::Severity::Error);
    if (outcome.models.empty())
        return report;
    const ArrivalScope arrival;
    const DataAdder<Space> guard(nullptr, Space::instance());
    LongWork work("Opening models", outcome.models.size(), LongWork::Kind::Changing);
    const StepName name(stepNameOfModels(outcome.models.size()));
    RowsForModels rows(rowsOfModels(outcome.models));
    std::size_t made = 0;
    for (ReadModel &read : outcome.models) {
        if (!work.goesOnAt(made++))
            return Loader::cancelledReport();
        BuiltModel model(read.file.file, std::move(read.job));
        model.prepare(read.file.contents, rows, BuiltModel::Place::OfTheRow);
        ReadOutcome one;
        one.files.push_back(std::move(read.file));
        LoadReport part = m_Loader.makeObjects(one);
        if (part.isCancelled)
            return part;
        if (guard.m_good && !part.structures.empty())
            model.tie(*part.structures.front());
        appendReport(report, std::move(part));
    }
    return report;
}

} // namespace TAMBO::app

#include "moc_ModelsReader.cpp"
