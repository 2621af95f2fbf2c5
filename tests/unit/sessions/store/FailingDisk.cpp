// SPDX-License-Identifier: GPL-3.0-or-later
#include "FailingDisk.h"

#include <sqlite3.h>

#include <algorithm>
#include <condition_variable>
#include <list>
#include <mutex>

namespace {

enum class State { Works, Full, Stalls };

std::mutex g_Mutex;
std::condition_variable g_Changed;
State g_State = State::Works;
int g_Tried = 0;
sqlite3_vfs *g_System = nullptr;
sqlite3_vfs g_Failing;

// What stands in place of the methods of a file. Files that are locked have others than journals.
struct Methods
{
    sqlite3_io_methods methods;
    const sqlite3_io_methods *system;
};
std::list<Methods> g_Methods;

int write(sqlite3_file *file, const void *bytes, int size, sqlite3_int64 place)
{
    std::unique_lock lock(g_Mutex);
    ++g_Tried;
    g_Changed.notify_all();
    g_Changed.wait(lock, [] { return g_State != State::Stalls; });
    if (g_State == State::Full)
        return SQLITE_FULL;
    const auto known = std::find_if(g_Methods.begin(), g_Methods.end(), [file](const Methods &one) {
        return &one.methods == file->pMethods;
    });
    return known->system->xWrite(file, bytes, size, place);
}

int open(sqlite3_vfs *, sqlite3_filename name, sqlite3_file *file, int flags, int *outFlags)
{
    const int code = g_System->xOpen(g_System, name, file, flags, outFlags);
    if (code == SQLITE_OK) {
        const std::lock_guard lock(g_Mutex);
        g_Methods.push_back({*file->pMethods, file->pMethods});
        g_Methods.back().methods.xWrite = write;
        file->pMethods = &g_Methods.back().methods;
    }
    return code;
}

void change(State state)
{
    const std::lock_guard lock(g_Mutex);
    g_State = state;
    g_Changed.notify_all();
}

} // namespace

FailingDisk::FailingDisk()
{
    g_System = sqlite3_vfs_find(nullptr);
    g_Failing = *g_System;
    g_Failing.pNext = nullptr;
    g_Failing.zName = "failing";
    g_Failing.xOpen = open;
    g_Tried = 0;
    sqlite3_vfs_register(&g_Failing, 1);
}

FailingDisk::~FailingDisk()
{
    free();
    sqlite3_vfs_unregister(&g_Failing);
    sqlite3_vfs_register(g_System, 1);
}

void FailingDisk::fill()
{
    change(State::Full);
}

void FailingDisk::free()
{
    change(State::Works);
}

void FailingDisk::stall()
{
    change(State::Stalls);
}

int FailingDisk::writesTried() const
{
    const std::lock_guard lock(g_Mutex);
    return g_Tried;
}
