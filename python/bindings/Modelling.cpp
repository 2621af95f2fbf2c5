// SPDX-License-Identifier: GPL-3.0-or-later
// What a modelling engine is given, and what it has built as a structure of its row; the program
// itself is run by Python.
#include "Alignment.h"
#include "AlignmentTable.h"
#include "BuiltModel.h"
#include "Changes.h"
#include "Declarations.h"
#include "FileWriter.h"
#include "FormatText.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "Rows.h"
#include "RowsForModels.h"
#include "Structure.h"
#include "TemplateRecord.h"

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <array>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO::script {

namespace {

namespace fs = std::filesystem;

RowRecord recordOf(const std::string &name, const std::string &text)
{
    RowRecord record;
    record.name = name;
    record.sequence.append(text);
    return record;
}

void writeOrThrow(const Result<void> &written)
{
    if (!written)
        throw FileError{written.error()};
}

class Modelling
{
public:
    Modelling(const RowReference &target, const RowReference &known)
    {
        const Alignment &alignment = *target.alignment();
        if (!(known.alignment() == target.alignment()))
            throw py::value_error("target and template are rows of two alignments");
        if (target == known)
            throw py::value_error("a row is no template of itself");
        if (ObjectSpace::get().IsLocked())
            throw RefusedError(ObjectSpace::get().Name() + " is locked");
        Result<StructureRecord> record = templateRecord(alignment, known.index());
        if (!record)
            throw RefusedError(record.error().message());
        m_Template = std::move(record).value();
        const AlignmentTable &table = alignment.table();
        m_Job.templateRow =
            recordOf(table.row(known.index()).name(), known.text(0, alignment.width()));
        m_Job.target =
            recordOf(table.row(target.index()).name(), target.text(0, alignment.width()));
        FileContents contents;
        contents.structures.push_back(m_Template);
        setTemplate(m_Job, contents);
    }

    // As the engine's adapter takes them. The columns are those of the alignment, of which its
    // messages tell.
    void write(const fs::path &rows, const fs::path &structure) const
    {
        AlignmentRecord pair;
        pair.name = "pair";
        for (const RowRecord *const row : {&m_Job.templateRow, &m_Job.target})
            pair.rows.push_back(recordOf(formats::cleanText(row->name), row->sequence.text()));
        WriteOptions options;
        options.format = FileFormat::Pir;
        writeOrThrow(writeFile(rows, std::array{std::move(pair)}, options));
        options.format = FileFormat::Pdb;
        writeOrThrow(writeFile(structure, m_Template, options));
    }

    // The model, with what there is to say of it.
    [[nodiscard]] std::pair<StructureReference, std::vector<std::string>> read(const fs::path &file)
    {
        Result<FileContents> contents = readFile(file);
        if (!contents)
            throw FileError{contents.error()};
        if (contents->structures.empty())
            throw FileError{
                {FailureKind::BadInput, "there is no structure in it", {file.filename().string()}}};
        std::vector<std::string> remarks;
        Structure *made = nullptr;
        changed(
            *Space::instance(),
            [&](Space &) {
                BuiltModel model(file, m_Job);
                RowsForModels rows(model.rows());
                model.prepare(contents.value(), rows, BuiltModel::Place::OfTheJob);
                StructureRecord &record = contents->structures.front();
                remarks = record.remarks;
                made = ObjectFactory::adopt(std::move(record));
                if (made != nullptr)
                    model.tie(*made);
                // Rows that are locked stay as they are, which is in the log.
                ProcessModel::get().clearRefusal();
            },
            Publisher::Add);
        if (made == nullptr)
            throw RefusedError("the model was not loaded");
        return {StructureReference(*made), std::move(remarks)};
    }

private:
    ModelJob m_Job;
    StructureRecord m_Template;
};

} // namespace

void declareModelling(py::module_ &module)
{
    py::class_<Modelling>(module, "_Modelling")
        .def(py::init<const RowReference &, const RowReference &>())
        .def("write", &Modelling::write)
        .def("read", &Modelling::read);
}

} // namespace TAMBO::script
