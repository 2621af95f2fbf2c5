// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgressBox.h"

#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace TAMBO::services {

namespace {

constexpr int kProgressSteps = 1000;

} // namespace

ProgressBox::ProgressBox(const QString &title, const QString &button, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(title);
    m_Text = new QLabel;
    m_Text->setTextFormat(Qt::PlainText);
    m_Bar = new QProgressBar;
    m_Bar->setRange(0, kProgressSteps);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_Stop = buttons->button(QDialogButtonBox::Cancel);
    if (!button.isEmpty())
        m_Stop->setText(button);
    connect(buttons, &QDialogButtonBox::rejected, this, &ProgressBox::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_Text);
    layout->addWidget(m_Bar);
    layout->addWidget(buttons);
    setMinimumWidth(360);
}

ProgressBox::~ProgressBox() = default;

void ProgressBox::setText(const QString &text)
{
    m_Text->setText(text);
}

QString ProgressBox::text() const
{
    return m_Text->text();
}

void ProgressBox::setDone(double share)
{
    m_Bar->setValue(int(share * kProgressSteps));
}

double ProgressBox::fraction() const
{
    return double(m_Bar->value()) / kProgressSteps;
}

void ProgressBox::setStoppable(bool isStoppable)
{
    m_Stop->setVisible(isStoppable);
}

bool ProgressBox::isStoppable() const
{
    return m_Stop->isVisibleTo(this);
}

void ProgressBox::reject()
{
    if (isStoppable())
        emit stopped();
}

void ProgressBox::closeEvent(QCloseEvent *event)
{
    reject();
    event->ignore();
}

} // namespace TAMBO::services

#include "moc_ProgressBox.cpp"
