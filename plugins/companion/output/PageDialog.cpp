// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageDialog.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "ControlNames.h"
#include "PageFormat.h"
#include "Printouts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <limits>
#include <utility>

namespace companion {

namespace {

constexpr double kSmallestChoice = 2;
constexpr double kLargestChoice = 40;
constexpr double kChoiceStep = 0.5;
constexpr int kMostColumnsChoice = 100'000;
constexpr int kLowestDots = 36;
constexpr int kHighestDots = 1200;

int asSpinValue(unsigned long value)
{
    return int(std::min<unsigned long>(value, std::numeric_limits<int>::max()));
}

QSpinBox *makeSpin(int least, int most, const QString &name)
{
    auto *const spin = new QSpinBox;
    spin->setRange(least, most);
    spin->setAccessibleName(name);
    return spin;
}

// What no file system takes in a name, and what would lead elsewhere.
QString asFileName(QString title)
{
    for (QChar &each : title)
        if (each == u'/' || each < u' ')
            each = u'_';
    while (title.startsWith(u'.'))
        title.remove(0, 1);
    constexpr qsizetype kLongestName = 100;
    title.truncate(kLongestName);
    return title.trimmed().isEmpty() ? QStringLiteral("alignment") : title;
}

} // namespace

PageDialog::PageDialog(TAMBO::AlignmentWindow &window, PageTracks tracks, bool isTracked, For what)
    : QDialog(window.mainWindow()),
      AlignmentViewObserver(window),
      m_Window(window),
      m_Tracks(std::move(tracks)),
      m_Rows(new QComboBox),
      m_Columns(new QComboBox),
      m_First(makeSpin(1, 1, tr("First column"))),
      m_Last(makeSpin(1, 1, tr("Last column"))),
      m_Paper(new QComboBox),
      m_Orientation(new QComboBox),
      m_Breaks(new QCheckBox(tr("Page &breaks"))),
      m_FontSize(new QDoubleSpinBox),
      m_MostColumns(makeSpin(0, kMostColumnsChoice, tr("Columns of a block"))),
      m_Resolution(makeSpin(kLowestDots, kHighestDots, tr("Resolution of PNG"))),
      m_Names(new QCheckBox(tr("&Names"))),
      m_Ruler(new QCheckBox(tr("Column n&umbers"))),
      m_Numbers(new QCheckBox(tr("Residue nu&mbers at the ends of rows"))),
      m_TracksOn(new QCheckBox(tr("&Tracks that are on"))),
      m_Colors(new QCheckBox(tr("Co&lors"))),
      m_Summary(new QLabel),
      m_Remark(new QLabel),
      m_Export(new QPushButton(tr("&Export…"))),
      m_Print(new QPushButton(tr("&Print…")))
{
    setWindowTitle(tr("Pages of %1").arg(QString::fromStdString(window.alignment()->Name())));
    auto *const layout = new QVBoxLayout(this);
    auto *const form = new QFormLayout;
    addChoices(*form);
    layout->addLayout(form);
    for (QLabel *const label : {m_Summary, m_Remark}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        layout->addWidget(label);
    }
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->addButton(m_Export, QDialogButtonBox::ActionRole);
    buttons->addButton(m_Print, QDialogButtonBox::ActionRole);
    layout->addStretch();
    layout->addWidget(buttons);
    // Only as a part of the dialog does it become its default.
    (what == For::Export ? m_Export : m_Print)->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_Export, &QPushButton::clicked, this, &PageDialog::askAndExport);
    connect(m_Print, &QPushButton::clicked, this, &PageDialog::askAndPrint);
    nameInnerControls(*this);

    PageChoices choices = PageChoices::kept();
    choices.colEnd = window.alignment()->width();
    choices.hasTracks = isTracked && !m_Tracks.isEmpty();
    m_TracksOn->setEnabled(!m_Tracks.isEmpty());
    setChoices(choices);
}

PageDialog::~PageDialog() = default;

void PageDialog::addChoices(QFormLayout &form)
{
    m_Rows->addItems({tr("all"), tr("selected ones"), tr("those in sight")});
    m_Columns->addItems({tr("all"), tr("from … to …"), tr("those in sight")});
    auto *const columns = new QHBoxLayout;
    columns->addWidget(m_Columns, 1);
    columns->addWidget(m_First);
    columns->addWidget(m_Last);
    for (const QPageSize::PageSizeId paper : offeredPapers())
        m_Paper->addItem(QPageSize::name(paper), int(paper));
    m_Orientation->addItems({tr("upright"), tr("on its side")});
    auto *const paper = new QHBoxLayout;
    paper->addWidget(m_Paper, 1);
    paper->addWidget(m_Orientation);
    m_Orientation->setAccessibleName(tr("Orientation of the paper"));
    m_Breaks->setToolTip(tr("Without, all is on one sheet, as high as it needs to be; paper always "
                            "has them"));
    m_FontSize->setRange(kSmallestChoice, kLargestChoice);
    m_FontSize->setSingleStep(kChoiceStep);
    m_FontSize->setDecimals(1);
    m_FontSize->setSuffix(tr(" pt"));
    m_FontSize->setAccessibleName(tr("Font size"));
    m_MostColumns->setSpecialValueText(tr("as many as fit"));
    m_Resolution->setSuffix(tr(" dots per inch"));
    form.addRow(tr("&Rows:"), m_Rows);
    auto *const columnsLabel = new QLabel(tr("&Columns:"));
    columnsLabel->setBuddy(m_Columns);
    form.addRow(columnsLabel, columns);
    auto *const paperLabel = new QLabel(tr("P&aper:"));
    paperLabel->setBuddy(m_Paper);
    form.addRow(paperLabel, paper);
    form.addRow(QString(), m_Breaks);
    form.addRow(tr("&Font size:"), m_FontSize);
    form.addRow(tr("Columns of a bloc&k:"), m_MostColumns);
    form.addRow(tr("Resolution of PN&G:"), m_Resolution);
    for (QCheckBox *const box : {m_Names, m_Ruler, m_Numbers, m_TracksOn, m_Colors}) {
        form.addRow(QString(), box);
        connect(box, &QCheckBox::toggled, this, &PageDialog::showPlan);
    }
    connect(m_Breaks, &QCheckBox::toggled, this, &PageDialog::showPlan);
    for (QComboBox *const box : {m_Rows, m_Columns, m_Paper, m_Orientation})
        connect(box, &QComboBox::currentIndexChanged, this, &PageDialog::showPlan);
    for (QSpinBox *const spin : {m_First, m_Last, m_MostColumns, m_Resolution})
        connect(spin, &QSpinBox::valueChanged, this, &PageDialog::showPlan);
    connect(m_FontSize, &QDoubleSpinBox::valueChanged, this, &PageDialog::showPlan);
}

// ---- What is chosen

PageChoices PageDialog::choices() const
{
    PageChoices choices;
    choices.rows = static_cast<PageRows>(m_Rows->currentIndex());
    choices.columns = static_cast<PageColumns>(m_Columns->currentIndex());
    choices.colBegin = (unsigned long)(m_First->value() - 1);
    choices.colEnd = (unsigned long)(m_Last->value());
    choices.hasTracks = m_TracksOn->isChecked();
    choices.paper = static_cast<QPageSize::PageSizeId>(m_Paper->currentData().toInt());
    choices.isLandscape = m_Orientation->currentIndex() == 1;
    choices.hasBreaks = m_Breaks->isChecked();
    choices.fontSize = m_FontSize->value();
    choices.mostColumns = (unsigned long)(m_MostColumns->value());
    choices.hasNames = m_Names->isChecked();
    choices.hasRuler = m_Ruler->isChecked();
    choices.hasNumbers = m_Numbers->isChecked();
    choices.hasColors = m_Colors->isChecked();
    choices.resolution = m_Resolution->value();
    return choices;
}

void PageDialog::setChoices(const PageChoices &choices)
{
    m_IsSetting = true;
    const int columns = std::max(1, asSpinValue(m_Window.columns()));
    m_First->setMaximum(columns);
    m_Last->setMaximum(columns);
    m_Rows->setCurrentIndex(int(choices.rows));
    m_Columns->setCurrentIndex(int(choices.columns));
    m_First->setValue(asSpinValue(choices.colBegin) + 1);
    m_Last->setValue(asSpinValue(choices.colEnd));
    m_TracksOn->setChecked(choices.hasTracks && !m_Tracks.isEmpty());
    m_Paper->setCurrentIndex(m_Paper->findData(int(choices.paper)));
    m_Orientation->setCurrentIndex(choices.isLandscape ? 1 : 0);
    m_Breaks->setChecked(choices.hasBreaks);
    m_FontSize->setValue(choices.fontSize);
    m_MostColumns->setValue(asSpinValue(choices.mostColumns));
    m_Names->setChecked(choices.hasNames);
    m_Ruler->setChecked(choices.hasRuler);
    m_Numbers->setChecked(choices.hasNumbers);
    m_Colors->setChecked(choices.hasColors);
    m_Resolution->setValue(choices.resolution);
    m_IsSetting = false;
    showPlan();
}

PageOrder PageDialog::order() const
{
    return orderOf(choices(), *m_Window.alignment(), m_Window.visibleCells(), m_Tracks);
}

void PageDialog::showPlan()
{
    if (m_IsSetting || m_Window.alignment() == nullptr)
        return;
    const bool isRange = m_Columns->currentIndex() == int(PageColumns::Range);
    m_First->setEnabled(isRange);
    m_Last->setEnabled(isRange);
    m_Remark->clear();
    const PagePlan plan(order(), *m_Window.alignment());
    const bool isPossible = plan.layout.obstacle().isEmpty();
    m_Export->setEnabled(isPossible);
    // On paper there are pages, whatever one sheet would be.
    m_Print->setEnabled(isPossible);
    if (!isPossible) {
        m_Summary->setText(plan.layout.obstacle());
        return;
    }
    const std::size_t count = plan.layout.pages();
    const QString pages = !plan.order.hasBreaks ? tr("One sheet")
                          : count == 1          ? tr("1 page")
                                                : tr("%L1 pages").arg(count);
    m_Summary->setText(
        tr("%1, up to %L2 columns in a block").arg(pages).arg(plan.layout.columnsOfBlock()));
}

void PageDialog::alignmentShown()
{
    close();
}

void PageDialog::layoutRebuilt()
{
    PageChoices now = choices();
    // All of them stay all of them.
    if (m_Last->value() == m_Last->maximum())
        now.colEnd = m_Window.columns();
    setChoices(now);
}

// ---- Writing and printing

QString PageDialog::suggestedFile() const
{
    const TAMBO::Alignment &alignment = *m_Window.alignment();
    return QDir(Printouts::Folder(alignment))
        .filePath(asFileName(QString::fromStdString(alignment.Name())) + QStringLiteral(".pdf"));
}

bool PageDialog::exportTo(const QString &file)
{
    choices().keep();
    m_Remark->clear();
    const QPointer<PageDialog> alive(this);
    const PagePlan plan(order(), *m_Window.alignment());
    const OutputOutcome outcome = writePages(m_Window, plan, file, m_Resolution->value());
    return alive && leaveOrTell(outcome);
}

bool PageDialog::printOn(QPrinter &printer)
{
    choices().keep();
    m_Remark->clear();
    const QPointer<PageDialog> alive(this);
    const OutputOutcome outcome = printPages(m_Window, order(), printer);
    return alive && leaveOrTell(outcome);
}

// The workbench tells where the pages are; what was chosen is kept for the next ones.
bool PageDialog::leaveOrTell(const OutputOutcome &outcome)
{
    switch (outcome.end) {
    case OutputEnd::Done:
        accept();
        return true;
    case OutputEnd::GivenUp:
        m_Remark->setText(tr("Cancelled. Nothing was written."));
        return false;
    case OutputEnd::Failed:
        m_Remark->setText(outcome.error);
        return false;
    }
    return false;
}

void PageDialog::askAndExport()
{
    const QPointer<PageDialog> alive(this);
    QFileDialog dialog(this, tr("Export Pages"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters(pageFilters());
    const QFileInfo suggested(suggestedFile());
    dialog.setDirectory(suggested.absolutePath());
    dialog.selectFile(suggested.completeBaseName());
    // A name without an ending gets that of the filter, before one is asked about what is there.
    dialog.setDefaultSuffix(endingOf(dialog.selectedNameFilter()));
    connect(&dialog, &QFileDialog::filterSelected, &dialog,
            [&dialog](const QString &filter) { dialog.setDefaultSuffix(endingOf(filter)); });
    const bool isChosen = dialog.exec() == QDialog::Accepted;
    if (alive && isChosen && m_Window.alignment() != nullptr)
        exportTo(dialog.selectedFiles().constFirst());
}

void PageDialog::askAndPrint()
{
    const QPointer<PageDialog> alive(this);
    const PageOrder wanted = order();
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(wanted.title);
    const PageChoices chosen = choices();
    printer.setPageSize(QPageSize(chosen.paper));
    printer.setPageOrientation(chosen.isLandscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    QPrintDialog dialog(&printer, this);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    const bool isChosen = dialog.exec() == QDialog::Accepted;
    if (alive && isChosen && m_Window.alignment() != nullptr)
        printOn(printer);
}

} // namespace companion
