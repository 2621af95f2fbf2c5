// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageSink.h"

#include "Texts.h"

#include <utility>

namespace companion {

PagePlan::PagePlan(PageOrder wanted, const TAMBO::Alignment &alignment)
    : order(std::move(wanted)), measures(order, alignment), layout(order, measures)
{ }

QString PagePlan::pageText(std::size_t number) const
{
    return tr("Page %1 of %2").arg(number + 1).arg(layout.pages());
}

PageSink::~PageSink() = default;

void PageSink::endPart(const PagePart &) { }

void PageSink::endPage(const Page &) { }

} // namespace companion
