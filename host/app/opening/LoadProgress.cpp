// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoadProgress.h"

#include "Loader.h"
#include "ModelsReader.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include <utility>

namespace TAMBO::app {

namespace {

constexpr int kSteps = 1000;

} // namespace

LoadProgress::LoadProgress(std::function<void()> cancel, QWidget *parent)
    : QDialog(parent), m_Cancel(std::move(cancel))
{
    setObjectName(QStringLiteral("LoadProgress"));
    setWindowTitle(tr("Opening"));
    m_Patience.setSingleShot(true);
    m_Patience.setInterval(kPatienceMilliseconds);
    connect(&m_Patience, &QTimer::timeout, this, &LoadProgress::appear);
}

LoadProgress::LoadProgress(Loader &loader, QWidget *parent)
    : LoadProgress([&loader] { loader.cancel(); }, parent)
{
    connect(&loader, &Loader::started, this, &LoadProgress::begin);
    connect(&loader, &Loader::progressed, this, &LoadProgress::advance);
    connect(&loader, &Loader::making, this, &LoadProgress::advanceMaking);
    connect(&loader, &Loader::finished, this, &LoadProgress::end);
    if (loader.isBusy())
        begin();
}

LoadProgress::LoadProgress(ModelsReader &reader, QWidget *parent)
    : LoadProgress([&reader] { reader.cancel(); }, parent)
{
    connect(&reader, &ModelsReader::started, this, &LoadProgress::begin);
    connect(&reader, &ModelsReader::progressed, this, &LoadProgress::advance);
    connect(&reader, &ModelsReader::finished, this, &LoadProgress::end);
    if (reader.isBusy())
        begin();
}

LoadProgress::~LoadProgress() = default;

void LoadProgress::make()
{
    m_Text = new QLabel;
    m_Text->setTextFormat(Qt::PlainText);
    m_Bar = new QProgressBar;
    m_Bar->setRange(0, kSteps);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::rejected, this, &LoadProgress::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_Text);
    layout->addWidget(m_Bar);
    layout->addWidget(buttons);
    setMinimumWidth(360);
}

void LoadProgress::reject()
{
    m_Cancel();
    if (m_Text != nullptr)
        m_Text->setText(tr("Cancelling…"));
}

void LoadProgress::begin()
{
    m_FileName.clear();
    m_Fraction = 0.0;
    m_IsMaking = false;
    m_Patience.start();
}

void LoadProgress::end()
{
    m_Patience.stop();
    hide();
}

void LoadProgress::appear()
{
    if (m_Text == nullptr)
        make();
    tell();
    show();
}

void LoadProgress::advance(const QString &fileName, double fraction)
{
    m_FileName = fileName;
    m_Fraction = fraction;
    if (isVisible())
        tell();
}

void LoadProgress::advanceMaking(double fraction)
{
    m_IsMaking = true;
    m_Fraction = fraction;
    if (isVisible())
        tell();
}

void LoadProgress::tell()
{
    if (m_IsMaking)
        m_Text->setText(tr("Making sequences and alignments"));
    else
        m_Text->setText(m_FileName.isEmpty() ? QString() : tr("Reading %1").arg(m_FileName));
    m_Bar->setValue(int(m_Fraction * kSteps));
}

} // namespace TAMBO::app

#include "moc_LoadProgress.cpp"
