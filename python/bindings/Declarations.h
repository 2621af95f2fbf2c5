// SPDX-License-Identifier: GPL-3.0-or-later
// What the module is made of, one function for each noun.
#pragma once

#include <pybind11/pybind11.h>

namespace TAMBO::script {

namespace py = pybind11;

void declareExceptions(py::module_ &module);
void declareSteps(py::module_ &module);
void declareChains(py::module_ &module);
void declareResidues(py::module_ &module);
void declareStructures(py::module_ &module);
void declareRows(py::module_ &module);
void declareAlignments(py::module_ &module);
void declareTrees(py::module_ &module);
void declareFiles(py::module_ &module);
void declareRealigning(py::module_ &module);
void declareModelling(py::module_ &module);
void declareShowing(py::module_ &module);

} // namespace TAMBO::script
