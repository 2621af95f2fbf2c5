// SPDX-License-Identifier: GPL-3.0-or-later
// The making of one tree: the rows are copied between events, and what is long is done in a thread
// or by another program. It can be given up at any time, by its end.
#pragma once

#include "DistanceMatrix.h"
#include "LeafRows.h"
#include "Tree.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <memory>
#include <span>
#include <string>
#include <thread>
#include <variant>
#include <vector>

namespace TAMBO {
class AlignmentWindow;
}

namespace companion {

class FastTreeRun;

enum class TreeMethod { NeighborJoining, FastTree, File };

struct MadeTree
{
    Tree tree;
    // In the order of leafOrder(tree).
    std::vector<LeafRow> leaves;
    TreeMethod method = TreeMethod::NeighborJoining;
    // Without its folder.
    QString file;
};

class TreeJob : public QObject
{
    Q_OBJECT

public:
    // By neighbor joining; it takes three times as long for half as many more.
    static constexpr unsigned long kMostJoined = 2000;
    // By any.
    static constexpr unsigned long kMostRows = 100'000;

    // Of the alignment that the window shows, which is copied first; when it changes meanwhile,
    // copying begins anew. The file is one of File alone.
    TreeJob(TAMBO::AlignmentWindow &window, TreeMethod method, const QString &file = {});
    ~TreeJob() override;

    // From the event loop on, finished() or failed() comes, unless this is deleted.
    void start();

signals:
    // Of 100; what: what is being done.
    void progressed(int percent, const QString &what);
    void finished(const companion::MadeTree &made);
    // A whole sentence; empty when the user has given it up elsewhere.
    void failed(const QString &cause);

private:
    using Outcome = std::variant<MadeTree, QString>;

    void beginCopy();
    void copy();
    void compute();
    void inThread(std::function<Outcome()> work);
    void runProgram();
    void take(const Outcome &outcome);
    void tellProgress();
    [[nodiscard]] Outcome joined();
    [[nodiscard]] Outcome opened() const;
    [[nodiscard]] Outcome ofProgram(const QByteArray &newick) const;
    // The leaves of a tree, which are these rows.
    [[nodiscard]] MadeTree madeOf(Tree tree, std::span<const std::size_t> rows) const;

    TAMBO::AlignmentWindow &m_Window;
    TreeMethod m_Method;
    QString m_File;

    QTimer m_Slices;
    // Of the alignment that is being copied.
    unsigned long m_Revision = 0;
    unsigned long m_Next = 0;
    std::vector<LeafRow> m_Rows;
    std::vector<std::string> m_Letters;

    std::unique_ptr<FastTreeRun> m_Program;
    unsigned long m_Job = 0;
    std::thread m_Thread;
    std::atomic<bool> m_Stop = false;
    std::atomic<double> m_Done = 0;
    QTimer m_Progress;
};

} // namespace companion
