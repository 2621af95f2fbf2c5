// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunChoice.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>

namespace TAMBO::app {

namespace {

constexpr int kMostAtOnce = 9999;
// The profile that stands in every folder of a family.
const QString kSlurm = QStringLiteral("slurm");

bool isInstalled(const char *program)
{
    return !QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty();
}

} // namespace

QStringList RunOrder::words() const
{
    QStringList words{QStringLiteral("--jobs"), QString::number(atOnce)};
    if (where == Where::Here)
        words << QStringLiteral("--pool");
    else if (where == Where::Profile)
        words << QStringLiteral("--profile") << profile;
    return words;
}

RunChoice::RunChoice(QWidget *parent) : QWidget(parent), m_HasSnakemake(isInstalled("snakemake"))
{
    m_Where = new QComboBox;
    m_Where->setObjectName(QStringLiteral("Where"));
    m_Where->addItem(tr("this machine"), int(RunOrder::Where::Here));
    m_Where->addItem(tr("Snakemake on this machine"), int(RunOrder::Where::SnakemakeHere));
    m_Where->addItem(tr("Snakemake with a profile"), int(RunOrder::Where::Profile));
    m_Where->setToolTip(tr("A profile tells Snakemake how jobs are handed to a cluster"));
    m_Profile = new QLineEdit(kSlurm);
    m_Profile->setObjectName(QStringLiteral("Profile"));
    m_Profile->setToolTip(tr("\"slurm\" is the profile that lies in the folder; it can be changed "
                             "there. Otherwise the name or the folder of a profile of your own"));
    m_AtOnce = new QSpinBox;
    m_AtOnce->setObjectName(QStringLiteral("AtOnce"));
    m_AtOnce->setRange(1, kMostAtOnce);
    m_AtOnce->setValue(std::max(1, QThread::idealThreadCount()));
    m_AtOnce->setToolTip(tr("Each takes about 1 GB of memory"));

    auto *whereLabel = new QLabel(tr("Run o&n:"));
    whereLabel->setBuddy(m_Where);
    m_ProfileLabel = new QLabel(tr("&Profile:"));
    m_ProfileLabel->setBuddy(m_Profile);
    auto *atOnceLabel = new QLabel(tr("Models at on&ce:"));
    atOnceLabel->setBuddy(m_AtOnce);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(whereLabel);
    layout->addWidget(m_Where);
    layout->addWidget(m_ProfileLabel);
    layout->addWidget(m_Profile, 1);
    layout->addStretch();
    layout->addWidget(atOnceLabel);
    layout->addWidget(m_AtOnce);
    connect(m_Where, &QComboBox::currentIndexChanged, this, &RunChoice::follow);
    connect(m_Profile, &QLineEdit::textChanged, this, &RunChoice::follow);
    connect(m_AtOnce, &QSpinBox::valueChanged, this, &RunChoice::follow);
    follow();
}

RunChoice::~RunChoice() = default;

void RunChoice::follow()
{
    const bool isProfile = order().where == RunOrder::Where::Profile;
    m_ProfileLabel->setVisible(isProfile);
    m_Profile->setVisible(isProfile);
    emit changed();
}

RunOrder RunChoice::order() const
{
    return {RunOrder::Where(m_Where->currentData().toInt()), m_AtOnce->value(),
            m_Profile->text().trimmed()};
}

QString RunChoice::objection() const
{
    const RunOrder chosen = order();
    if (chosen.where == RunOrder::Where::Here)
        return {};
    if (!m_HasSnakemake)
        return tr("Snakemake was not found. On Debian, install the package snakemake.");
    if (chosen.where != RunOrder::Where::Profile)
        return {};
    if (chosen.profile.isEmpty())
        return tr("Name the profile.");
    if (chosen.profile == kSlurm && !isInstalled("sbatch"))
        return tr("The profile \"slurm\" takes the program \"sbatch\", which was not found here.");
    return {};
}

} // namespace TAMBO::app

#include "moc_RunChoice.cpp"
