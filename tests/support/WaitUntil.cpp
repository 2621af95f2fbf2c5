// SPDX-License-Identifier: GPL-3.0-or-later
#include "WaitUntil.h"

#include <QTest>

#include <gtest/gtest.h>

namespace {

constexpr int kPatienceAfterFailure = 1000;

} // namespace

bool waitUntil(const std::function<bool()> &condition, std::source_location place)
{
    return waitUntilWithin(kPatienceMilliseconds, condition, place);
}

bool waitUntilWithin(int milliseconds, const std::function<bool()> &condition,
                     std::source_location place)
{
    const int patience = testing::Test::HasFailure() ? kPatienceAfterFailure : milliseconds;
    const bool isTrue = QTest::qWaitFor(condition, patience);
    if (!isTrue) {
        ADD_FAILURE_AT(place.file_name(), int(place.line()))
            << "in vain waited for " << patience / 1000 << " s in " << place.function_name();
    }
    return isTrue;
}
