// SPDX-License-Identifier: GPL-3.0-or-later
// Opens files: reads them in a thread of its own, then makes all their objects in one step of undo.
#pragma once

#include "ReadJob.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <atomic>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

class QThread;

namespace TAMBO {
class Alignment;
class Compound;
class LongWork;
class Structure;
} // namespace TAMBO

namespace TAMBO::app {

class ObjectSources;

// What came of one open command.
struct LoadReport
{
    // As given to open(), and which of them could be read.
    std::vector<std::filesystem::path> asked;
    std::vector<std::filesystem::path> read;
    // Each has its line in the log already.
    std::vector<FileFailure> failures;
    std::vector<Structure *> structures;
    std::vector<Alignment *> alignments;
    // Those of files that hold no alignment.
    std::vector<Compound *> sequences;
    // Where an object was read from.
    struct Origin
    {
        std::filesystem::path file;
        // As writers call it; empty when files of that kind are not written.
        std::string format;
        // Nothing else is in the file.
        bool isWhole = false;
        // The file as it was then.
        std::optional<FileState> state = {};
    };
    // One for each.
    std::vector<Origin> structureOrigins;
    std::vector<Origin> alignmentOrigins;
    bool isCancelled = false;
};

// Used in the GUI thread. Open commands are carried out one after the other.
class Loader : public QObject
{
    Q_OBJECT

public:
    // sources learns where the objects came from; it outlives the loader.
    explicit Loader(ObjectSources &sources, QObject *parent = nullptr);
    // Cancels what is under way.
    ~Loader() override;

    // Returns at once; finished() tells the end.
    void open(std::vector<std::filesystem::path> files);
    // Reads in the calling thread: for small files whose objects are needed at once.
    LoadReport openNow(const std::filesystem::path &file);
    // The two halves of it. Objects are made inside an ArrivalScope, and not while changes are
    // being published.
    [[nodiscard]] static ReadOutcome readNow(const std::filesystem::path &file);
    [[nodiscard]] LoadReport makeObjects(ReadOutcome &outcome);
    // Of what the user has given up, with a line in the log.
    [[nodiscard]] static LoadReport cancelledReport();
    // Gives up the command under way; nothing of it is loaded.
    void cancel();
    // The same with those that wait, of which finished() tells at once.
    void cancelAll();
    [[nodiscard]] bool isBusy() const noexcept
    {
        return m_Thread != nullptr || m_Making != nullptr;
    }

    // Objects of so many rows are made in one go; events are looked at before the next ones.
    static constexpr std::size_t kRowsAtOnce = 8192;

signals:
    void started();
    void progressed(const QString &fileName, double fraction);
    // All is read, and that share of the rows is made.
    void making(double fraction);
    // Of an open command: its objects are in the tree, in a change that is just ending.
    void objectsCome(const std::vector<std::filesystem::path> &asked);
    void finished(const TAMBO::app::LoadReport &report);

private:
    struct Prepared;
    // What of an open command is made between events. Nothing of it is in the tree.
    struct Making;

    void startNext();
    void readingEnded(const std::vector<std::filesystem::path> &asked,
                      std::shared_ptr<Result<ReadOutcome>> outcome);
    void makeSome();
    void allIsMade();
    [[nodiscard]] static Prepared prepare(AlignmentRecord &&record);
    [[nodiscard]] LoadReport arrive(ReadOutcome &outcome);
    [[nodiscard]] LoadReport makeObjects(ReadOutcome &outcome, std::deque<Prepared> &prepared,
                                         const std::vector<std::filesystem::path> &asked);
    // What is not prepared is made on the way. False when the user has given it up, and all of the
    // command is taken back.
    [[nodiscard]] bool makeObjects(ReadFile &file, std::deque<Prepared> &prepared, LongWork &work,
                                   LoadReport &report);

    ObjectSources &m_Sources;
    std::deque<std::vector<std::filesystem::path>> m_Waiting;
    QThread *m_Thread = nullptr;
    std::unique_ptr<Making> m_Making;
    QTimer m_Pieces;
    std::shared_ptr<std::atomic<bool>> m_Cancelled;
};

} // namespace TAMBO::app
