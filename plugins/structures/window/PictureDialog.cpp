// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include <algorithm>
#include <cmath>

namespace structures {

namespace {

constexpr int kLeast = 16;
// As many pixels a side as on the screen: enough for a page.
constexpr int kTimes = 2;

} // namespace

PictureDialog::PictureDialog(const QSize &shown, QWidget *parent)
    : QDialog(parent),
      m_Width(new QSpinBox),
      m_Height(new QSpinBox),
      m_Transparent(new QCheckBox(tr("&Transparent ground")))
{
    setWindowTitle(tr("Save Picture"));
    const QSize whole = shown.expandedTo({1, 1});
    const double ratio = double(whole.height()) / whole.width();
    // So that the other side can follow.
    m_Width->setRange(kLeast, ratio > 1 ? int(kMost / ratio) : kMost);
    m_Height->setRange(kLeast, ratio > 1 ? kMost : std::max(kLeast, int(kMost * ratio)));
    m_Width->setAccelerated(true);
    m_Height->setAccelerated(true);
    m_Width->setObjectName("PictureWidth");
    m_Height->setObjectName("PictureHeight");
    m_Width->setValue(whole.width() * kTimes);
    follow(*m_Width, *m_Height, ratio);
    connect(m_Width, &QSpinBox::valueChanged, this,
            [this, ratio] { follow(*m_Width, *m_Height, ratio); });
    connect(m_Height, &QSpinBox::valueChanged, this,
            [this, ratio] { follow(*m_Height, *m_Width, 1 / ratio); });

    auto *const sides = new QHBoxLayout;
    sides->addWidget(m_Width);
    sides->addWidget(new QLabel(QString(QChar(0xd7))));
    sides->addWidget(m_Height);
    sides->addWidget(new QLabel(tr("pixels")));
    sides->addStretch();
    auto *const size = new QLabel(tr("&Size:"));
    size->setBuddy(m_Width);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Save)->setText(tr("&Save..."));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *const form = new QFormLayout(this);
    form->addRow(size, sides);
    form->addRow(m_Transparent);
    form->addRow(buttons);
    form->setSizeConstraint(QLayout::SetFixedSize);
}

void PictureDialog::follow(const QSpinBox &changed, QSpinBox &other, double ratio)
{
    const QSignalBlocker block(other);
    other.setValue(int(std::lround(changed.value() * ratio)));
}

QSize PictureDialog::size() const
{
    return {m_Width->value(), m_Height->value()};
}

bool PictureDialog::isTransparent() const
{
    return m_Transparent->isChecked();
}

} // namespace structures

#include "moc_PictureDialog.cpp"
