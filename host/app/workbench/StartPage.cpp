// SPDX-License-Identifier: GPL-3.0-or-later
#include "StartPage.h"

#include "Config.h"
#include "PlainText.h"
#include "RecentFiles.h"

#include <QEvent>
#include <QFileInfo>
#include <QFontMetrics>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace TAMBO::app {

namespace {

constexpr int kStartMargin = 28;
constexpr int kMostShownRecent = 6;
constexpr int kWidestName = 360;

QIcon startIcon(const char *name)
{
    return QIcon(QStringLiteral("%1/%2.svg")
                     .arg(QString::fromStdString(Config::GetIconDir()), QString::fromLatin1(name)));
}

QLabel *heading(const QString &text, double size)
{
    auto *const label = new QLabel(text);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(true);
    label->setFont(font);
    return label;
}

QPushButton *startButton(const QString &text)
{
    auto *const button = new QPushButton(text);
    button->setFlat(true);
    button->setStyleSheet(QStringLiteral("text-align: left; padding: 5px 8px"));
    button->setCursor(Qt::PointingHandCursor);
    return button;
}

} // namespace

StartPage::StartPage(const RecentFiles &recent, QWidget &over)
    : QWidget(&over), m_RecentFiles(recent), m_List(new QVBoxLayout)
{
    setObjectName(QStringLiteral("StartPage"));
    setAccessibleName(tr("Start"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(kStartMargin, kStartMargin, kStartMargin, kStartMargin);
    column->addWidget(heading(tr("Nothing is open yet"), 1.4));
    auto *const lead =
        new QLabel(tr("Drop structures, alignments or sessions here, or begin with one "
                      "of these:"));
    lead->setWordWrap(true);
    column->addWidget(lead);
    column->addSpacing(kStartMargin / 4);
    QPushButton *const open = startButton(tr("&Open files…"));
    open->setIcon(startIcon("open"));
    connect(open, &QPushButton::clicked, this, &StartPage::openAsked);
    QPushButton *const example = startButton(tr("Open the e&xample, a family with its structures"));
    example->setIcon(startIcon("kind-alignment"));
    connect(example, &QPushButton::clicked, this, &StartPage::exampleAsked);
    QPushButton *const tour =
        startButton(tr("Take the to&ur, from two structures and a sequence to a model"));
    tour->setIcon(startIcon("help"));
    connect(tour, &QPushButton::clicked, this, &StartPage::tourAsked);
    QPushButton *const help = startButton(tr("&Read how it works"));
    help->setIcon(startIcon("help"));
    connect(help, &QPushButton::clicked, this, &StartPage::helpAsked);
    for (QPushButton *const button : {open, example, tour, help})
        column->addWidget(button, 0, Qt::AlignLeft);
    column->addSpacing(kStartMargin / 2);
    column->addLayout(m_List);
    column->addStretch();
    connect(&recent, &RecentFiles::changed, this, &StartPage::fillRecent);
    fillRecent();
    over.installEventFilter(this);
    setGeometry(over.rect());
}

StartPage::~StartPage() = default;

void StartPage::fillRecent()
{
    while (QLayoutItem *const item = m_List->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const QStringList files = m_RecentFiles.files();
    if (files.isEmpty())
        return;
    m_List->addWidget(heading(tr("Opened last"), 1.1));
    for (const QString &file : files.first(std::min<qsizetype>(files.size(), kMostShownRecent))) {
        const QString name = QFileInfo(file).fileName();
        QPushButton *const button = startButton({});
        button->setText(button->fontMetrics()
                            .elidedText(name, Qt::ElideMiddle, kWidestName)
                            .replace(u'&', QStringLiteral("&&")));
        button->setToolTip(plainToolTip(file));
        button->setAccessibleName(name);
        connect(button, &QPushButton::clicked, this, [this, file] { emit fileAsked(file); });
        m_List->addWidget(button, 0, Qt::AlignLeft);
    }
}

bool StartPage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        setGeometry(static_cast<const QWidget *>(watched)->rect());
    return QWidget::eventFilter(watched, event);
}

} // namespace TAMBO::app

#include "moc_StartPage.cpp"
