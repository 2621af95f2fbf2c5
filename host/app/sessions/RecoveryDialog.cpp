// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecoveryDialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace TAMBO::app {

namespace {

constexpr int kWidth = 500;
constexpr int kHeight = 200;

} // namespace

RecoveryDialog::RecoveryDialog(std::vector<LeftSession> sessions, QWidget *parent)
    : QDialog(parent), m_Sessions(std::move(sessions))
{
    setObjectName(QStringLiteral("RecoveryDialog"));
    setWindowTitle(tr("Recover"));
    auto *layout = new QVBoxLayout(this);
    auto *head = new QLabel(
        m_Sessions.size() == 1
            ? tr("A workbench did not come to its end. What was done in it is still there.")
            : tr("Several workbenches did not come to their end. What was done in them is still "
                 "there."));
    head->setWordWrap(true);
    layout->addWidget(head);
    makeList();
    makeButtons();
    resize(kWidth, kHeight);
}

void RecoveryDialog::makeList()
{
    m_List = new QTreeWidget;
    m_List->setObjectName(QStringLiteral("LeftSessions"));
    m_List->setRootIsDecorated(false);
    m_List->setAllColumnsShowFocus(true);
    m_List->setHeaderLabels({tr("Last change"), tr("Unsaved changes"), tr("Objects")});
    for (const LeftSession &session : m_Sessions) {
        auto *item = new QTreeWidgetItem(m_List);
        item->setText(0, QLocale().toString(session.time, QLocale::ShortFormat));
        if (session.unsaved)
            item->setText(1, QLocale().toString(qulonglong(*session.unsaved)));
        item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        item->setText(2, session.objects);
        if (session.attempts > 0)
            item->setToolTip(0, tr("Recovering it ended the program. It will be tried without the "
                                   "last change."));
    }
    m_List->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_List->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_List->setCurrentItem(m_List->topLevelItem(0));
    layout()->addWidget(m_List);
}

void RecoveryDialog::makeButtons()
{
    auto *buttons = new QDialogButtonBox;
    QPushButton *const recover = buttons->addButton(tr("&Recover"), QDialogButtonBox::AcceptRole);
    QPushButton *const later = buttons->addButton(tr("&Later"), QDialogButtonBox::RejectRole);
    QPushButton *const discarding =
        buttons->addButton(tr("&Discard..."), QDialogButtonBox::DestructiveRole);
    QPushButton *const files =
        buttons->addButton(tr("Save as &Files…"), QDialogButtonBox::ActionRole);
    files->setObjectName(QStringLiteral("SaveAsFiles"));
    files->setToolTip(tr("A folder of plain files, one for each alignment and structure."));
    recover->setObjectName(QStringLiteral("Recover"));
    later->setObjectName(QStringLiteral("Later"));
    discarding->setObjectName(QStringLiteral("Discard"));
    recover->setDefault(true);
    later->setToolTip(tr("It is kept, and asked for at the next start."));
    connect(recover, &QPushButton::clicked, this, [this] {
        m_Answer = Answer::Recover;
        accept();
    });
    connect(files, &QPushButton::clicked, this, [this] { emit filesWanted(chosen()); });
    connect(later, &QPushButton::clicked, this, &RecoveryDialog::reject);
    connect(discarding, &QPushButton::clicked, this, &RecoveryDialog::discard);
    layout()->addWidget(buttons);
}

std::size_t RecoveryDialog::picked() const
{
    return std::size_t(std::max(0, m_List->indexOfTopLevelItem(m_List->currentItem())));
}

const LeftSession &RecoveryDialog::chosen() const
{
    return m_Sessions[picked()];
}

void RecoveryDialog::discard()
{
    QMessageBox box(QMessageBox::Question, tr("Discard"), tr("Discard this work for good?"),
                    QMessageBox::Cancel, this);
    box.setObjectName(QStringLiteral("DiscardQuestion"));
    QPushButton *const yes = box.addButton(tr("&Discard"), QMessageBox::DestructiveRole);
    box.setDefaultButton(QMessageBox::Cancel);
    box.exec();
    if (box.clickedButton() != yes)
        return;
    const std::size_t index = picked();
    SessionFolder::remove(m_Sessions[index].file);
    m_Sessions.erase(m_Sessions.begin() + std::ptrdiff_t(index));
    delete m_List->takeTopLevelItem(int(index));
    if (m_Sessions.empty())
        reject();
}

} // namespace TAMBO::app

#include "moc_RecoveryDialog.cpp"
