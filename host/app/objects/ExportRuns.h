// SPDX-License-Identifier: GPL-3.0-or-later
// Exports that go on while the user works on: of one file, or of several that are asked for
// together. What was exported counts as saved in the state in which it was when the user asked.
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
    // One object of a file.
    struct Part
    {
        Part();
        Part(Part &&) noexcept;
        Part &operator=(Part &&) noexcept;
        ~Part();

        std::unique_ptr<ObjectReferences> object;
        // Null for one whose state nobody follows.
        std::shared_ptr<const KeptState> state;
        QStringList losses;
        bool countsAsSaved = false;
    };
    // One file.
    struct Order
    {
        Order();
        Order(Order &&) noexcept;
        Order &operator=(Order &&) noexcept;
        ~Order();

        std::unique_ptr<WriteJob> job;
        // Of what is exported.
        QString name;
        WriteOptions options;
        // A file of one is its own from then on.
        std::vector<Part> parts;
    };

    // places outlives the runs.
    explicit ExportRuns(SavedPlaces &places);
    // Calls off what is under way.
    ~ExportRuns() override;

    // The first of them is started; the others are, one after the other. The rest is left undone
    // when one fails or the user calls it off. Shows how far it is over parent, which outlives the
    // runs.
    void take(std::vector<Order> orders, QWidget *parent);
    [[nodiscard]] bool isEmpty() const noexcept { return m_Runs.empty(); }
    // With a dialog over parent until all have ended. False when the user goes on instead, or one
    // of them has failed.
    [[nodiscard]] bool waitForAll(QWidget *parent);
    [[nodiscard]] bool isAwaited() const noexcept { return m_IsAwaited; }

    // What a written file means for its objects.
    static void note(SavedPlaces &places, const Order &order, const QString &file);

signals:
    void exported(const QString &file);
    // Its line is in the log.
    void failed(const QString &headline, const QStringList &causes);
    void ended();

private:
    struct Run;

    void await(WriteJob &job);
    void finish(WriteJob *job);
    void tellWritten(const Order &order, const QString &file);
    // How much of it was not begun; empty when nothing was left.
    [[nodiscard]] static QString notWritten(const Run &run);

    SavedPlaces &m_Places;
    std::vector<std::unique_ptr<Run>> m_Runs;
    bool m_HasFailed = false;
    bool m_IsAwaited = false;
};

} // namespace TAMBO::app
