// SPDX-License-Identifier: GPL-3.0-or-later
// How what edits at the cell cursor says something to users.
#pragma once

#include <QString>

#include <functional>

namespace companion {

struct Telling
{
    // For the moment.
    std::function<void(const QString &)> show;
    // To be remembered as well.
    std::function<void(const QString &)> tell;
};

} // namespace companion
