// SPDX-License-Identifier: GPL-3.0-or-later
#include "Loader.h"

#include "Alignment.h"
#include "AlignmentMaking.h"
#include "ChangeScope.h"
#include "DataAdder.h"
#include "Logger.h"
#include "LongWork.h"
#include "MissingStructures.h"
#include "ObjectFactory.h"
#include "ObjectFacts.h"
#include "ObjectSources.h"
#include "ObjectSpace.h"
#include "Space.h"
#include "Structure.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>

#include <algorithm>
#include <utility>

namespace TAMBO::app {

namespace {

namespace fs = std::filesystem;

std::set<std::string> loadedStructures()
{
    std::set<std::string> names;
    for (const Compound *object : *Space::instance()) {
        if (const auto *const structure = dynamic_cast<const Structure *>(object))
            names.insert(structure->code());
    }
    return names;
}

QString fileText(const fs::path &file)
{
    return QString::fromStdString(file.filename().string());
}

QStringList missingStructuresOf(const AlignmentRecord &alignment)
{
    QStringList missing;
    for (const std::string &name : missingStructures(alignment))
        missing << QString::fromStdString(name);
    return missing;
}

// "1abc, 2abc and 17 more".
QString listText(const QStringList &names)
{
    constexpr qsizetype most = 10;
    const QString text = names.first(std::min(names.size(), most)).join(QStringLiteral(", "));
    return names.size() <= most ? text
                                : QCoreApplication::translate("Loader", "%1 and %2 more")
                                      .arg(text, QString::number(names.size() - most));
}

// Who makes a remark names the file.
void logRemarks(const std::vector<std::string> &remarks)
{
    for (const std::string &remark : remarks)
        Logger::Write(QString::fromStdString(remark), Logger::Severity::Warning);
}

std::size_t rowsIn(const std::vector<ReadFile> &files)
{
    std::size_t rows = 0;
    for (const ReadFile &file : files) {
        for (const AlignmentRecord &record : file.contents.alignments)
            rows += record.rows.size() + record.packed.size();
    }
    return rows;
}

} // namespace

struct Loader::Prepared
{
    std::vector<std::string> remarks;
    QStringList missingStructures;
    std::unique_ptr<AlignmentMaking> making;
};

struct Loader::Making
{
    std::vector<fs::path> asked;
    std::shared_ptr<Result<ReadOutcome>> outcome;
    // Those of all files, in their order.
    std::deque<Prepared> alignments;
    std::size_t rows = 0;
    std::size_t rowsMade = 0;
};

Loader::Loader(ObjectSources &sources, QObject *parent) : QObject(parent), m_Sources(sources)
{
    m_Pieces.setInterval(0);
    connect(&m_Pieces, &QTimer::timeout, this, &Loader::makeSome);
}

Loader::~Loader()
{
    m_Waiting.clear();
    if (m_Thread == nullptr)
        return;
    *m_Cancelled = true;
    m_Thread->wait();
    delete m_Thread;
}

void Loader::open(std::vector<fs::path> files)
{
    if (files.empty())
        return;
    m_Waiting.push_back(std::move(files));
    if (!isBusy())
        startNext();
}

LoadReport Loader::cancelledReport()
{
    Logger::Write(tr("Opening was cancelled, nothing is loaded."));
    LoadReport report;
    report.isCancelled = true;
    return report;
}

void Loader::cancel()
{
    if (isBusy())
        *m_Cancelled = true;
}

void Loader::cancelAll()
{
    cancel();
    for (std::vector<fs::path> &asked : std::exchange(m_Waiting, {})) {
        LoadReport report = cancelledReport();
        report.asked = std::move(asked);
        emit finished(report);
    }
}

void Loader::startNext()
{
    if (m_Waiting.empty())
        return;
    const std::vector<fs::path> asked = std::move(m_Waiting.front());
    m_Waiting.pop_front();
    auto job = std::make_shared<ReadJob>(asked, loadedStructures());
    m_Cancelled = std::make_shared<std::atomic<bool>>(false);
    const auto outcome = std::make_shared<Result<ReadOutcome>>(ReadOutcome());
    m_Thread = QThread::create([this, job, outcome, cancelled = m_Cancelled] {
        int told = -1;
        *outcome = job->run([&](const std::string &name, double fraction) {
            // The window wants to hear of it a hundred times, not once per line of a file.
            if (const int percent = int(fraction * 100); percent != told) {
                told = percent;
                emit progressed(QString::fromStdString(name), fraction);
            }
            return !cancelled->load();
        });
    });
    // From the reading thread's end into the thread of the loader.
    connect(m_Thread, &QThread::finished, this,
            [this, asked, outcome] { readingEnded(asked, outcome); });
    emit started();
    m_Thread->start();
}

void Loader::readingEnded(const std::vector<fs::path> &asked,
                          std::shared_ptr<Result<ReadOutcome>> outcome)
{
    m_Making = std::make_unique<Making>();
    std::exchange(m_Thread, nullptr)->deleteLater();
    m_Making->asked = asked;
    m_Making->outcome = std::move(outcome);
    if (!*m_Making->outcome || *m_Cancelled) {
        allIsMade();
        return;
    }
    // Rows that may share their residues with a structure are made in the end, when nobody can take
    // that away.
    std::vector<ReadFile> &files = m_Making->outcome->value().files;
    const bool hasStructures = std::ranges::any_of(
        files, [](const ReadFile &file) { return !file.contents.structures.empty(); });
    const std::size_t rows = rowsIn(files);
    if (rows <= kRowsAtOnce || hasStructures || !loadedStructures().empty()) {
        allIsMade();
        return;
    }
    m_Making->rows = rows;
    for (ReadFile &file : files) {
        for (AlignmentRecord &record : file.contents.alignments)
            m_Making->alignments.push_back(prepare(std::move(record)));
    }
    m_Pieces.start();
}

void Loader::makeSome()
{
    const auto next = std::ranges::find_if(m_Making->alignments, [](const Prepared &one) {
        return one.making->rowsMade() < one.making->rowCount();
    });
    if (next == m_Making->alignments.end() || *m_Cancelled) {
        m_Pieces.stop();
        allIsMade();
        return;
    }
    const std::size_t before = next->making->rowsMade();
    next->making->makeRows(kRowsAtOnce);
    m_Making->rowsMade += next->making->rowsMade() - before;
    emit making(double(m_Making->rowsMade) / double(m_Making->rows));
}

void Loader::allIsMade()
{
    // A window that shows a dialog while it is told of a change must not cost the user a file.
    whenNothingIsPublished([loader = QPointer(this)] {
        if (loader == nullptr)
            return;
        const std::unique_ptr<Making> made = std::move(loader->m_Making);
        // Cancel may have been pressed after the last byte or row: nothing is in the tree yet.
        const bool isCancelled = *loader->m_Cancelled || !*made->outcome;
        LoadReport report;
        if (isCancelled) {
            report = cancelledReport();
        } else {
            const ArrivalScope arrival;
            report = loader->makeObjects(made->outcome->value(), made->alignments, made->asked);
        }
        report.asked = made->asked;
        emit loader->finished(report);
        if (loader != nullptr && !loader->isBusy())
            loader->startNext();
    });
}

LoadReport Loader::openNow(const fs::path &file)
{
    ReadOutcome outcome = readNow(file);
    return arrive(outcome);
}

ReadOutcome Loader::readNow(const fs::path &file)
{
    return ReadJob({file}, loadedStructures())
        .run([](const std::string &, double) { return true; })
        .value();
}

LoadReport Loader::arrive(ReadOutcome &outcome)
{
    const ArrivalScope arrival;
    return makeObjects(outcome);
}

Loader::Prepared Loader::prepare(AlignmentRecord &&record)
{
    Prepared prepared{std::move(record.remarks), missingStructuresOf(record), nullptr};
    prepared.making = std::make_unique<AlignmentMaking>(std::move(record));
    return prepared;
}

LoadReport Loader::makeObjects(ReadOutcome &outcome)
{
    std::deque<Prepared> none;
    return makeObjects(outcome, none, {});
}

LoadReport Loader::makeObjects(ReadOutcome &outcome, std::deque<Prepared> &prepared,
                               const std::vector<fs::path> &asked)
{
    LoadReport report;
    report.failures = std::move(outcome.failures);
    if (!outcome.files.empty()) {
        const DataAdder<Space> guard(nullptr, Space::instance());
        LongWork work("Making sequences and alignments", rowsIn(outcome.files),
                      LongWork::Kind::Changing);
        if (!work.goesOn())
            return cancelledReport();
        for (ReadFile &file : outcome.files) {
            if (guard.m_good) {
                report.read.push_back(file.file);
                if (!makeObjects(file, prepared, work, report))
                    return cancelledReport();
            } else {
                report.failures.push_back({file.file, Failure{FailureKind::Refused,
                                                              "nothing can be added just now",
                                                              {file.file.filename().string()}}});
            }
        }
        if (guard.m_good && !asked.empty())
            emit objectsCome(asked);
    }
    for (const FileFailure &failure : report.failures)
        Logger::Write(QString::fromStdString(failure.failure.message()), Logger::Severity::Error);
    return report;
}

bool Loader::makeObjects(ReadFile &file, std::deque<Prepared> &prepared, LongWork &work,
                         LoadReport &report)
{
    const QString name = fileText(file.file);
    const LoadReport::Origin origin{
        file.file, file.contents.writtenAs,
        file.contents.structures.size() + file.contents.alignments.size() == 1,
        file.contents.state};
    for (StructureRecord &record : file.contents.structures) {
        logRemarks(record.remarks);
        if (Structure *structure = ObjectFactory::adopt(std::move(record))) {
            m_Sources.set(*structure, file.file);
            report.structures.push_back(structure);
            report.structureOrigins.push_back(origin);
            Logger::Write(
                tr("%1: structure %2, %3").arg(name, nameText(*structure), sizeText(*structure)));
        }
    }
    for (AlignmentRecord &record : file.contents.alignments) {
        Prepared made;
        if (prepared.empty()) {
            made = prepare(std::move(record));
        } else {
            made = std::move(prepared.front());
            prepared.pop_front();
        }
        logRemarks(made.remarks);
        if (!made.missingStructures.isEmpty())
            Logger::Write(tr("%1: found no structure for rows that name %2: none is loaded, and no "
                             "such file stands beside %1. These rows have no coordinates.")
                              .arg(name, listText(made.missingStructures)),
                          Logger::Severity::Warning);
        const std::size_t rows = made.making->rowCount();
        while (made.making->rowsMade() < rows) {
            if (!work.goesOn())
                return false;
            made.making->makeRows(1);
        }
        Space &space = *Space::instance();
        const std::size_t before = space.ChildCount();
        if (Alignment *alignment = made.making->finish()) {
            m_Sources.set(*alignment, file.file);
            report.alignments.push_back(alignment);
            report.alignmentOrigins.push_back(origin);
            Logger::Write(
                tr("%1: alignment %2, %3").arg(name, nameText(*alignment), sizeText(*alignment)));
        } else {
            for (std::size_t i = before; i < space.ChildCount(); ++i)
                report.sequences.push_back(space.Child(i));
            Logger::Write(rows == 1 ? tr("%1: 1 sequence").arg(name)
                                    : tr("%1: %2 sequences").arg(name).arg(rows));
        }
    }
    return true;
}

} // namespace TAMBO::app

#include "moc_Loader.cpp"
