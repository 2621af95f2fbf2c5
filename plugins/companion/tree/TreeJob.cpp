// SPDX-License-Identifier: GPL-3.0-or-later
#include "TreeJob.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "FastTreeRun.h"
#include "IdentityDistances.h"
#include "NeighborJoining.h"
#include "Newick.h"
#include "RunningJobs.h"
#include "TreeFile.h"

#include <QFileInfo>

#include <charconv>
#include <chrono>
#include <new>
#include <utility>

namespace companion {

namespace {

// Of a frame, so that scrolling is not felt.
constexpr auto kCopySlice = std::chrono::milliseconds(6);
constexpr auto kBetweenProgress = std::chrono::milliseconds(100);
constexpr double kPercent = 100;
// In bytes, of which joining keeps two copies.
constexpr std::uint64_t kMostLetters = std::uint64_t(1) << 30;
// A comparison of so many columns takes as long as a step of joining looks at so many pairs.
constexpr double kColumnsOfAStep = 8;
constexpr double kPairsOfAStep = 12;

} // namespace

TreeJob::TreeJob(TAMBO::AlignmentWindow &window, TreeMethod method, const QString &file)
    : m_Window(window), m_Method(method), m_File(file)
{
    connect(&m_Slices, &QTimer::timeout, this, &TreeJob::copy);
    m_Progress.setInterval(kBetweenProgress);
    connect(&m_Progress, &QTimer::timeout, this, &TreeJob::tellProgress);
}

TreeJob::~TreeJob()
{
    m_Stop = true;
    if (m_Thread.joinable())
        m_Thread.join();
    RunningJobs::End(m_Job);
}

void TreeJob::start()
{
    beginCopy();
    m_Slices.start(0);
}

// ---- Copying the rows

void TreeJob::beginCopy()
{
    const TAMBO::Alignment *const alignment = m_Window.alignment();
    m_Revision = alignment == nullptr ? 0 : alignment->layoutRevision();
    m_Next = 0;
    m_Rows.clear();
    m_Letters.clear();
    m_Program.reset();
    if (m_Method == TreeMethod::FastTree)
        m_Program = std::make_unique<FastTreeRun>();
}

void TreeJob::copy()
{
    const TAMBO::Alignment *const alignment = m_Window.alignment();
    if (alignment == nullptr || alignment->height() == 0) {
        m_Slices.stop();
        emit failed(tr("There are no rows to make a tree of."));
        return;
    }
    const unsigned long rows = alignment->height();
    if (rows > kMostRows) {
        m_Slices.stop();
        emit failed(tr("The alignment has %L1 rows. Trees are made of %L2 at most.")
                        .arg(rows)
                        .arg(kMostRows));
        return;
    }
    if (m_Method == TreeMethod::NeighborJoining &&
        std::uint64_t(rows) * alignment->width() > kMostLetters) {
        m_Slices.stop();
        emit failed(tr("The alignment is too large for neighbor joining: %L1 rows by %L2 columns.")
                        .arg(rows)
                        .arg(alignment->width()));
        return;
    }
    if (alignment->layoutRevision() != m_Revision)
        beginCopy();
    const auto end = std::chrono::steady_clock::now() + kCopySlice;
    while (m_Next < rows && std::chrono::steady_clock::now() < end) {
        std::string letters = alignment->GetSequence(m_Next, false);
        m_Rows.push_back(leafRowOf(*alignment, m_Next, letters));
        ++m_Next;
        if (m_Program != nullptr)
            m_Program->addRow(letters);
        else if (m_Method == TreeMethod::NeighborJoining)
            m_Letters.push_back(std::move(letters));
    }
    if (m_Next < rows) {
        emit progressed(0, tr("Copying the rows…"));
        return;
    }
    m_Slices.stop();
    compute();
}

// ---- The tree

void TreeJob::compute()
{
    switch (m_Method) {
    case TreeMethod::NeighborJoining:
        return inThread([this] { return joined(); });
    case TreeMethod::File:
        return inThread([this] { return opened(); });
    case TreeMethod::FastTree:
        return runProgram();
    }
}

void TreeJob::inThread(std::function<Outcome()> work)
{
    m_Progress.start();
    m_Thread = std::thread([this, work = std::move(work)] {
        Outcome outcome = tr("There is not enough memory for the tree.");
        try {
            outcome = work();
        } catch (const std::bad_alloc &) {
        }
        if (m_Stop)
            return;
        QMetaObject::invokeMethod(
            this, [this, outcome = std::move(outcome)] { take(outcome); }, Qt::QueuedConnection);
    });
}

TreeJob::Outcome TreeJob::joined()
{
    const double rows = double(m_Letters.size());
    const double comparing =
        m_Letters.empty() ? 0 : double(m_Letters.front().size()) / kColumnsOfAStep;
    const double share = comparing / (comparing + rows / kPairsOfAStep);
    const auto goOn = [this](double done) {
        m_Done = done;
        return !m_Stop;
    };
    const std::optional<DistanceMatrix> distances = identityDistances(
        m_Letters, IdentityOf::AlignedPairs, [&](double done) { return goOn(share * done); });
    m_Letters.clear();
    if (!distances)
        return QString();
    std::optional<Tree> tree = neighborJoining(
        *distances, {}, [&](double done) { return goOn(share + (1 - share) * done); });
    if (!tree)
        return QString();
    rootInTheMiddle(*tree);
    // The first nodes are the rows.
    const std::vector<std::size_t> leaves = leafOrder(*tree);
    return madeOf(std::move(*tree), leaves);
}

TreeJob::Outcome TreeJob::opened() const
{
    std::vector<std::string> names;
    names.reserve(m_Rows.size());
    for (const LeafRow &row : m_Rows)
        names.push_back(row.name);
    std::variant<NamedTree, QString> read = readTreeFile(m_File, names);
    if (QString *const cause = std::get_if<QString>(&read))
        return std::move(*cause);
    auto &named = std::get<NamedTree>(read);
    return madeOf(std::move(named.tree), named.rows);
}

TreeJob::Outcome TreeJob::ofProgram(const QByteArray &newick) const
{
    const QString none = tr("What fasttree has printed is no tree of the rows.");
    std::variant<Tree, NewickError> read =
        readNewick({newick.constData(), std::size_t(newick.size())});
    if (std::holds_alternative<NewickError>(read))
        return none;
    Tree &tree = std::get<Tree>(read);
    rootInTheMiddle(tree);
    std::vector<std::size_t> rows;
    std::vector<bool> isThere(m_Rows.size());
    for (const std::size_t leaf : leafOrder(tree)) {
        const std::string &name = tree.nodes[leaf].name;
        std::size_t row = m_Rows.size();
        std::from_chars(name.data() + std::min<std::size_t>(1, name.size()),
                        name.data() + name.size(), row);
        if (row >= m_Rows.size() || isThere[row] || name != FastTreeRun::labelOf(row))
            return none;
        isThere[row] = true;
        rows.push_back(row);
    }
    if (rows.size() != m_Rows.size())
        return none;
    return madeOf(std::move(tree), rows);
}

MadeTree TreeJob::madeOf(Tree tree, std::span<const std::size_t> rows) const
{
    MadeTree made;
    const std::vector<std::size_t> leaves = leafOrder(tree);
    made.leaves.reserve(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        made.leaves.push_back(m_Rows[rows[i]]);
        tree.nodes[leaves[i]].name = m_Rows[rows[i]].name;
    }
    made.tree = std::move(tree);
    made.method = m_Method;
    made.file = QFileInfo(m_File).fileName();
    return made;
}

void TreeJob::take(const Outcome &outcome)
{
    m_Progress.stop();
    if (m_Thread.joinable())
        m_Thread.join();
    RunningJobs::End(std::exchange(m_Job, 0));
    if (const auto *const cause = std::get_if<QString>(&outcome))
        emit failed(*cause);
    else
        emit finished(std::get<MadeTree>(outcome));
}

void TreeJob::tellProgress()
{
    const int percent = int(m_Done * kPercent);
    emit progressed(percent, m_Method == TreeMethod::File ? tr("Reading the tree…")
                                                          : tr("Neighbor joining…"));
}

void TreeJob::runProgram()
{
    connect(m_Program.get(), &FastTreeRun::started, this, [this] {
        m_Job = RunningJobs::Begin(tr("fasttree"), m_Program->processId());
        RunningJobs::EndWithWorkbench(m_Job);
        emit progressed(0, tr("fasttree runs…"));
    });
    connect(m_Program.get(), &FastTreeRun::said, this, [this](const QString &line) {
        RunningJobs::Say(m_Job, line);
        emit progressed(0, tr("fasttree: %1").arg(line));
    });
    connect(m_Program.get(), &FastTreeRun::failed, this,
            [this](const QString &cause) { take(Outcome(cause)); });
    // Reading a tree of a hundred thousand leaves takes a while.
    connect(m_Program.get(), &FastTreeRun::finished, this, [this](const QByteArray &newick) {
        inThread([this, newick] { return ofProgram(newick); });
    });
    m_Program->start();
}

} // namespace companion
