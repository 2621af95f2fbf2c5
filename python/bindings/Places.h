// SPDX-License-Identifier: GPL-3.0-or-later
// Rows and columns as Python programmers name them: from 0, negative ones from the end.
#pragma once

#include <pybind11/pybind11.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace TAMBO::script {

namespace py = pybind11;

// what: "row". An IndexError when there are not so many.
[[nodiscard]] std::size_t placeOf(py::ssize_t place, std::size_t count, const char *what);
// The same of a place between two, which may be the end.
[[nodiscard]] std::size_t cutOf(py::ssize_t place, std::size_t count, const char *what);

// None for all, a place, a slice, places, or an array of so many truth values. In the order in
// which they are named.
[[nodiscard]] std::vector<std::size_t> placesOf(const py::object &named, std::size_t count,
                                                const char *what);
// The same without their order.
[[nodiscard]] std::vector<bool> flagsOf(const py::object &named, std::size_t count,
                                        const char *what);
// None for all, or a slice without steps: half-open.
[[nodiscard]] std::pair<std::size_t, std::size_t> rangeOf(const py::object &named,
                                                          std::size_t count, const char *what);

} // namespace TAMBO::script
