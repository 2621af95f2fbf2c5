// SPDX-License-Identifier: GPL-3.0-or-later
#include "FailureBoxes.h"

#include <QApplication>
#include <QMessageBox>
#include <QWindow>

namespace TAMBO::services {

namespace {

// More would not fit on a small screen.
constexpr int kMostCauses = 12;

// A dialog that has just been closed may still count as active.
bool isUsable(const QWidget *window)
{
    return window != nullptr && window->isVisible();
}

} // namespace

FailureBoxes::FailureBoxes(QWidget &mainWindow) : m_MainWindow(mainWindow)
{
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &FailureBoxes::noteActiveWindow);
    noteActiveWindow();
}

// Dialogs come and go, so the window below them is what is kept.
void FailureBoxes::noteActiveWindow()
{
    QWidget *window = QApplication::activeWindow();
    while (window != nullptr && window->windowType() != Qt::Window)
        window = window->parentWidget() != nullptr ? window->parentWidget()->window() : nullptr;
    if (window != nullptr)
        m_LastActive = window;
}

QWidget *FailureBoxes::windowInUse() const
{
    for (QWidget *window : {QApplication::activeModalWidget(), QApplication::activeWindow(),
                            static_cast<QWidget *>(m_LastActive)}) {
        if (isUsable(window))
            return window;
    }
    return &m_MainWindow;
}

void FailureBoxes::show(const QString &headline, const QStringList &causes)
{
    showOver(windowInUse(), headline, causes);
}

void FailureBoxes::showOver(QWidget *window, const QString &headline, const QStringList &causes)
{
    auto *box =
        new QMessageBox(QMessageBox::Warning, tr("Tambo"), headline, QMessageBox::Ok, window);
    box->setObjectName(QStringLiteral("FailureBox"));
    // Names of files and objects are no markup.
    box->setTextFormat(Qt::PlainText);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QStringList lines = causes.mid(0, kMostCauses);
    if (causes.size() > kMostCauses)
        lines << tr("and %1 more, all of them in the log").arg(causes.size() - kMostCauses);
    box->setInformativeText(lines.join(u'\n'));
    box->setAttribute(Qt::WA_DeleteOnClose);
    // Not exec(), which would keep whoever has failed from coming to an end.
    box->open();
}

} // namespace TAMBO::services

#include "moc_FailureBoxes.cpp"
