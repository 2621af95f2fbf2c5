// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps the work of this workbench on the disk while one works: a LiveSession whose entries a
// thread writes. When the program ends as it should, nothing is left of it.
#pragma once

#include "LiveSession.h"
#include "SessionSummary.h"
#include "StoreWriter.h"
#include "Subscriber.h"
#include "UnsavedCount.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace TAMBO::sessions {
class KeptValues;
}

namespace TAMBO::app {

class LiveStore : public QObject, private Subscriber
{
    Q_OBJECT

public:
    struct Pace
    {
        // Of what is recorded, as LiveSession counts it.
        std::uint64_t mostReplay = sessions::LiveSession::kMostReplay;
        // All of it is written anew when nobody is likely to go on at once.
        std::chrono::milliseconds beforeFold{3000};
    };

    // Into a new file, from what space, history and values are now. The values outlive it.
    LiveStore(ObjectSpace &space, History &history, sessions::KeptValues &values,
              const QString &file)
        : LiveStore(space, history, values, file, Pace())
    { }
    LiveStore(ObjectSpace &space, History &history, sessions::KeptValues &values,
              const QString &file, const Pace &pace);
    // As the program should end: the file goes.
    ~LiveStore() override;

    // What the user is to know of what is not safe; empty when all is well.
    [[nodiscard]] QString warning() const { return m_Warning; }
    // Values that follow steps are written now, if they have changed.
    void writeStepValues();
    // All that has been done has been handed over to be written.
    [[nodiscard]] bool isUpToDate() const noexcept { return m_Session->isUpToDate(); }
    // As LiveSession has them.
    [[nodiscard]] std::uint64_t recordCount() const noexcept { return m_Session->recordCount(); }
    [[nodiscard]] bool hasHandedOver(std::uint64_t records) const noexcept
    {
        return m_Session->hasHandedOver(records);
    }
    // Called once, when all that has been done up to now is on the disk, or when the program ends
    // as it should and nobody needs that any more.
    void whenSafe(std::function<void()> task);

signals:
    void warningChanged(const QString &warning);

private:
    void commUpdate() override;
    void commAdd() override;
    void commDelete() override;

    void follow();
    void writeSlice();
    void foldIfDue();
    void lookAtValues();
    void writeValues();
    void write(sessions::StoreEntry entry);
    void writeAll(std::vector<sessions::NamedValue> values);
    void look();
    void startAnew();
    [[nodiscard]] QString findWarning(const sessions::StoreWriter::Status &status) const;

    QString m_File;
    std::unique_ptr<sessions::StoreWriter> m_Writer;
    // Hands over to the writer.
    std::unique_ptr<sessions::LiveSession> m_Session;
    sessions::KeptValues &m_Values;
    SessionSummary m_Summary;
    UnsavedCount m_Unsaved;
    // What takes its time is handed over when nothing else is to be done.
    QTimer m_Slices;
    QTimer m_Fold;
    QTimer m_ValueLooks;
    // In between, while values are being prepared.
    QTimer m_ValueSlices;
    QTimer m_Looks;
    QString m_Warning;
    // That there are changes which are not even on their way to the disk.
    std::optional<std::chrono::steady_clock::time_point> m_LackingSince;
    std::function<void()> m_WhenSafe;
};

} // namespace TAMBO::app
