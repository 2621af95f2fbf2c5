// SPDX-License-Identifier: GPL-3.0-or-later
#include "WrappedWindow.h"

#include "AlignmentWindow.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QStatusBar>

namespace companion {

namespace {

constexpr QSize kWrappedSize(900, 700);

} // namespace

WrappedWindow::WrappedWindow(TAMBO::AlignmentWindow &window)
    : BaseWindow(tr("Wrapped Alignment"), kWrappedSize, QStringLiteral("Wrapped Alignment"), false,
                 window.mainWindow(), "WrappedWindow"),
      m_View(new WrappedView(window))
{
    setCentralWidget(m_View);
    auto *const numbers = new QCheckBox(tr("&Residue numbers"));
    numbers->setToolTip(tr("Show the number of the last residue at the end of each row"));
    numbers->setChecked(m_View->hasNumbers());
    connect(numbers, &QCheckBox::toggled, this, [this](bool on) { m_View->setNumbers(on); });
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addPermanentWidget(numbers);
    m_View->setFocus();
}

WrappedWindow::~WrappedWindow() = default;

void WrappedWindow::ask()
{
    show();
    raise();
    activateWindow();
    m_View->setFocus();
}

void WrappedWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        BaseWindow::keyPressEvent(event);
}

} // namespace companion
