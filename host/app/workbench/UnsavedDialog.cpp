// SPDX-License-Identifier: GPL-3.0-or-later
#include "UnsavedDialog.h"

#include "Compound.h"
#include "JobList.h"
#include "JobStatus.h"
#include "KindIcons.h"
#include "ObjectFacts.h"
#include "ObjectTwins.h"
#include "PlainText.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace TAMBO::app {

namespace {

using services::JobList;

enum UnsavedColumn { NameColumn, WhatColumn, FileColumn, UnsavedColumnCount };

constexpr int kSecond = 1000;
// More rows than that scroll.
constexpr int kMostRows = 10;
constexpr int kFewestRows = 3;
constexpr int kUnsavedWidth = 640;
// Of a column with names, at first.
constexpr int kWidestColumn = 200;

bool isChecked(const QTreeWidgetItem &item)
{
    return item.checkState(NameColumn) == Qt::Checked;
}

QString jobLine(const JobList::Job &job)
{
    const QString begin = job.title + u' ' + JobStatus::durationText(job.running.elapsed());
    return job.lastLine.isEmpty() ? begin : begin + QStringLiteral(" – ") + job.lastLine;
}

QLabel *plainLabel(const char *name)
{
    auto *label = new QLabel;
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

UnsavedDialog::UnsavedDialog(Purpose purpose, std::vector<SavedPlaces::Unsaved> things,
                             const QString &session, const JobList *jobs, QWidget *parent)
    : QDialog(parent),
      m_Purpose(purpose),
      m_Things(std::move(things)),
      m_Session(session),
      m_JobList(jobs)
{
    setObjectName(QStringLiteral("UnsavedDialog"));
    setWindowTitle(tr("Tambo"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(makeHead());
    makeThings();
    makeJobs();
    makeButtons();
    followChecks();
    followJobs();
    resize(kUnsavedWidth, sizeHint().height());
}

UnsavedDialog::~UnsavedDialog() = default;

// ---- What the dialog is made of

QString UnsavedDialog::headline() const
{
    if (isAboutJobs())
        return tr("Quit although something is running?");
    return m_Purpose == Purpose::Quit ? tr("Save changes before quitting?")
                                      : tr("Save changes before closing?");
}

QString UnsavedDialog::explanation() const
{
    QStringList sentences;
    if (!m_Things.empty())
        sentences << tr("What is not checked is lost.");
    if (!m_Session.isEmpty())
        sentences << (m_Things.empty() ? tr("The session %1 has changes that are not saved.")
                                       : tr("The session %1 can keep all of it."))
                         .arg(m_Session);
    return sentences.join(u' ');
}

QWidget *UnsavedDialog::makeHead()
{
    auto *head = new QWidget;
    auto *picture = new QLabel;
    const int size = style()->pixelMetric(QStyle::PM_LargeIconSize);
    picture->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size, size));
    m_Headline = plainLabel("Headline");
    m_Headline->setText(headline());
    QFont bold = font();
    bold.setBold(true);
    m_Headline->setFont(bold);
    auto *texts = new QVBoxLayout;
    texts->addWidget(m_Headline);
    if (!isAboutJobs()) {
        auto *below = plainLabel("Explanation");
        below->setText(explanation());
        texts->addWidget(below);
    }
    auto *row = new QHBoxLayout(head);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(picture, 0, Qt::AlignTop);
    row->addLayout(texts, 1);
    return head;
}

void UnsavedDialog::makeThings()
{
    if (m_Things.empty())
        return;
    m_List = new QTreeWidget;
    m_List->setObjectName(QStringLiteral("Things"));
    m_List->setHeaderLabels({tr("Save"), tr("What is not saved"), tr("Save to")});
    m_List->setRootIsDecorated(false);
    m_List->setUniformRowHeights(true);
    m_List->setAlternatingRowColors(true);
    m_List->setAllColumnsShowFocus(true);
    m_List->setAccessibleName(m_List->headerItem()->text(WhatColumn));
    m_List->header()->setStretchLastSection(false);
    m_List->header()->setSectionResizeMode(WhatColumn, QHeaderView::Stretch);
    KindIcons icons;
    services::ObjectTwins::Objects objects;
    for (const SavedPlaces::Unsaved &thing : m_Things)
        objects.push_back(thing.object);
    const std::vector<QString> differences = services::ObjectTwins::differences(
        objects, [](const Compound &object) { return object.Name(); });
    for (std::size_t i = 0; i < m_Things.size(); ++i) {
        const SavedPlaces::Unsaved &thing = m_Things[i];
        const QString name = services::ObjectTwins::label(nameText(*thing.object), differences[i]);
        const QString file =
            thing.file.isEmpty() ? tr("asks for a file") : QFileInfo(thing.file).fileName();
        auto *item = new QTreeWidgetItem(m_List, {name, thing.what, file});
        item->setIcon(NameColumn, icons.icon(kindOf(*thing.object), false));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable |
                       Qt::ItemNeverHasChildren);
        item->setCheckState(NameColumn, Qt::Checked);
        item->setToolTip(NameColumn, plainToolTip(kindText(kindOf(*thing.object)) + u' ' + name));
        item->setToolTip(WhatColumn, plainToolTip(thing.what));
        if (!thing.file.isEmpty())
            item->setToolTip(FileColumn, plainToolTip(thing.file));
    }
    for (const UnsavedColumn column : {NameColumn, FileColumn}) {
        m_List->resizeColumnToContents(column);
        m_List->setColumnWidth(column, std::min(m_List->columnWidth(column), kWidestColumn));
    }
    m_List->setCurrentItem(m_List->topLevelItem(0));
    const int rows = std::clamp(int(m_Things.size()), kFewestRows, kMostRows);
    m_List->setMinimumHeight(m_List->header()->sizeHint().height() +
                             rows * m_List->sizeHintForRow(0) + 2 * m_List->frameWidth());
    connect(m_List, &QTreeWidget::itemChanged, this, &UnsavedDialog::followChecks);
    m_Note = plainLabel("Note");
    layout()->addWidget(m_List);
    layout()->addWidget(m_Note);
}

void UnsavedDialog::makeJobs()
{
    m_Jobs = new QGroupBox;
    m_Jobs->setObjectName(QStringLiteral("Jobs"));
    m_JobLines = plainLabel("JobLines");
    m_Wait = new QRadioButton;
    m_Wait->setObjectName(QStringLiteral("Wait"));
    m_Wait->setChecked(true);
    m_Leave = new QRadioButton;
    m_Leave->setObjectName(QStringLiteral("Leave"));
    m_Cancel = new QRadioButton;
    m_Cancel->setObjectName(QStringLiteral("Cancel"));
    auto *layout = new QVBoxLayout(m_Jobs);
    for (QWidget *widget : {static_cast<QWidget *>(m_JobLines), static_cast<QWidget *>(m_Wait),
                            static_cast<QWidget *>(m_Leave), static_cast<QWidget *>(m_Cancel)})
        layout->addWidget(widget);
    this->layout()->addWidget(m_Jobs);
    if (m_JobList == nullptr)
        return;
    connect(m_JobList, &JobList::changed, this, &UnsavedDialog::followJobs);
    auto *clock = new QTimer(this);
    connect(clock, &QTimer::timeout, this, &UnsavedDialog::followJobs);
    clock->start(kSecond);
}

void UnsavedDialog::makeButtons()
{
    const bool isQuit = m_Purpose == Purpose::Quit;
    auto *buttons = new QDialogButtonBox;
    const auto add = [&](const QString &text, QDialogButtonBox::ButtonRole role, const char *name,
                         Answer answer) {
        QPushButton *button = buttons->addButton(text, role);
        button->setObjectName(QString::fromLatin1(name));
        button->setAutoDefault(true);
        connect(button, &QPushButton::clicked, this, [this, answer] { end(answer); });
        return button;
    };
    QPushButton *first = nullptr;
    if (!m_Session.isEmpty())
        first = add(isQuit ? tr("Save Sess&ion and Quit") : tr("Save Sess&ion and Close"),
                    QDialogButtonBox::AcceptRole, "SaveSession", Answer::SaveSession);
    if (!m_Things.empty())
        m_Save = add(isQuit ? tr("&Save and Quit") : tr("&Save and Close"),
                     QDialogButtonBox::AcceptRole, "Save", Answer::Save);
    if (isAboutJobs())
        first = add(tr("&Quit"), QDialogButtonBox::AcceptRole, "Quit", Answer::Discard);
    else
        add(isQuit ? tr("&Quit without Saving") : tr("&Close without Saving"),
            QDialogButtonBox::DestructiveRole, "Discard", Answer::Discard);
    add(tr("Cancel"), QDialogButtonBox::RejectRole, "Stay", Answer::Stay);
    layout()->addWidget(buttons);
    // Of this dialog, which it knows from here on.
    (first != nullptr ? first : m_Save)->setDefault(true);
}

void UnsavedDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (m_List != nullptr)
        m_List->setFocus();
    else if (isAboutJobs())
        m_Wait->setFocus();
}

// ---- Following the user and the jobs

void UnsavedDialog::followChecks()
{
    if (m_List == nullptr)
        return;
    m_Save->setEnabled(!checked().empty());
    m_Note->setText(note());
    m_Note->setVisible(!m_Note->text().isEmpty());
}

QString UnsavedDialog::note() const
{
    const std::vector<std::size_t> indices = checked();
    QStringList sentences;
    for (const std::size_t index : indices) {
        for (const Compound *structure : m_Things[index].numbersFrom) {
            const bool isSaved = std::ranges::any_of(
                indices, [&](std::size_t other) { return m_Things[other].object == structure; });
            if (!isSaved)
                sentences << tr("%1 will name residue numbers of %2 that are in no structure file.")
                                 .arg(nameText(*m_Things[index].object), nameText(*structure));
        }
    }
    return sentences.join(u'\n');
}

void UnsavedDialog::followJobs()
{
    const std::size_t count = m_JobList == nullptr ? 0 : m_JobList->jobs().size();
    m_Jobs->setVisible(count > 0);
    if (count == 0) {
        // What the dialog was about has ended.
        if (isAboutJobs() && isVisible())
            end(Answer::Discard);
        return;
    }
    const bool isOne = count == 1;
    m_Jobs->setTitle(isOne ? tr("A job is running") : tr("%1 jobs are running").arg(count));
    m_Wait->setText(isOne ? tr("&Wait until it has ended, then quit")
                          : tr("&Wait until they have ended, then quit"));
    m_Leave->setText(isOne ? tr("&Leave it running; what it makes is not read")
                           : tr("&Leave them running; what they make is not read"));
    m_Cancel->setText(isOne ? tr("S&top it") : tr("S&top them"));
    QStringList lines;
    for (const JobList::Job &job : m_JobList->jobs())
        lines << jobLine(job);
    m_JobLines->setText(lines.join(u'\n'));
    m_Leave->setEnabled(std::ranges::any_of(
        m_JobList->jobs(), [](const JobList::Job &job) { return !job.endsWithWorkbench; }));
    if (!m_Leave->isEnabled() && m_Leave->isChecked())
        m_Wait->setChecked(true);
    m_Cancel->setEnabled(std::ranges::any_of(
        m_JobList->jobs(), [](const JobList::Job &job) { return job.program > 0; }));
}

void UnsavedDialog::end(Answer answer)
{
    m_Answer = answer;
    m_JobsAnswer = chosenJobs();
    done(answer == Answer::Stay ? Rejected : Accepted);
}

std::vector<std::size_t> UnsavedDialog::checked() const
{
    std::vector<std::size_t> indices;
    for (std::size_t i = 0; i < m_Things.size(); ++i) {
        if (isChecked(*m_List->topLevelItem(int(i))))
            indices.push_back(i);
    }
    return indices;
}

UnsavedDialog::Jobs UnsavedDialog::chosenJobs() const
{
    // Chosen by its key, a button stays down for a moment before it is checked.
    if (m_Cancel->isDown() || m_Leave->isDown() || m_Wait->isDown())
        return m_Cancel->isDown() ? Jobs::Cancel : m_Leave->isDown() ? Jobs::Leave : Jobs::Wait;
    if (m_Cancel->isChecked())
        return Jobs::Cancel;
    return m_Leave->isChecked() ? Jobs::Leave : Jobs::Wait;
}

} // namespace TAMBO::app

#include "moc_UnsavedDialog.cpp"
