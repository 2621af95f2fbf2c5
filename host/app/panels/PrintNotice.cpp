// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrintNotice.h"

#include "PrintoutDesk.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QToolButton>
#include <QUrl>

#include <algorithm>

namespace TAMBO::app {

namespace {

// In characters.
constexpr int kWidestPath = 40;
constexpr int kNarrowestPath = 8;

// The end of a path tells most. The whole is in the tool tip.
class PathLabel : public QWidget
{
public:
    PathLabel()
    {
        setObjectName(QStringLiteral("PrintedFile"));
        setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    }

    void setPath(const QString &path)
    {
        m_Path = path;
        // A name may look like markup.
        setToolTip(QStringLiteral("<qt>") + path.toHtmlEscaped() + QStringLiteral("</qt>"));
        updateGeometry();
        update();
    }
    [[nodiscard]] QSize sizeHint() const override
    {
        return {std::min(fontMetrics().horizontalAdvance(m_Path) + 2,
                         kWidestPath * fontMetrics().averageCharWidth()),
                fontMetrics().height()};
    }
    // So that it does not keep the window from being made small.
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        return {kNarrowestPath * fontMetrics().averageCharWidth(), fontMetrics().height()};
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        style()->drawItemText(&painter, rect(), Qt::AlignVCenter | Qt::TextSingleLine, palette(),
                              isEnabled(), fontMetrics().elidedText(m_Path, Qt::ElideLeft, width()),
                              QPalette::WindowText);
    }

private:
    QString m_Path;
};

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
    auto *file = new PathLabel;
    QToolButton *open = button(tr("Open"), tr("Show the printed file"), "OpenPrinted");
    connect(open, &QToolButton::clicked, this, &PrintNotice::openFile);
    QToolButton *dismiss = button(QStringLiteral("×"), tr("Dismiss"), "DismissPrinted");
    connect(dismiss, &QToolButton::clicked, this, &QWidget::hide);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    auto *what = new QLabel;
    what->setObjectName(QStringLiteral("PrintedFormat"));
    what->setTextFormat(Qt::PlainText);
    layout->addWidget(what);
    layout->addWidget(file);
    layout->addWidget(open);
    layout->addWidget(dismiss);
    connect(&desk, &services::PrintoutDesk::written, this, [this, file, what](const QString &path) {
        m_Path = path;
        const QString format = services::PrintoutDesk::formatOf(path);
        what->setText(format.isEmpty() ? tr("Printed:") : tr("Printed %1:").arg(format));
        file->setPath(path);
        show();
    });
    hide();
}

void PrintNotice::openFile()
{
    if (!QFileInfo::exists(m_Path))
        emit failed(tr("%1 is not there any more.").arg(m_Path));
    else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(m_Path)))
        emit failed(tr("The system knows no program that opens %1.").arg(m_Path));
}

} // namespace TAMBO::app

#include "moc_PrintNotice.cpp"
