// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrintNotice.h"

#include "PrintoutDesk.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QUrl>

namespace TAMBO::app {

namespace {

// In characters; the whole path is in the tool tip.
constexpr int kWidest = 40;

QToolButton *button(const QString &text, const QString &toolTip, const char *name)
{
    auto *made = new QToolButton;
    made->setObjectName(QString::fromLatin1(name));
    made->setText(text);
    made->setToolTip(toolTip);
    made->setAutoRaise(true);
    return made;
}

} // namespace

PrintNotice::PrintNotice(services::PrintoutDesk &desk, QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("PrintNotice"));
    m_Text = new QLabel;
    m_Text->setObjectName(QStringLiteral("PrintedFile"));
    m_Text->setTextFormat(Qt::PlainText);
    QToolButton *open = button(tr("Open"), tr("Show the printed file"), "OpenPrinted");
    connect(open, &QToolButton::clicked, this, &PrintNotice::openFile);
    QToolButton *dismiss = button(QStringLiteral("×"), tr("Dismiss"), "DismissPrinted");
    connect(dismiss, &QToolButton::clicked, this, &QWidget::hide);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_Text);
    layout->addWidget(open);
    layout->addWidget(dismiss);
    connect(&desk, &services::PrintoutDesk::written, this, &PrintNotice::tell);
    hide();
}

void PrintNotice::tell(const QString &path)
{
    m_Path = path;
    m_Text->setText(fontMetrics().elidedText(tr("Printed to %1").arg(path), Qt::ElideMiddle,
                                             kWidest * fontMetrics().averageCharWidth()));
    // A name may look like markup.
    m_Text->setToolTip(QStringLiteral("<qt>") + path.toHtmlEscaped() + QStringLiteral("</qt>"));
    show();
}

void PrintNotice::openFile()
{
    if (!QFileInfo::exists(m_Path))
        emit failed(tr("%1 is not there any more.").arg(m_Path));
    else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(m_Path)))
        emit failed(tr("The system knows no program that opens %1.").arg(m_Path));
}

} // namespace TAMBO::app
