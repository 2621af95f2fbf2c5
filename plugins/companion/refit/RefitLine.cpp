// SPDX-License-Identifier: GPL-3.0-or-later
#include "RefitLine.h"

#include "AlignmentWindow.h"
#include "FitsText.h"
#include "LayoutChanges.h"
#include "LineLabel.h"
#include "PlainText.h"
#include "Refit.h"
#include "SlicedWork.h"
#include "StructureDetails.h"
#include "Texts.h"

#include <QLabel>
#include <QMainWindow>
#include <QToolBar>

namespace companion {

RefitLine::RefitLine(TAMBO::AlignmentWindow &window)
    : AlignmentViewObserver(window),
      m_Bar(new QToolBar(tr("Superposed Structures"), window.mainWindow())),
      m_Text(makeLineLabel())
{
    m_Bar->setObjectName(QStringLiteral("SuperposedStructures"));
    m_Bar->setMovable(false);
    // Its text is its name.
    m_Text->setAccessibleDescription(tr("How well the structures lie on each other"));
    m_Bar->addWidget(m_Text);
    window.mainWindow()->addToolBarBreak(Qt::BottomToolBarArea);
    window.mainWindow()->addToolBar(Qt::BottomToolBarArea, m_Bar);
    m_Bar->hide();
    m_Next.setInterval(0);
    m_Next.callOnTimeout([this] { goOn(); });
    look();
}

RefitLine::~RefitLine()
{
    delete m_Bar;
}

bool RefitLine::isShown() const
{
    return m_Bar != nullptr && !m_Bar->isHidden();
}

QString RefitLine::text() const
{
    return m_Text == nullptr ? QString() : m_Text->text();
}

QString RefitLine::toggle()
{
    TAMBO::Alignment *const alignment = window()->alignment();
    if (alignment == nullptr)
        return {};
    const bool isOn = !isRefitted(*alignment);
    if (!setRefitted(*alignment, isOn))
        return tr("The alignment cannot be changed now");
    look();
    return isOn ? tr("Structures are kept superposed on the alignment")
                : tr("Structures stay where they are");
}

void RefitLine::alignmentShown()
{
    m_State.reset();
    look();
}

void RefitLine::layoutRebuilt()
{
    look();
}

void RefitLine::commUpdate()
{
    look();
}

void RefitLine::commAdd()
{
    look();
}

void RefitLine::commDelete()
{
    look();
}

RefitLine::State RefitLine::state() const
{
    const TAMBO::Alignment *const alignment = window()->alignment();
    return {alignment, TAMBO::LayoutChanges::revision(*alignment),
            TAMBO::StructureDetails::revision(), TAMBO::StructureFits::lastChoice(*alignment)};
}

void RefitLine::look()
{
    if (window() == nullptr || m_Bar == nullptr)
        return;
    const TAMBO::Alignment *const alignment = window()->alignment();
    const bool isOn = alignment != nullptr && isRefitted(*alignment);
    m_Bar->setVisible(isOn);
    if (!isOn) {
        m_State.reset();
        m_Disputes.reset();
        m_Next.stop();
        return;
    }
    const State now = state();
    if (m_State != now || (m_Disputes && !m_Disputes->isUpToDate())) {
        m_State = now;
        m_Disputes.reset();
        m_Found.begin(now.choice);
        m_Next.start();
    }
}

void RefitLine::goOn()
{
    look();
    if (!m_State || !m_Next.isActive() || m_Found.goOn(*m_State->alignment, kSlice))
        return;
    m_Next.stop();
    const TAMBO::Alignment &alignment = *m_State->alignment;
    m_Disputes.emplace(alignment, m_Found);
    m_Text->setText(fitsText(alignment, m_Found, *m_Disputes));
    m_Text->setToolTip(TAMBO::plainToolTip(fitLines(alignment, m_Found, *m_Disputes)));
}

} // namespace companion
