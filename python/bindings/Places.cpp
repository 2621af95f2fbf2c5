// SPDX-License-Identifier: GPL-3.0-or-later
#include "Places.h"

#include <algorithm>
#include <numeric>
#include <string>

namespace TAMBO::script {

namespace {

[[noreturn]] void refusePlace(py::ssize_t place, std::size_t count, const char *what)
{
    throw py::index_error(std::string(what) + ' ' + std::to_string(place) +
                          " is not there: there are " + std::to_string(count));
}

bool isTruth(py::handle value)
{
    return PyBool_Check(value.ptr()) != 0 ||
           py::str(py::type::handle_of(value).attr("__name__")).cast<std::string>() == "bool_";
}

} // namespace

std::size_t placeOf(py::ssize_t place, std::size_t count, const char *what)
{
    const auto most = py::ssize_t(count);
    if (place < -most || place >= most)
        refusePlace(place, count, what);
    return std::size_t(place < 0 ? place + most : place);
}

std::size_t cutOf(py::ssize_t place, std::size_t count, const char *what)
{
    const auto most = py::ssize_t(count);
    if (place < -most || place > most)
        refusePlace(place, count, what);
    return std::size_t(place < 0 ? place + most : place);
}

std::vector<std::size_t> placesOf(const py::object &named, std::size_t count, const char *what)
{
    std::vector<std::size_t> places;
    if (named.is_none()) {
        places.resize(count);
        std::iota(places.begin(), places.end(), std::size_t(0));
        return places;
    }
    if (py::isinstance<py::slice>(named)) {
        py::ssize_t start = 0;
        py::ssize_t stop = 0;
        py::ssize_t step = 0;
        py::ssize_t length = 0;
        if (!named.cast<py::slice>().compute(py::ssize_t(count), &start, &stop, &step, &length))
            throw py::error_already_set();
        for (py::ssize_t i = 0; i < length; ++i)
            places.push_back(std::size_t(start + i * step));
        return places;
    }
    if (PyIndex_Check(named.ptr()) != 0 && !py::hasattr(named, "__len__"))
        return {placeOf(named.cast<py::ssize_t>(), count, what)};
    std::vector<py::object> entries;
    for (const py::handle entry : named)
        entries.push_back(py::reinterpret_borrow<py::object>(entry));
    if (!entries.empty() && std::all_of(entries.begin(), entries.end(), isTruth)) {
        if (entries.size() != count)
            throw py::index_error(std::to_string(entries.size()) + " truth values for " +
                                  std::to_string(count) + ' ' + what + 's');
        for (std::size_t i = 0; i < count; ++i) {
            if (PyObject_IsTrue(entries[i].ptr()) == 1)
                places.push_back(i);
        }
        return places;
    }
    for (const py::object &entry : entries)
        places.push_back(placeOf(entry.cast<py::ssize_t>(), count, what));
    return places;
}

std::vector<bool> flagsOf(const py::object &named, std::size_t count, const char *what)
{
    std::vector<bool> flags(count);
    for (const std::size_t place : placesOf(named, count, what))
        flags[place] = true;
    return flags;
}

std::pair<std::size_t, std::size_t> rangeOf(const py::object &named, std::size_t count,
                                            const char *what)
{
    if (named.is_none())
        return {0, count};
    if (!py::isinstance<py::slice>(named))
        throw py::type_error(std::string(what) + "s have to be a slice, as slice(10, 20)");
    py::ssize_t start = 0;
    py::ssize_t stop = 0;
    py::ssize_t step = 0;
    py::ssize_t length = 0;
    if (!named.cast<py::slice>().compute(py::ssize_t(count), &start, &stop, &step, &length))
        throw py::error_already_set();
    if (step != 1)
        throw py::value_error(std::string(what) + "s have to stand side by side");
    return {std::size_t(start), std::size_t(start + length)};
}

} // namespace TAMBO::script
