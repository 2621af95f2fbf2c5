// SPDX-License-Identifier: GPL-3.0-or-later
#include "SearchRun.h"

#include "ObjectSpace.h"
#include "RowMatcher.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QLabel>
#include <QLocale>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <utility>

namespace TAMBO::services {

namespace {

using namespace std::chrono_literals;

// Most searches have ended by then, and nobody has noticed that there was a thread.
constexpr auto kUnnoticed = 30ms;
// Short searches come and go without a dialog.
constexpr auto kPatience = 300ms;
constexpr auto kTick = 100ms;
// A cancelled thread ends soon, but nobody has to wait for it.
constexpr auto kFarewell = 80ms;
constexpr std::size_t kBatchCells = std::size_t(4) << 20;

} // namespace

struct SearchRun::Batch
{
    std::shared_ptr<RowMatcher> matcher;
    std::vector<std::size_t> rows;
    std::vector<std::string> texts;
    std::vector<RowSearch::Row> found;
    std::size_t cells = 0;
    std::atomic<std::size_t> done = 0;
    std::atomic<bool> isCancelled = false;

    [[nodiscard]] bool isDone() const noexcept { return done == texts.size(); }
    void run()
    {
        found.reserve(texts.size());
        for (const std::string &text : texts) {
            if (isCancelled)
                return;
            found.push_back(matcher->find(text, isCancelled));
            ++done;
        }
    }
};

SearchRun::SearchRun(QWidget *window, const Alignment &alignment, const QString &pattern,
                     RowSearch::Language language)
    : m_Window(window),
      m_HasWindow(window != nullptr),
      m_Alignment(alignment),
      m_Pattern(pattern),
      m_Name(QString::fromStdString(alignment.Name())),
      m_Matcher(std::make_shared<RowMatcher>(pattern, language))
{
    m_Clock.start();
}

SearchRun::~SearchRun()
{
    delete m_Dialog;
}

std::optional<RowSearch::Found> SearchRun::run()
{
    RowSearch::Found found;
    if (const Result<void> valid = m_Matcher->validity(); !valid) {
        // The kit tells of it by text.
        found.mistake = QString::fromStdString(valid.error().message());
        found.rows.resize(m_Alignment.height());
        return found;
    }
    for (bool isCurrent = false; !isCurrent;) {
        const unsigned long revision = m_Alignment.layoutRevision();
        if (!findInAllRows())
            return std::nullopt;
        isCurrent = m_Alignment.layoutRevision() == revision;
        if (isCurrent)
            break;
        for (std::size_t row = 0; row < m_Rows.size(); ++row)
            m_Known.emplace(m_Hashes[row], std::move(m_Rows[row]));
    }
    found.rows = std::move(m_Rows);
    return found;
}

bool SearchRun::findInAllRows()
{
    m_Rows.clear();
    m_Hashes.clear();
    m_RowCount = m_Alignment.height();
    auto batch = std::make_shared<Batch>();
    for (std::size_t row = 0; row < m_Alignment.height(); ++row) {
        std::string text = m_Alignment.GetSequence(row, false);
        m_Hashes.push_back(std::hash<std::string>()(text));
        const auto known = m_Known.find(m_Hashes.back());
        if (known != m_Known.end()) {
            m_Rows.push_back(known->second);
            continue;
        }
        m_Rows.emplace_back();
        batch->rows.push_back(row);
        batch->cells += text.size();
        batch->texts.push_back(std::move(text));
        if (batch->cells < kBatchCells)
            continue;
        if (!find(batch))
            return false;
        batch = std::make_shared<Batch>();
    }
    return find(batch);
}

bool SearchRun::find(const std::shared_ptr<Batch> &batch)
{
    if (batch->rows.empty())
        return true;
    batch->matcher = m_Matcher;
    // It keeps the batch until it has ended.
    QThread *thread = QThread::create([batch] { batch->run(); });
    QEventLoop loop;
    QObject::connect(thread, &QThread::finished, &loop, &QEventLoop::quit);
    thread->start();
    const auto unnoticed = kUnnoticed - std::chrono::milliseconds(m_Clock.elapsed());
    const bool isOver = unnoticed > 0ms && thread->wait(QDeadlineTimer(unnoticed));
    if (!isOver && !wait(loop, *batch)) {
        batch->isCancelled = true;
        if (thread->wait(QDeadlineTimer(kFarewell)))
            delete thread;
        else
            QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
        return false;
    }
    thread->wait();
    delete thread;
    for (std::size_t i = 0; i < batch->rows.size(); ++i)
        m_Rows[batch->rows[i]] = std::move(batch->found[i]);
    return true;
}

bool SearchRun::wait(QEventLoop &loop, const Batch &batch)
{
    if (m_Window)
        QObject::connect(m_Window, &QObject::destroyed, &loop, &QEventLoop::quit);
    bool wantsDialog = m_Dialog != nullptr;
    if (!wantsDialog) {
        const auto patience = kPatience - std::chrono::milliseconds(m_Clock.elapsed());
        QTimer::singleShot(std::max(patience, 0ms), &loop, [&loop, &wantsDialog] {
            wantsDialog = true;
            loop.quit();
        });
        // Windows repaint, but nobody can edit before the dialog is there to keep them from it.
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    if (wantsDialog && !batch.isDone() && !isOrphaned())
        waitForUser(loop, batch);
    return batch.isDone() && !m_IsCancelled && !isOrphaned() && isAlignmentThere();
}

void SearchRun::waitForUser(QEventLoop &loop, const Batch &batch)
{
    if (!m_Dialog)
        openDialog();
    QObject::connect(m_Dialog, &QProgressDialog::canceled, &loop, [this, &loop] {
        m_IsCancelled = true;
        loop.quit();
    });
    QObject::connect(m_Dialog, &QDialog::finished, &loop, &QEventLoop::quit);
    QObject::connect(m_Dialog, &QObject::destroyed, &loop, &QEventLoop::quit);
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &loop, [this, &batch, &loop] {
        // Hiding it emits nothing.
        if (!m_Dialog || !m_Dialog->isVisible())
            loop.quit();
        else if (m_Label)
            m_Label->setText(progressText(batch));
    });
    tick.start(kTick);
    loop.exec();
    // Closed by whoever closes all dialogs, it is cancelled too.
    m_IsCancelled = m_IsCancelled || !m_Dialog || !m_Dialog->isVisible();
}

bool SearchRun::isOrphaned() const
{
    return m_HasWindow && !m_Window;
}

void SearchRun::openDialog()
{
    m_Dialog = new QProgressDialog(m_Window);
    m_Dialog->setObjectName(QStringLiteral("SearchProgress"));
    m_Dialog->setWindowTitle(tr("Search"));
    m_Label = new QLabel(tr("Looking for %1 in %2…").arg(m_Pattern.left(60), m_Name));
    // Pattern and name are not ours.
    m_Label->setTextFormat(Qt::PlainText);
    m_Dialog->setLabel(m_Label);
    m_Dialog->setRange(0, 0);
    m_Dialog->setAutoClose(false);
    m_Dialog->setAutoReset(false);
    m_Dialog->setMinimumDuration(0);
    m_Dialog->setWindowModality(Qt::ApplicationModal);
    m_Dialog->show();
}

QString SearchRun::progressText(const Batch &batch) const
{
    const std::size_t row = batch.rows[std::min(batch.done.load(), batch.rows.size() - 1)];
    return tr("Looking for %1 in %2…\nRow %3 of %4")
        .arg(m_Pattern.left(60), m_Name, QLocale().toString(qulonglong(row) + 1),
             QLocale().toString(qulonglong(m_RowCount)));
}

bool SearchRun::isAlignmentThere() const
{
    auto &space = ObjectSpace::get();
    return std::find(space.begin(), space.end(), &m_Alignment) != space.end();
}

} // namespace TAMBO::services

std::optional<RowSearch::Found> RowSearch::Run(QWidget *window, const TAMBO::Alignment &alignment,
                                               const QString &pattern, Language language)
{
    return TAMBO::services::SearchRun(window, alignment, pattern, language).run();
}
