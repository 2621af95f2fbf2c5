// SPDX-License-Identifier: GPL-3.0-or-later
#include "EmptyHint.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "Space.h"
#include "Texts.h"

#include <QEvent>
#include <QLabel>

#include <algorithm>

namespace companion {

namespace {

constexpr int kHintMargin = 24;

bool isAnyLoaded()
{
    TAMBO::Space &space = *TAMBO::Space::instance();
    return space.begin() != space.end();
}

// By the menus of the window.
QString hintFor(const TAMBO::Alignment *alignment)
{
    if (alignment != nullptr)
        return tr("%1 has no rows.\n\nFile, Add Seqs adds loaded sequences to it.")
            .arg(QString::fromStdString(alignment->Name()));
    if (!isAnyLoaded())
        return tr(
            "Nothing is loaded yet.\n\nFile, Open in the workbench's window opens alignments and "
            "structures; files may be dropped there, too.");
    return tr("No alignment is shown.\n\nFile, Get Alignment (Ctrl+A) shows one that is loaded.\n"
              "File, Make from Seqs (Ctrl+S) makes one of loaded sequences.");
}

} // namespace

EmptyHint::EmptyHint(TAMBO::AlignmentWindow &window) : AlignmentViewObserver(window)
{
    QWidget *const cells = window.areaWidget(TAMBO::WindowArea::Cells);
    m_Label = new QLabel(cells);
    m_Label->setObjectName(QStringLiteral("EmptyHint"));
    m_Label->setTextFormat(Qt::PlainText);
    m_Label->setAlignment(Qt::AlignCenter);
    m_Label->setWordWrap(true);
    m_Label->setMargin(kHintMargin);
    m_Label->setForegroundRole(QPalette::PlaceholderText);
    // Everything that one does with the mouse is the window's.
    m_Label->setAttribute(Qt::WA_TransparentForMouseEvents);
    cells->installEventFilter(this);
    follow();
}

EmptyHint::~EmptyHint()
{
    delete m_Label;
}

bool EmptyHint::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show)
        follow();
    return false;
}

void EmptyHint::follow()
{
    const TAMBO::AlignmentWindow *const shown = window();
    if (shown == nullptr || m_Label == nullptr)
        return;
    const TAMBO::Alignment *const alignment = shown->alignment();
    const bool isEmpty = alignment == nullptr || alignment->height() == 0;
    m_Label->setVisible(isEmpty);
    if (!isEmpty)
        return;
    m_Label->setText(hintFor(alignment));
    m_Label->setGeometry(m_Label->parentWidget()->rect());
}

} // namespace companion
