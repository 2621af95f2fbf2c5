// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alignment.h"
#include "Changes.h"
#include "Declarations.h"
#include "FileWriter.h"
#include "MissingStructures.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "ReadJob.h"
#include "RecordMaker.h"
#include "RowPacking.h"
#include "Structure.h"
#include "WriteLosses.h"

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>

namespace TAMBO::script {

namespace {

namespace fs = std::filesystem;

// What a file has brought.
struct Opened
{
    fs::path file;
    std::vector<AlignmentReference> alignments;
    std::vector<StructureReference> structures;
    // Of rows that are not aligned.
    std::vector<ChainReference> sequences;
    std::vector<std::string> remarks;
    // Structures that rows name and that were not found.
    std::vector<std::string> missing;
};

std::set<std::string> loadedStructures()
{
    std::set<std::string> names;
    for (const Compound *const object : *Space::instance()) {
        if (const auto *const structure = dynamic_cast<const Structure *>(object))
            names.insert(structure->code());
    }
    return names;
}

// With the structures that stand beside it and are named by its rows.
ReadOutcome readFiles(const fs::path &file)
{
    if (std::error_code error; !fs::exists(file, error))
        throw FileError{{FailureKind::NotFound, "No such file or directory", {file.string()}}};
    ReadJob job({file}, loadedStructures());
    // Other threads may run: nothing that is loaded is looked at.
    const py::gil_scoped_release others;
    Result<ReadOutcome> outcome = job.run([](const std::string &, double) {
        const py::gil_scoped_acquire lock;
        return PyErr_CheckSignals() == 0;
    });
    if (!outcome)
        throw FileError{outcome.error()};
    for (const FileFailure &failure : outcome.value().failures) {
        if (failure.file == file)
            throw FileError{failure.failure};
    }
    return std::move(outcome).value();
}

void addSequences(std::size_t from, Opened &opened)
{
    const ObjectSpace &space = ObjectSpace::get();
    for (std::size_t i = from; i < space.objectCount(); ++i) {
        if (Peptide *const sequence = Peptide::from(space.object(i)))
            opened.sequences.emplace_back(*sequence);
    }
}

// "1abc, 2abc and 17 more".
std::string listText(const std::vector<std::string> &names)
{
    constexpr std::size_t most = 10;
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), most); ++i)
        text += (i == 0 ? "" : ", ") + names[i];
    return names.size() <= most ? text
                                : text + " and " + std::to_string(names.size() - most) + " more";
}

void addAll(const fs::path &file, FileContents &contents, Opened &opened, bool isSource)
{
    ProcessModel &model = ProcessModel::get();
    for (StructureRecord &record : contents.structures) {
        std::ranges::copy(record.remarks, std::back_inserter(opened.remarks));
        if (Structure *const structure = ObjectFactory::adopt(std::move(record))) {
            opened.structures.emplace_back(*structure);
            if (isSource)
                model.noteFile(*structure, file);
        }
    }
    for (AlignmentRecord &record : contents.alignments) {
        std::ranges::copy(record.remarks, std::back_inserter(opened.remarks));
        if (const std::vector<std::string> missing = missingStructures(record); !missing.empty()) {
            const std::string name = file.filename().string();
            opened.remarks.push_back(name + ": found no structure for rows that name " +
                                     listText(missing) +
                                     ": none is loaded, and no such file stands beside " + name +
                                     ". These rows have no coordinates.");
            std::ranges::copy(missing, std::back_inserter(opened.missing));
        }
        const std::size_t before = ObjectSpace::get().objectCount();
        if (Alignment *const alignment = ObjectFactory::adopt(std::move(record))) {
            opened.alignments.emplace_back(*alignment);
            if (isSource)
                model.noteFile(*alignment, file);
        } else {
            addSequences(before, opened);
        }
    }
}

// isSource: the objects are saved there.
Opened openFile(const fs::path &file, bool isSource)
{
    ProcessModel &model = ProcessModel::get();
    ReadOutcome outcome = readFiles(file);
    Opened opened{file, {}, {}, {}, {}, {}};
    for (const FileFailure &failure : outcome.failures)
        opened.remarks.push_back(failure.failure.message());
    const auto savedBefore = model.savedInStep();
    changed(
        *Space::instance(),
        [&](Space &) {
            for (ReadFile &read : outcome.files)
                addAll(read.file, read.contents, opened, isSource);
        },
        Publisher::Add);
    model.keepSavedInStep(savedBefore);
    if (!isSource)
        return opened;
    for (const AlignmentReference &alignment : opened.alignments)
        model.markSaved(*alignment, true);
    for (const StructureReference &structure : opened.structures)
        model.markSaved(*structure, true);
    return opened;
}

WriteOptions optionsOf(const fs::path &file, const std::optional<std::string> &format)
{
    const std::optional<WriteOptions> options =
        format ? writeOptionsNamed(*format) : writeOptionsFor(file);
    if (options)
        return *options;
    std::string known;
    for (const std::string_view name : writeFormatNames())
        known += (known.empty() ? "" : " ") + std::string(name);
    throw py::value_error(format ? "there is no format " + *format + "; there are " + known
                                 : "the name " + file.string() +
                                       " does not tell the format; say one of " + known);
}

// What is written has been copied, so other threads may run.
template <typename Source>
std::vector<std::string> writeCopy(const Source &source, const fs::path &file,
                                   const WriteOptions &options)
{
    Result<void> written;
    std::vector<std::string> told;
    {
        const py::gil_scoped_release others;
        WriteAids aids;
        aids.step = [](WriteStage, double) {
            const py::gil_scoped_acquire lock;
            return PyErr_CheckSignals() == 0;
        };
        written = writeFile(file, source, options, &aids);
        told = aids.remarks;
    }
    if (!written)
        throw FileError{written.error()};
    for (const std::string &loss : lossesOf(source, options))
        told.push_back(loss);
    return told;
}

void checkKind(const WriteOptions &options, bool isStructure)
{
    if (isStructureFormat(options.format) != isStructure)
        throw py::value_error(isStructure
                                  ? "the format is one of alignments, and this is a structure"
                                  : "the format is one of structures, and this is an alignment");
}

std::vector<std::string> saveAlignment(const AlignmentReference &alignment, const fs::path &file,
                                       const std::optional<std::string> &format)
{
    const WriteOptions options = optionsOf(file, format);
    checkKind(options, false);
    std::vector<std::string> losses = writeCopy(makeSnapshot(*alignment), file, options);
    ProcessModel::get().markSaved(*alignment, losses.empty());
    return losses;
}

std::vector<std::string> saveStructure(const StructureReference &structure, const fs::path &file,
                                       const std::optional<std::string> &format)
{
    const WriteOptions options = optionsOf(file, format);
    checkKind(options, true);
    std::vector<std::string> losses = writeCopy(makeRecord(*structure), file, options);
    ProcessModel::get().markSaved(*structure, losses.empty());
    return losses;
}

template <typename T> T onlyOne(const std::vector<T> &all, const fs::path &file, const char *what)
{
    if (all.size() != 1)
        throw py::value_error(file.string() + " holds " + std::to_string(all.size()) + ' ' + what +
                              "s, and not one");
    return all.front();
}

std::string shownOpened(const Opened &opened)
{
    return "<tambo.Opened " + std::string(py::repr(py::str(opened.file.filename().string()))) +
           ", " + std::to_string(opened.alignments.size()) + " alignments, " +
           std::to_string(opened.structures.size()) + " structures, " +
           std::to_string(opened.sequences.size()) + " sequences>";
}

} // namespace

void declareFiles(py::module_ &module)
{
    py::class_<Opened>(module, "Opened", "What a file has brought.")
        .def_readonly("file", &Opened::file, "Its path, as it was asked for.")
        .def_readonly("alignments", &Opened::alignments, "Those that it has brought, in order.")
        .def_readonly("structures", &Opened::structures,
                      "Those that it has brought, and those beside it that its rows name.")
        .def_readonly("sequences", &Opened::sequences,
                      "Those of a file whose rows are not aligned.")
        .def_readonly("remarks", &Opened::remarks,
                      "What the workbench's log says of the file, a sentence each: what its reader "
                      "has left out or taken otherwise, which structures beside it cannot be read, "
                      "and which were not found.")
        .def_readonly("missing_structures", &Opened::missing,
                      "Structures that rows name, as the file writes them, and that neither are "
                      "loaded nor stand beside it; their rows have no coordinates.")
        .def_property_readonly(
            "alignment",
            [](const Opened &opened) {
                return onlyOne(opened.alignments, opened.file, "alignment");
            },
            "The one alignment of the file; a ValueError when it has another number of them.")
        .def_property_readonly(
            "structure",
            [](const Opened &opened) {
                return onlyOne(opened.structures, opened.file, "structure");
            },
            "The one structure that has come; a ValueError when it is another number of them.")
        .def("__repr__", &shownOpened);
    module.def(
        "open_copy", [](const fs::path &file) { return openFile(file, false); }, py::arg("path"),
        "As open(), of a file that will be gone.");
    module.def(
        "open", [](const fs::path &file) { return openFile(file, true); }, py::arg("path"),
        "Loads a file of alignments, sequences or structures, with the structures beside it "
        "that its rows "
        "name, as one step of undo. The format is recognised by the content, also of a gzip file. "
        "Raises FileNotFoundError, FormatError with file and line when the file cannot be "
        "understood, and OSError when it cannot be read; nothing is loaded then.");
    module.def(
        "write_copy",
        [](const StructureReference &structure, const fs::path &file) {
            return writeCopy(makeRecord(*structure), file, optionsOf(file, std::nullopt));
        },
        py::arg("structure"), py::arg("path"), "As save(), which nobody takes for saving.");
    module.def("_check_format",
               [](const fs::path &file, const std::optional<std::string> &format,
                  bool isStructure) { checkKind(optionsOf(file, format), isStructure); });
    module.def(
        "save",
        [](const py::object &object, const fs::path &file,
           const std::optional<std::string> &format) {
            if (py::isinstance<AlignmentReference>(object))
                return saveAlignment(object.cast<AlignmentReference>(), file, format);
            if (py::isinstance<StructureReference>(object))
                return saveStructure(object.cast<StructureReference>(), file, format);
            throw py::type_error("what is saved is an Alignment or a Structure");
        },
        py::arg("object"), py::arg("path"), py::arg("format") = py::none(),
        "Writes an Alignment or a Structure, and tells what the file has lost, one sentence each. "
        "Without a format, as 'pir' or 'pdb', the ending of the file's name says which. Raises "
        "ValueError when that is none of the object's, and OSError when the file cannot be "
        "written; "
        "what was there stays then.");
}

} // namespace TAMBO::script
