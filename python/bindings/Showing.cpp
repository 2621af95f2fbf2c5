// SPDX-License-Identifier: GPL-3.0-or-later
// What is unsaved, and what other programs get to look at.
#include "Alignment.h"
#include "Declarations.h"
#include "Peptide.h"
#include "Places.h"
#include "ProcessModel.h"
#include "Structure.h"

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <filesystem>
#include <utility>
#include <vector>

namespace TAMBO::script {

namespace {

py::list unsaved()
{
    py::list found;
    for (Compound *const object : ProcessModel::get().unsavedObjects()) {
        if (auto *const alignment = dynamic_cast<Alignment *>(object))
            found.append(AlignmentReference(*alignment));
        else if (auto *const structure = dynamic_cast<Structure *>(object))
            found.append(StructureReference(*structure));
        else if (Peptide *const sequence = Peptide::from(object))
            found.append(ChainReference(*sequence));
    }
    return found;
}

void writeObjects(const std::filesystem::path &file)
{
    ProcessModel &model = ProcessModel::get();
    if (const Result<void> written = model.writeObjects(file); !written)
        throw FileError{written.error()};
    model.settle();
}

// Half-open, in their order.
std::vector<std::pair<std::size_t, std::size_t>> runsOf(const py::object &named, std::size_t count,
                                                        const char *what)
{
    const std::vector<bool> flags = flagsOf(named, count, what);
    std::vector<std::pair<std::size_t, std::size_t>> runs;
    for (std::size_t i = 0; i < count; ++i) {
        if (!flags[i])
            continue;
        if (runs.empty() || runs.back().second < i)
            runs.emplace_back(i, i);
        runs.back().second = i + 1;
    }
    return runs;
}

} // namespace

void declareShowing(py::module_ &module)
{
    module.def("unsaved", &unsaved,
               "The alignments, structures and sequences that no file has as they are now: neither "
               "one of their own, nor the session that was opened or saved last.");
    module.def("_write_objects", &writeObjects);
    module.def("_runs", [](const py::object &named, py::ssize_t count, const std::string &what) {
        return runsOf(named, std::size_t(count), what.c_str());
    });
}

} // namespace TAMBO::script
