// SPDX-License-Identifier: GPL-3.0-or-later
// What is found of an alignment as arrays. What takes long works on a copy, while other threads
// run.
#pragma once

#include "ProcessModel.h"
#include "Tree.h"

#include <pybind11/numpy.h>

#include <string>
#include <vector>

namespace TAMBO::script {

namespace py = pybind11;

[[nodiscard]] py::array letters(const AlignmentReference &alignment, const py::object &rows,
                                const py::object &columns, const std::string &gap);
[[nodiscard]] py::array occupancy(const AlignmentReference &alignment, const py::object &rows,
                                  const py::object &columns);
[[nodiscard]] py::array identities(const AlignmentReference &alignment, const std::string &of);
[[nodiscard]] py::array conservations(const AlignmentReference &alignment);
[[nodiscard]] py::array distances(const AlignmentReference &alignment);
[[nodiscard]] companion::Tree neighborTree(const AlignmentReference &alignment);

} // namespace TAMBO::script
