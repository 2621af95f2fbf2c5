// SPDX-License-Identifier: GPL-3.0-or-later
#include "Declarations.h"
#include "ProcessModel.h"

#include <cerrno>
#include <exception>

namespace TAMBO::script {

namespace {

PyObject *s_Gone = nullptr;
PyObject *s_Refused = nullptr;
PyObject *s_Step = nullptr;
PyObject *s_Thread = nullptr;
PyObject *s_Format = nullptr;

PyObject *makeException(py::module_ &module, const char *name, PyObject *base, const char *doc)
{
    const std::string full = std::string("tambo.") + name;
    PyObject *const type = PyErr_NewExceptionWithDoc(full.c_str(), doc, base, nullptr);
    module.add_object(name, type);
    return type;
}

void raiseFailure(const Failure &failure)
{
    const std::string text = failure.message();
    py::object error;
    switch (failure.kind) {
    case FailureKind::Cancelled:
        // By Ctrl+C, which has its exception already.
        if (PyErr_Occurred() == nullptr)
            PyErr_SetNone(PyExc_KeyboardInterrupt);
        return;
    case FailureKind::NotFound:
        error = py::handle(PyExc_FileNotFoundError)(ENOENT, failure.cause, failure.place.file);
        break;
    case FailureKind::BadInput:
        error = py::handle(s_Format)(text);
        break;
    case FailureKind::Refused:
        error = py::handle(s_Refused)(text);
        break;
    case FailureKind::System:
        error = py::handle(PyExc_OSError)(text);
        break;
    }
    error.attr("file") = failure.place.file;
    error.attr("line") =
        failure.place.line == 0 ? py::object(py::none()) : py::int_(failure.place.line);
    PyErr_SetObject(reinterpret_cast<PyObject *>(Py_TYPE(error.ptr())), error.ptr());
}

} // namespace

void declareExceptions(py::module_ &module)
{
    s_Gone = makeException(module, "GoneError", PyExc_ReferenceError,
                           "The object of the workbench that this one stands for is gone.");
    s_Refused =
        makeException(module, "RefusedError", PyExc_RuntimeError,
                      "What was asked for is understood, but not possible as things stand.");
    s_Step = makeException(module, "StepError", PyExc_RuntimeError,
                           "Not possible while a step is open, or steps were ended out of order.");
    s_Thread = makeException(module, "ThreadError", PyExc_RuntimeError,
                             "Called from another thread than the one that has imported tambo.");
    s_Format = makeException(module, "FormatError", PyExc_ValueError,
                             "A file cannot be read or written as asked; file and line say where.");
    py::register_exception_translator([](std::exception_ptr thrown) {
        try {
            std::rethrow_exception(thrown);
        } catch (const FileError &error) {
            raiseFailure(error.failure);
        } catch (const GoneError &error) {
            PyErr_SetString(s_Gone, error.what());
        } catch (const RefusedError &error) {
            PyErr_SetString(s_Refused, error.what());
        } catch (const StepError &error) {
            PyErr_SetString(s_Step, error.what());
        } catch (const ThreadError &error) {
            PyErr_SetString(s_Thread, error.what());
        }
    });
}

} // namespace TAMBO::script
