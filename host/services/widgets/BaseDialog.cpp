// SPDX-License-Identifier: GPL-3.0-or-later
#include "BaseDialog.h"

#include "Config.h"
#include "DialogPlaces.h"
#include "LateIcons.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QShowEvent>

using namespace TAMBO::services;

namespace {

void describe(QDialogButtonBox &box, QDialogButtonBox::StandardButton which, const QString &tip)
{
    if (QPushButton *button = box.button(which); button != nullptr)
        button->setToolTip(tip);
}

} // namespace

BaseDialog::BaseDialog(const QString &caption, const QSize &size, int buttons, int spacing,
                       const QString &helpText, bool vertical, bool modal, QWidget *parent,
                       const char *name)
    : QDialog(parent), m_FirstSize(size), m_ButtonSum(buttons), m_Vertical(vertical)
{
    setWindowTitle(caption);
    setObjectName(QString::fromUtf8(name));
    setWhatsThis(helpText);
    setModal(modal);
    auto *whole =
        new QBoxLayout(vertical ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, this);
    m_TopLevelLayout = new QVBoxLayout;
    m_TopLevelLayout->setSpacing(spacing);
    whole->addLayout(m_TopLevelLayout, 1);
}

BaseDialog::~BaseDialog() = default;

QBoxLayout *BaseDialog::GetTopLevelLayout() const
{
    return m_TopLevelLayout;
}

QWidget *BaseDialog::StartWidget()
{
    if (m_Buttons != nullptr)
        return this;
    // Made last, so that the tabulator reaches the controls first.
    m_Buttons = new QDialogButtonBox(m_Vertical ? Qt::Vertical : Qt::Horizontal, this);
    layout()->addWidget(m_Buttons);
    QDialogButtonBox::StandardButtons which;
    which.setFlag(QDialogButtonBox::Ok, (m_ButtonSum & OkButton) != 0);
    which.setFlag(QDialogButtonBox::Cancel, (m_ButtonSum & CancelButton) != 0);
    which.setFlag(QDialogButtonBox::Apply, (m_ButtonSum & ApplyButton) != 0);
    (new LateIcons(*m_Buttons))->add(which);
    if (QPushButton *ok = m_Buttons->button(QDialogButtonBox::Ok)) {
        ok->setDefault(true);
        connect(ok, &QPushButton::clicked, this, &BaseDialog::Ok);
    }
    if (QPushButton *cancel = m_Buttons->button(QDialogButtonBox::Cancel))
        connect(cancel, &QPushButton::clicked, this, &BaseDialog::Cancel);
    if (QPushButton *apply = m_Buttons->button(QDialogButtonBox::Apply))
        connect(apply, &QPushButton::clicked, this, &BaseDialog::Apply);
    resize(m_FirstSize.expandedTo(sizeHint()));
    setupTooltips();
    return this;
}

bool BaseDialog::ShowToolTips() const
{
    bool isSet = false;
    const bool wanted = Config::GetSetting("General", "ShowToolTips").ToBool(&isSet);
    return wanted || !isSet;
}

void BaseDialog::setupTooltips()
{
    if (m_Buttons == nullptr || !ShowToolTips())
        return;
    describe(*m_Buttons, QDialogButtonBox::Ok, tr("Do it and close the dialog"));
    describe(*m_Buttons, QDialogButtonBox::Cancel, tr("Close the dialog and change nothing more"));
    describe(*m_Buttons, QDialogButtonBox::Apply, tr("Do it and keep the dialog open"));
}

void BaseDialog::Ok()
{
    Apply();
    accept();
}

void BaseDialog::Cancel()
{
    QDialog::reject();
}

void BaseDialog::Apply() { }

void BaseDialog::reject()
{
    Cancel();
}

void BaseDialog::done(int result)
{
    savePlace();
    QDialog::done(result);
}

void BaseDialog::closeEvent(QCloseEvent *event)
{
    savePlace();
    QDialog::closeEvent(event);
}

void BaseDialog::showEvent(QShowEvent *event)
{
    m_Placed = true;
    StartWidget();
    QWidget *const caller =
        parentWidget() != nullptr ? parentWidget()->window() : QApplication::activeWindow();
    // Not when it comes back from the task bar.
    if (!event->spontaneous())
        DialogPlaces::comeUp(*this, caller, windowTitle());
    QDialog::showEvent(event);
}

void BaseDialog::savePlace() const
{
    if (m_Placed && isVisible())
        DialogPlaces::leave(*this);
}
