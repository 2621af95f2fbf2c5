// SPDX-License-Identifier: GPL-3.0-or-later
#include "LiveStore.h"

#include "ChangeScope.h"
#include "History.h"
#include "KeptValues.h"
#include "Logger.h"
#include "SessionFolder.h"
#include "SessionKinds.h"

#include <QFile>
#include <QMetaObject>

#include <chrono>
#include <utility>
#include <variant>

namespace TAMBO::app {

namespace {

using namespace std::chrono_literals;
using sessions::StoreWriter;

// Some tenths of a millisecond of the window's thread.
constexpr std::size_t kSlice = std::size_t(128) << 10;
// Entries that may wait before the disk gets more of what is not urgent.
constexpr std::uint64_t kMostWaiting = 4;
// Until work that is not on the disk is worth a word.
constexpr auto kPatience = 1s;
constexpr auto kBetweenLooks = 500ms;
// Of values, which change without anybody being told.
constexpr auto kBetweenValues = 1s;
// What has just arrived is painted first.
constexpr auto kBeforeSlices = 300ms;

} // namespace

LiveStore::LiveStore(ObjectSpace &space, History &history, sessions::KeptValues &values,
                     const QString &file, const Pace &pace)
    : m_File(file),
      m_Writer(std::make_unique<StoreWriter>(
          QFile::encodeName(file).toStdString(),
          [this] { QMetaObject::invokeMethod(this, &LiveStore::look, Qt::QueuedConnection); })),
      m_Session(std::make_unique<sessions::LiveSession>(
          space, history, [this](sessions::StoreEntry entry) { write(std::move(entry)); },
          sessions::LiveSession::kSmall, pace.mostReplay)),
      m_Values(values),
      m_Summary(space),
      m_Unsaved(history)
{
    m_Slices.setSingleShot(true);
    connect(&m_Slices, &QTimer::timeout, this, &LiveStore::writeSlice);
    m_ValueSlices.setSingleShot(true);
    connect(&m_ValueSlices, &QTimer::timeout, this, &LiveStore::lookAtValues);
    connect(&m_ValueLooks, &QTimer::timeout, this, &LiveStore::lookAtValues);
    m_ValueLooks.start(kBetweenValues);
    m_Fold.setSingleShot(true);
    m_Fold.setInterval(pace.beforeFold);
    connect(&m_Fold, &QTimer::timeout, this, &LiveStore::foldIfDue);
    connect(&m_Looks, &QTimer::timeout, this, &LiveStore::look);
    m_Looks.start(kBetweenLooks);
    m_Values.add(m_Summary);
    m_Values.add(m_Unsaved);
    m_Values.forgetGiven();
    lookAtValues();
    follow();
}

LiveStore::~LiveStore()
{
    m_Values.remove(m_Summary);
    m_Values.remove(m_Unsaved);
    m_Session.reset();
    m_Writer->abandon();
    m_Writer.reset();
    SessionFolder::remove(m_File);
    if (m_WhenSafe)
        m_WhenSafe();
}

void LiveStore::whenSafe(std::function<void()> task)
{
    m_WhenSafe = std::move(task);
}

void LiveStore::commUpdate()
{
    follow();
}

void LiveStore::commAdd()
{
    follow();
}

void LiveStore::commDelete()
{
    follow();
}

void LiveStore::follow()
{
    if (m_Session->hasMore() && !m_Slices.isActive())
        m_Slices.start(kBeforeSlices);
    m_Fold.start();
}

void LiveStore::writeSlice()
{
    const StoreWriter::Status status = m_Writer->status();
    if (isChanging()) {
        m_Slices.start(kBeforeSlices);
    } else if (status.handed - status.durable > kMostWaiting) {
        m_Slices.start(1ms);
    } else if (m_Session->writeMore(kSlice)) {
        m_Slices.start(0ms);
    } else {
        writeStepValues();
    }
}

void LiveStore::foldIfDue()
{
    if (!m_Session->isFoldDue())
        return;
    m_Session->fold();
    m_Slices.start(0ms);
}

void LiveStore::lookAtValues()
{
    if (m_Values.prepare())
        m_ValueSlices.start(0ms);
    else
        writeValues();
}

void LiveStore::writeValues()
{
    writeAll(m_Values.changed());
}

void LiveStore::writeStepValues()
{
    writeAll(m_Values.changedBySteps());
}

void LiveStore::write(sessions::StoreEntry entry)
{
    const auto *const record = std::get_if<sessions::Record>(&entry);
    // A state has changes in it that no record has.
    const bool isChange =
        std::holds_alternative<sessions::StateSwitch>(entry) ||
        (record != nullptr && record->kind == std::uint32_t(sessions::RecordKind::Change));
    std::vector<sessions::StoreEntry> entries;
    entries.push_back(std::move(entry));
    // What says that a file is still to be opened goes with what was in it, or it would be there
    // twice after a crash in between.
    if (isChange)
        for (sessions::NamedValue &value : m_Values.changedBySteps())
            entries.emplace_back(std::move(value));
    m_Writer->put(std::move(entries));
}

void LiveStore::writeAll(std::vector<sessions::NamedValue> values)
{
    for (sessions::NamedValue &value : values)
        m_Writer->put(std::move(value));
}

// ---- What is not safe

void LiveStore::look()
{
    StoreWriter::Status status = m_Writer->status();
    if (status.hasGivenUp) {
        startAnew();
        status = m_Writer->status();
    }
    // Of a change that was published to nobody.
    if (m_Session->hasMore() && !m_Slices.isActive())
        m_Slices.start(kBeforeSlices);
    if (m_WhenSafe && m_Session->isUpToDate() && status.durable == status.handed)
        std::exchange(m_WhenSafe, {})();
    if (!m_Session->lacksChanges())
        m_LackingSince.reset();
    else if (!m_LackingSince)
        m_LackingSince = StoreWriter::Clock::now();
    const QString warning = findWarning(status);
    if (warning == m_Warning)
        return;
    m_Warning = warning;
    if (!warning.isEmpty())
        Logger::Write(warning, Logger::Severity::Warning);
    emit warningChanged(warning);
}

void LiveStore::startAnew()
{
    m_Writer->startAnew();
    m_Session->startAnew();
    m_Values.forgetGiven();
    lookAtValues();
    follow();
}

QString LiveStore::findWarning(const StoreWriter::Status &status) const
{
    if (status.problem)
        return tr("A crash would lose what you do now: %1")
            .arg(QString::fromStdString(status.problem->message()));
    if (status.waitingSince && StoreWriter::Clock::now() - *status.waitingSince > kPatience)
        return tr("A crash would lose the last changes: the disk is slow.");
    if (m_LackingSince && StoreWriter::Clock::now() - *m_LackingSince > kPatience)
        return tr("A crash would lose the last changes: much that has arrived is still to be "
                  "written.");
    return {};
}

} // namespace TAMBO::app

#include "moc_LiveStore.cpp"
