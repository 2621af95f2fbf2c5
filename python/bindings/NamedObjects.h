// SPDX-License-Identifier: GPL-3.0-or-later
// What objects of all kinds have in Python.
#pragma once

#include "Declarations.h"
#include "ProcessModel.h"

#include <functional>
#include <string>

namespace TAMBO::script {

[[nodiscard]] std::string nameOf(const Compound &object);
void rename(Compound &object, const std::string &name);
[[nodiscard]] bool isLocked(const Compound &object);
void lock(Compound &object, bool locked);
// An object of Space.
void remove(Compound &object);

template <typename T>
void declareObject(py::class_<Reference<T>> &type, std::string (*shown)(const Reference<T> &))
{
    using Self = Reference<T>;
    type.def_property(
            "name", [](const Self &self) { return nameOf(*self); },
            [](const Self &self, const std::string &name) { rename(*self, name); },
            "As all windows show it.")
        .def_property(
            "locked", [](const Self &self) { return isLocked(*self); },
            [](const Self &self, bool locked) { lock(*self, locked); },
            "Whether changes are refused. No step of undo.")
        .def_property_readonly("exists", &Self::isThere,
                               "False when the object is gone, until undo brings it back.")
        .def_property_readonly(
            "modified", [](const Self &self) { return ProcessModel::get().isUnsaved(*self); },
            "Whether no file has it as it is now: neither one of its own, nor the session that was "
            "opened or saved last. Of a chain, whether its structure is.")
        .def(
            "delete", [](const Self &self) { remove(*self); }, "Takes it out of the workbench.")
        .def(
            "__eq__", [](const Self &self, const Self &other) { return self == other; },
            py::is_operator())
        .def("__hash__",
             [](const Self &self) { return std::hash<std::uint32_t>()(self.number().identity); })
        .def("__repr__", shown);
}

} // namespace TAMBO::script
