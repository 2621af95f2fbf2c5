// SPDX-License-Identifier: GPL-3.0-or-later
// Exports that go on while the user works on. What was exported counts as saved in the state in
// which it was when the user asked.
#pragma once

#include "SavedPlaces.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class QWidget;

namespace TAMBO {
class KeptState;
}

namespace TAMBO::app {

class ObjectReferences;
class WriteJob;

class ExportRuns : public QObject
{
    Q_OBJECT

public:
    struct Order
    {
        Order();
        Order(Order &&) noexcept;
        ~Order();

        // Started.
        std::unique_ptr<WriteJob> job;
        // Of what is exported.
        QString name;
        std::unique_ptr<ObjectReferences> object;
        WriteOptions options;
        QStringList losses;
        bool countsAsSaved = false;
        // Of that object; null for one whose state nobody follows.
        std::unique_ptr<KeptState> state;
    };

    // places outlives the runs.
    explicit ExportRuns(SavedPlaces &places);
    // Calls off what is under way.
    ~ExportRuns() override;

    // Shows how far it is over parent, which outlives the runs.
    void take(Order order, QWidget *parent);
    [[nodiscard]] bool isEmpty() const noexcept { return m_Runs.empty(); }
    // With a dialog over parent until all have ended. False when the user goes on instead, or one
    // of them has failed.
    [[nodiscard]] bool waitForAll(QWidget *parent);
    [[nodiscard]] bool isAwaited() const noexcept { return m_IsAwaited; }

    // What a written file means for its object.
    static void note(SavedPlaces &places, const Order &order, const QString &file);

signals:
    void exported(const QString &file);
    // Its line is in the log.
    void failed(const QString &headline, const QStringList &causes);
    void ended();

private:
    struct Run;

    void finish(WriteJob *job);

    SavedPlaces &m_Places;
    std::vector<std::unique_ptr<Run>> m_Runs;
    bool m_HasFailed = false;
    bool m_IsAwaited = false;
};

} // namespace TAMBO::app
