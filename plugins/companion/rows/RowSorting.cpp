// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowSorting.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "IdentityDistances.h"
#include "RowPass.h"
#include "Texts.h"
#include "ThreadWork.h"

#include <QMainWindow>

#include <functional>
#include <memory>
#include <numeric>
#include <string>
#include <utility>

namespace companion {

namespace {

// Rows are looked at between events, and sorted in a thread by what was seen of them.
template <typename Key, typename Before>
std::optional<RowOrder>
sorted(TAMBO::AlignmentWindow &window, const RowPass::Begin &begin,
       const std::function<Key(const TAMBO::Alignment &, unsigned long)> &of, const Before &before)
{
    std::vector<Key> keys;
    RowOrder order;
    RowPass pass(
        window,
        [&](const TAMBO::Alignment &alignment) {
            keys.clear();
            keys.reserve(alignment.height());
            begin(alignment);
        },
        [&](const TAMBO::Alignment &alignment, unsigned long row) {
            keys.push_back(of(alignment, row));
            return true;
        });
    bool isSorted = false;
    std::unique_ptr<ThreadWork> sorting;
    const auto goOn = [&](std::chrono::microseconds most) {
        if (sorting == nullptr) {
            if (pass.goOn(most) || !pass.isDone())
                return !pass.isDone() && window.alignment() != nullptr;
            order.resize(keys.size());
            std::iota(order.begin(), order.end(), 0UL);
            sorting = std::make_unique<ThreadWork>([&](const ThreadWork::Stop &stop) {
                isSorted = sortStoppably(
                    order,
                    [&](unsigned long a, unsigned long b) { return before(keys[a], keys[b]); },
                    stop);
            });
        }
        return !sorting->isDone(most);
    };
    const bool isFinished = finish({goOn, [&pass] { return pass.percent(); }},
                                   tr("Sorting the rows…"), window.mainWindow());
    // Gives it up, if it still runs.
    sorting.reset();
    if (!isFinished || !isSorted || !pass.isDone())
        return std::nullopt;
    return order;
}

} // namespace

std::optional<RowOrder> orderByName(TAMBO::AlignmentWindow &window)
{
    return sorted<std::string>(
        window, [](const TAMBO::Alignment &) {},
        [](const TAMBO::Alignment &alignment, unsigned long row) {
            return naturalKey(alignment.GetSeqName(row));
        },
        std::less<>());
}

std::optional<RowOrder> orderByLength(TAMBO::AlignmentWindow &window)
{
    return sorted<unsigned long>(
        window, [](const TAMBO::Alignment &) {},
        [](const TAMBO::Alignment &alignment, unsigned long row) {
            return alignment.residueCount(row, alignment.width());
        },
        std::greater<>());
}

std::optional<RowOrder> orderByIdentity(TAMBO::AlignmentWindow &window, unsigned long row)
{
    // More than any other row has.
    constexpr double itself = 2;
    std::unique_ptr<IdentityTo> identity;
    return sorted<double>(
        window,
        [&](const TAMBO::Alignment &alignment) {
            identity = std::make_unique<IdentityTo>(alignment.GetSequence(row, false),
                                                    alignment.width(), IdentityOf::AlignedPairs);
        },
        [&](const TAMBO::Alignment &alignment, unsigned long each) {
            return each == row ? itself : identity->of(alignment.GetSequence(each, false));
        },
        std::greater<>());
}

} // namespace companion
