// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyWindow.h"

#include "PlainText.h"
#include "ResultsExport.h"
#include "ResultsModel.h"
#include "ResultsWatch.h"
#include "RunChoice.h"
#include "RunningFamily.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QSortFilterProxyModel>
#include <QStatusBar>
#include <QTableView>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace TAMBO::app {

namespace {

constexpr int kSaidMilliseconds = 8000;
// By whose texts columns get their widths; all of ten thousand would take too long.
constexpr int kMeasuredRows = 200;
constexpr int kWidestResult = 260;

QString folderText(const std::filesystem::path &folder)
{
    return QFile::decodeName(QByteArray::fromStdString(folder.string()));
}

QString countText(std::size_t count)
{
    return QLocale().toString(qulonglong(count));
}

} // namespace

FamilyWindow::FamilyWindow(const families::FamilyFolder &folder, RunningFamily &run,
                           Actions actions)
    : BaseWindow(tr("Models of %1").arg(QString::fromStdString(folder.name())), QSize(1100, 560),
                 QStringLiteral("Models of a family"), false, nullptr, "FamilyWindow"),
      m_Path(folder.path()),
      m_Family(QString::fromStdString(folder.name())),
      m_Running(run),
      m_Actions(std::move(actions)),
      m_Folder(std::make_shared<const families::FamilyFolder>(folder))
{
    setWindowIcon(QApplication::windowIcon());
    m_Results = new ResultsModel(this);
    m_Watch = new ResultsWatch(m_Path, this);
    makeControls();
    connect(m_Watch, &ResultsWatch::found, this,
            [this](const std::shared_ptr<const ResultsLook::News> &news) { take(*news); });
    connect(&m_Running, &RunningFamily::changed, m_Watch, &ResultsWatch::lookNow);
    connect(&m_Running, &RunningFamily::changed, this, &FamilyWindow::follow);
    follow();
    m_Watch->lookNow();
}

FamilyWindow::~FamilyWindow() = default;

void FamilyWindow::Kill(BaseWindow *)
{
    deleteLater();
}

void FamilyWindow::makeTable()
{
    m_Shown = new QSortFilterProxyModel(this);
    m_Shown->setSourceModel(m_Results);
    m_Shown->setSortRole(ResultsModel::kSortRole);
    m_Shown->setSortCaseSensitivity(Qt::CaseInsensitive);
    m_Table = new QTableView;
    m_Table->setObjectName(QStringLiteral("Results"));
    m_Table->setAccessibleName(tr("Results"));
    m_Table->setModel(m_Shown);
    m_Table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_Table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_Table->setAlternatingRowColors(true);
    m_Table->setWordWrap(false);
    m_Table->setTabKeyNavigation(false);
    m_Table->verticalHeader()->hide();
    m_Table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_Table->horizontalHeader()->setResizeContentsPrecision(kMeasuredRows);
    m_Table->horizontalHeader()->setSectionsMovable(true);
    m_Table->horizontalHeader()->setHighlightSections(false);
    m_Table->setSortingEnabled(true);
    // As the folder has them until somebody sorts them.
    m_Table->sortByColumn(-1, Qt::AscendingOrder);
    connect(m_Table, &QTableView::doubleClicked, this, &FamilyWindow::openModelAt);
    auto *enter = new QShortcut(QKeySequence(Qt::Key_Return), m_Table);
    enter->setContext(Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, [this] { openModelAt(m_Table->currentIndex()); });
    connect(m_Table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &FamilyWindow::follow);
}

QPushButton *FamilyWindow::addButton(const QString &text, const char *name, const QString &tip,
                                     void (FamilyWindow::*act)())
{
    auto *button = new QPushButton(text);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(tip);
    connect(button, &QPushButton::clicked, this, act);
    return button;
}

void FamilyWindow::makeControls()
{
    makeTable();
    m_Choice = new RunChoice;
    m_Run = addButton(tr("&Run"), "Run", {}, &FamilyWindow::run);
    m_Stop = addButton(tr("S&top"), "Stop", {}, &FamilyWindow::stop);
    m_Open = addButton(tr("&Open Models"), "Open", {}, &FamilyWindow::openModels);
    m_Superpose = addButton(tr("&Superpose"), "Superpose",
                            tr("Put the models that are open onto their templates again, of the "
                               "picked lines or of all"),
                            &FamilyWindow::superpose);
    m_Export =
        addButton(tr("&Export Table…"), "Export", tr("All lines in the order shown, as TSV or CSV"),
                  &FamilyWindow::exportTable);
    QPushButton *const folder = addButton(
        tr("Open &Folder"), "Folder", plainToolTip(folderText(m_Path)), &FamilyWindow::openFolder);
    m_Progress = new QProgressBar;
    m_Progress->setObjectName(QStringLiteral("Progress"));
    m_Progress->setAccessibleName(tr("Models that are built"));
    m_Says = new QLabel;
    m_Says->setObjectName(QStringLiteral("Says"));
    m_Says->setTextFormat(Qt::PlainText);
    m_Notes = new QLabel;
    m_Notes->setObjectName(QStringLiteral("Notes"));
    m_Notes->setTextFormat(Qt::PlainText);
    m_Notes->setWordWrap(true);
    m_Notes->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_Notes->hide();
    connect(m_Choice, &RunChoice::changed, this, &FamilyWindow::follow);

    auto *run = new QHBoxLayout;
    run->addWidget(m_Choice, 1);
    run->addWidget(m_Run);
    run->addWidget(m_Stop);
    auto *progress = new QHBoxLayout;
    progress->addWidget(m_Progress, 1);
    progress->addWidget(m_Says, 2);
    auto *below = new QHBoxLayout;
    below->addWidget(m_Open);
    below->addWidget(m_Superpose);
    below->addStretch();
    below->addWidget(m_Export);
    below->addWidget(folder);
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->addLayout(run);
    layout->addLayout(progress);
    layout->addWidget(m_Notes);
    layout->addWidget(m_Table, 1);
    layout->addLayout(below);
    setCentralWidget(content);
    statusBar()->setSizeGripEnabled(true);
    m_Table->setFocus();
}

void FamilyWindow::setNotes(const QStringList &notes)
{
    constexpr qsizetype kShown = 3;
    QString text = notes.first(std::min(notes.size(), kShown)).join(u'\n');
    if (notes.size() > kShown)
        text += u'\n' + tr("%1 more in the log").arg(notes.size() - kShown);
    m_Notes->setText(text);
    m_Notes->setVisible(!notes.isEmpty());
}

void FamilyWindow::say(const QString &text)
{
    statusBar()->showMessage(text, kSaidMilliseconds);
}

// ---- What there is

void FamilyWindow::take(const ResultsLook::News &news)
{
    if (news.failure)
        say(QString::fromStdString(news.failure->message()));
    m_IsAtWork = news.isAtWork;
    if (news.isOtherList)
        m_Results->clear();
    if (news.folder != nullptr)
        m_Folder = news.folder;
    const bool isFirst = m_Results->rowCount() == 0 && !news.rows.empty();
    m_Results->take(news.rows);
    if (isFirst) {
        m_Table->resizeColumnsToContents();
        for (int column = 0; column < ResultsModel::ColumnCount; ++column)
            m_Table->setColumnWidth(column, std::min(m_Table->columnWidth(column), kWidestResult));
    }
    follow();
}

QString FamilyWindow::progressText() const
{
    const ResultsModel::Counts &counts = m_Results->counts();
    QStringList parts{tr("%1 of %2 ok").arg(countText(counts.ok), countText(counts.all))};
    const auto add = [&parts](std::size_t count, const QString &what) {
        if (count > 0)
            parts << what.arg(countText(count));
    };
    add(counts.running, tr("%1 running"));
    add(counts.failed, tr("%1 failed"));
    add(counts.killed, tr("%1 killed"));
    add(counts.notRun, m_IsAtWork ? tr("%1 to go") : tr("%1 not run"));
    return parts.join(QStringLiteral(", "));
}

void FamilyWindow::follow()
{
    const ResultsModel::Counts &counts = m_Results->counts();
    const bool isOurs = m_Running.isRunning();
    const bool isAtWork = isOurs || m_IsAtWork;
    m_Progress->setRange(0, std::max(1, int(counts.all)));
    m_Progress->setValue(int(counts.ok));
    m_Says->setText(m_Running.isStopping() && isOurs ? tr("%1; stopping…").arg(progressText())
                                                     : progressText());
    const QString objection = m_Choice->objection();
    const bool isComplete = counts.all > 0 && counts.ok == counts.all;
    m_Choice->setEnabled(!isAtWork);
    m_Run->setEnabled(!isAtWork && objection.isEmpty() && !isComplete && counts.all > 0);
    m_Run->setToolTip(isAtWork               ? tr("It runs")
                      : isComplete           ? tr("All models are built")
                      : !objection.isEmpty() ? plainToolTip(objection)
                                             : tr("Build the models that are missing"));
    m_Stop->setEnabled(isOurs && !m_Running.isStopping());
    m_Stop->setToolTip(isAtWork && !isOurs
                           ? tr("Another program has started this run, and stops it")
                           : tr("End the run; models that are built stay"));
    const bool hasPicked = m_Table->selectionModel()->hasSelection();
    m_Open->setEnabled(counts.ok > 0);
    m_Open->setToolTip(hasPicked ? tr("Open the models of the picked lines, tied to their rows")
                                 : tr("Open all models, tied to their rows"));
    m_Superpose->setEnabled(counts.ok > 0);
    m_Export->setEnabled(counts.all > 0);
}

// ---- What can be done

FamilyWindow::Chosen FamilyWindow::chosenAt(int row) const
{
    const families::FamilyTarget &target = m_Results->line(row).target;
    return {{m_Folder->modelOf(target), m_Folder->inputOf(target), m_Folder->templateOf(target),
             [record = m_Folder->recordOf(target)] { return families::residueScoresIn(record); }},
            m_Results->note(row, m_Family),
            target.name,
            target.templateName};
}

std::vector<FamilyWindow::Chosen> FamilyWindow::chosen() const
{
    std::vector<int> rows;
    if (m_Table->selectionModel()->hasSelection()) {
        for (const QModelIndex &shown : m_Table->selectionModel()->selectedRows())
            rows.push_back(shown.row());
        std::ranges::sort(rows);
    } else {
        rows.resize(std::size_t(m_Shown->rowCount()));
        for (int row = 0; row < m_Shown->rowCount(); ++row)
            rows[std::size_t(row)] = row;
    }
    std::vector<Chosen> models;
    for (const int shown : rows) {
        const int row = m_Shown->mapToSource(m_Shown->index(shown, 0)).row();
        if (m_Results->line(row).hasModel)
            models.push_back(chosenAt(row));
    }
    return models;
}

void FamilyWindow::run()
{
    const Result<void> started = m_Running.start(m_Choice->order());
    if (!started)
        m_Actions.tellFailure(tr("The models of %1 cannot be built now.").arg(m_Family),
                              {QString::fromStdString(started.error().message())});
}

void FamilyWindow::stop()
{
    m_Running.stop();
}

void FamilyWindow::openModels()
{
    const std::vector<Chosen> models = chosen();
    if (models.empty())
        say(tr("None of the picked targets has a model."));
    else
        m_Actions.open(models);
}

void FamilyWindow::openModelAt(const QModelIndex &shown)
{
    if (!shown.isValid())
        return;
    const int row = m_Shown->mapToSource(shown).row();
    const families::ResultRow &line = m_Results->line(row);
    const QString name = QString::fromStdString(line.target.name);
    if (line.hasModel)
        m_Actions.open({chosenAt(row)});
    else if (line.record.message.empty())
        say(tr("There is no model of %1 yet.").arg(name));
    else
        say(tr("There is no model of %1: %2")
                .arg(name, QString::fromStdString(line.record.message)));
}

void FamilyWindow::superpose()
{
    say(m_Actions.superpose(chosen()));
}

void FamilyWindow::exportTable()
{
    const QString tsv = tr("Tab-separated values (*.tsv)");
    const QString csv = tr("Comma-separated values (*.csv)");
    // Goes with the window, which may be closed meanwhile.
    const QPointer<QFileDialog> dialog =
        new QFileDialog(this, tr("Export Table"), folderText(m_Path));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilters({tsv, csv});
    // Put behind a name without one before the dialog asks whether the file is to be replaced.
    dialog->setDefaultSuffix(QStringLiteral("tsv"));
    connect(dialog, &QFileDialog::filterSelected, dialog, [dialog, csv](const QString &filter) {
        dialog->setDefaultSuffix(filter == csv ? QStringLiteral("csv") : QStringLiteral("tsv"));
    });
    dialog->selectFile(QStringLiteral("table.tsv"));
    const bool isChosen = dialog->exec() == QDialog::Accepted;
    if (dialog == nullptr)
        return;
    dialog->deleteLater();
    if (!isChosen)
        return;
    const QString file = dialog->selectedFiles().constFirst();
    QList<QStringList> lines{ResultsModel::fieldNames()};
    for (int shown = 0; shown < m_Shown->rowCount(); ++shown)
        lines << m_Results->texts(m_Shown->mapToSource(m_Shown->index(shown, 0)).row());
    const Result<void> written = writeTable(file, lines);
    if (written)
        say(tr("Exported %1").arg(QFileInfo(file).fileName()));
    else
        m_Actions.tellFailure(tr("The table could not be exported."),
                              {QString::fromStdString(written.error().message())});
}

void FamilyWindow::openFolder()
{
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folderText(m_Path))))
        say(tr("No program opens folders here; it is %1").arg(folderText(m_Path)));
}

} // namespace TAMBO::app

#include "moc_FamilyWindow.cpp"
