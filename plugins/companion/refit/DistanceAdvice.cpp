// SPDX-License-Identifier: GPL-3.0-or-later
#include "DistanceAdvice.h"

#include "AlignmentWindow.h"
#include "LayoutChanges.h"
#include "SlicedWork.h"
#include "StructureDetails.h"
#include "Texts.h"

#include <QAction>
#include <QMainWindow>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace companion {

namespace {

// Homologous structures that were superposed in some other way, or along an alignment that has been
// changed since, are never so much farther apart than they could be.
constexpr double kTimesApart = 2;
constexpr double kBeyondApart = 3;
// Unless they were superposed by a part of them, be it by another program: of structures that lie
// anywhere a residue in a hundred or so is that near to its counterpart.
constexpr std::size_t kNearShare = 4;

bool isNearInPart(const TAMBO::Alignment &alignment, unsigned long first,
                  const TAMBO::StructureFit &fit)
{
    std::vector<TAMBO::Vertex> fixed;
    std::vector<TAMBO::Vertex> moving;
    alignment.readPositions(first, 0, alignment.width(), fixed);
    alignment.readPositions(fit.row, 0, alignment.width(), moving);
    std::size_t near = 0;
    for (std::size_t i = 0; i < std::min(fixed.size(), moving.size()); ++i) {
        const TAMBO::Vertex &a = fixed[i];
        const TAMBO::Vertex &b = moving[i];
        if (a.isDefined() && b.isDefined() &&
            std::hypot(double(a.x()) - b.x(), double(a.y()) - b.y(), double(a.z()) - b.z()) <
                kBeyondApart)
            ++near;
    }
    return near * kNearShare >= fit.pairs;
}

bool liesApart(const TAMBO::Alignment &alignment, unsigned long first,
               const TAMBO::StructureFit &fit)
{
    return fit.problem.empty() && fit.rmsd > kTimesApart * fit.coreRmsd + kBeyondApart &&
           !isNearInPart(alignment, first, fit);
}

} // namespace

QString apartText(const TAMBO::Alignment &alignment, const FitsFound &found)
{
    std::vector<TAMBO::StructureFit> apart;
    for (const TAMBO::StructureFit &fit : found.fits())
        if (liesApart(alignment, found.rows().front().row, fit))
            apart.push_back(fit);
    if (apart.empty())
        return {};
    const TAMBO::StructureFit &worst =
        *std::ranges::max_element(apart, {}, &TAMBO::StructureFit::rmsd);
    const auto nameOf = [&alignment](unsigned long row) {
        return QString::fromStdString(alignment.GetSeqName(row));
    };
    const QString first = nameOf(found.rows().front().row);
    const QString example = tr("%1 lies %2 Å from %3, and would lie %4 Å from it")
                                .arg(nameOf(worst.row), QString::number(worst.rmsd, 'f', 1), first,
                                     QString::number(worst.coreRmsd, 'f', 1));
    return apart.size() == 1
               ? tr("The colors tell little: one structure is not superposed (%1). Use Tools, "
                    "Superpose in the workbench")
                     .arg(example)
               : tr("The colors tell little: %1 structures are not superposed (%2). Use Tools, "
                    "Superpose in the workbench")
                     .arg(apart.size())
                     .arg(example);
}

DistanceAdvice::DistanceAdvice(TAMBO::AlignmentWindow &window,
                               std::function<void(const QString &)> tell)
    : AlignmentViewObserver(window), m_Tell(std::move(tell))
{
    m_Next.setInterval(0);
    m_Next.callOnTimeout([this] { goOn(); });
    // The command is the window's own. Nobody else says when it was used, so that one looks at its
    // entry in the menu.
    for (QAction *const action : window.mainWindow()->findChildren<QAction *>())
        if (action->text().remove(u'&') == QLatin1String("By Distance"))
            connect(action, &QAction::triggered, this, &DistanceAdvice::look);
}

DistanceAdvice::~DistanceAdvice() = default;

void DistanceAdvice::look()
{
    const TAMBO::Alignment *const alignment = window() == nullptr ? nullptr : window()->alignment();
    if (alignment == nullptr)
        return;
    m_Layout = TAMBO::LayoutChanges::revision(*alignment);
    m_Structures = TAMBO::StructureDetails::revision();
    m_Found.begin();
    m_Next.start();
}

void DistanceAdvice::alignmentShown()
{
    m_Next.stop();
}

void DistanceAdvice::goOn()
{
    const TAMBO::Alignment *const alignment = window() == nullptr ? nullptr : window()->alignment();
    // What was colored is not what is there any more.
    if (alignment == nullptr || TAMBO::LayoutChanges::revision(*alignment) != m_Layout ||
        TAMBO::StructureDetails::revision() != m_Structures)
        return m_Next.stop();
    if (m_Found.goOn(*alignment, kSlice))
        return;
    m_Next.stop();
    if (const QString text = apartText(*alignment, m_Found); !text.isEmpty())
        m_Tell(text);
}

} // namespace companion
