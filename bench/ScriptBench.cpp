// SPDX-License-Identifier: GPL-3.0-or-later
// Microseconds for an edit of a gap, with guard and history, as bench/scripts.py makes them from
// Python.
#include "Alignment.h"
#include "DataPointBase.h"
#include "Edit.h"
#include "FileReader.h"
#include "History.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "Space.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <utility>

namespace {

using TAMBO::Alignment;

class EditGuard : public DataPointBase
{
public:
    explicit EditGuard(const Alignment &alignment)
        : DataPointBase(nullptr, Publisher::Update, &alignment)
    { }
};

double processorMicroseconds()
{
    std::timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return 1e6 * static_cast<double>(time.tv_sec) + 1e-3 * static_cast<double>(time.tv_nsec);
}

// The first one with a residue behind it.
unsigned long someGap(const Alignment &alignment)
{
    unsigned long column = 0;
    while (alignment.letterAt(0, column) != '\0' || alignment.letterAt(0, column + 1) == '\0')
        ++column;
    return column;
}

} // namespace

int main(int count, char **arguments)
{
    if (count != 3)
        return std::fprintf(stderr, "usage: bench_script FILE EDITS\n"), EXIT_FAILURE;
    auto contents = TAMBO::readPackedFile(arguments[1]);
    if (!contents)
        return std::fprintf(stderr, "%s\n", contents.error().message().c_str()), EXIT_FAILURE;
    const long edits = std::atol(arguments[2]);
    TAMBO::History history;
    TAMBO::setEditRecorder(&history);
    Alignment &alignment =
        *TAMBO::ObjectFactory::adopt(std::move(contents.value().alignments.front()));
    const unsigned long gap = someGap(alignment);
    const double start = processorMicroseconds();
    for (long i = 0; i < edits; ++i) {
        const EditGuard guard(alignment);
        if (guard.m_good)
            alignment.moveGap(0, gap + (i % 2 == 0 ? 0 : 1), gap + (i % 2 == 0 ? 1 : 0), true);
    }
    std::printf("%.3f\n", (processorMicroseconds() - start) / static_cast<double>(edits));
    history.clear();
    TAMBO::setEditRecorder(nullptr);
    TAMBO::ObjectSpace::get().reset();
}
