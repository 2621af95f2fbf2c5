// SPDX-License-Identifier: GPL-3.0-or-later
// A disk that is full, or does not answer, when a test says so: stands between SQLite and the
// system as long as the object lives.
#pragma once

#include <atomic>

class FailingDisk
{
public:
    FailingDisk();
    ~FailingDisk();
    FailingDisk(const FailingDisk &) = delete;
    FailingDisk &operator=(const FailingDisk &) = delete;

    // Writing fails from now on.
    void fill();
    void free();
    // Writing waits until free().
    void stall();
    [[nodiscard]] int writesTried() const;
};
