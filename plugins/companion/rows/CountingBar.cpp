// SPDX-License-Identifier: GPL-3.0-or-later
#include "CountingBar.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "ControlNames.h"
#include "Keyboard.h"
#include "LineLabel.h"
#include "SlicedWork.h"
#include "Texts.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QToolButton>
#include <QVBoxLayout>

namespace companion {

namespace {

constexpr int kBetweenLines = 2;

} // namespace

CountingBar::CountingBar(TAMBO::AlignmentWindow &window, const QString &title,
                         const QString &objectName)
    : QToolBar(title, window.mainWindow()), AlignmentViewObserver(window), m_State(makeLineLabel())
{
    setObjectName(objectName);
    setMovable(false);
    m_State->setObjectName(QStringLiteral("State"));
    connect(&m_Slices, &QTimer::timeout, this, &CountingBar::goOn);
    window.mainWindow()->addToolBarBreak(Qt::BottomToolBarArea);
    window.mainWindow()->addToolBar(Qt::BottomToolBarArea, this);
    hide();
}

CountingBar::~CountingBar() = default;

void CountingBar::addControls(const QList<QWidget *> &controls, const QString &buttonText,
                              const QString &buttonToolTip)
{
    auto *const upper = new QHBoxLayout;
    for (QWidget *const control : controls) {
        if (m_First == nullptr && control->focusPolicy() != Qt::NoFocus)
            m_First = control;
        upper->addWidget(control);
    }
    upper->addStretch();
    auto *const go = new QToolButton;
    go->setText(buttonText);
    go->setToolTip(buttonToolTip);
    go->setAccessibleName(buttonToolTip);
    go->setFocusPolicy(Qt::TabFocus);
    auto *const lower = new QHBoxLayout;
    lower->addWidget(go);
    lower->addWidget(m_State, 1);
    auto *const lines = new QWidget;
    auto *const layout = new QVBoxLayout(lines);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kBetweenLines);
    layout->addLayout(upper);
    layout->addLayout(lower);
    // Else the window would become as wide as the line.
    lines->setMinimumWidth(1);
    lines->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    addWidget(lines);
    nameInnerControls(*this);
    connect(go, &QToolButton::clicked, this, &CountingBar::apply);
}

TAMBO::AlignmentWindow &CountingBar::shownWindow() const
{
    return *AlignmentViewObserver::window();
}

QString CountingBar::stateText() const
{
    return m_State->text();
}

void CountingBar::ask()
{
    show();
    if (m_First != nullptr)
        takeKeyboard(*m_First);
    countAnew();
}

void CountingBar::leave()
{
    m_Slices.stop();
    m_HasCount = false;
    hide();
    shownWindow().areaWidget(TAMBO::WindowArea::Cells)->parentWidget()->setFocus();
}

void CountingBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        leave();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        apply();
    else
        QToolBar::keyPressEvent(event);
}

void CountingBar::alignmentShown()
{
    countAnew();
}

void CountingBar::layoutRebuilt()
{
    countAnew();
}

// ---- Counting

void CountingBar::countAnew()
{
    m_Slices.stop();
    m_HasCount = false;
    if (isHidden())
        return;
    const TAMBO::Alignment *const alignment = shownWindow().alignment();
    m_HasCount = alignment != nullptr && alignment->height() > 0 && beginCount();
    if (m_HasCount)
        m_Slices.start(0);
    showState();
}

void CountingBar::goOn()
{
    if (!countOn(kSlice))
        m_Slices.stop();
    showState();
}

void CountingBar::showState()
{
    const TAMBO::Alignment *const alignment = shownWindow().alignment();
    if (alignment == nullptr) {
        m_State->setText(companion::tr("No alignment is shown."));
        return;
    }
    QString text = countText(*alignment);
    if (m_HasCount && !isCounted())
        text += companion::tr(", %1 % counted").arg(percent());
    m_State->setText(text);
}

bool CountingBar::apply()
{
    if (!m_HasCount)
        return false;
    m_Slices.stop();
    const QPointer<CountingBar> self(this);
    const bool isDone = finish(
        {[this](auto most) { return m_HasCount && countOn(most); }, [this] { return percent(); }},
        companion::tr("Counting…"), this);
    if (self == nullptr)
        return false;
    TAMBO::Alignment *const alignment = shownWindow().alignment();
    if (!isDone || !m_HasCount || alignment == nullptr || !isCounted()) {
        if (m_HasCount && alignment != nullptr)
            m_Slices.start(0);
        showState();
        return false;
    }
    showState();
    return carryOut(*alignment);
}

} // namespace companion
