// SPDX-License-Identifier: GPL-3.0-or-later
// What is sent to an aligner, and its answer as new columns; the program itself is run by Python.
#include "RealignedRows.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "Changes.h"
#include "Declarations.h"
#include "Places.h"
#include "TableChanges.h"

#include <utility>

namespace TAMBO::script {

namespace {

class Realigning
{
public:
    Realigning(const AlignmentReference &reference, const py::object &columns,
               const py::object &rows)
        : m_Alignment(reference),
          m_Range(rangeOf(columns, (*reference).width(), "column")),
          m_Revision((*reference).layoutRevision()),
          m_Rows(*reference, m_Range, chosen(*reference, rows))
    {
        if (const Alignment &alignment = *reference; alignment.IsLocked())
            throw RefusedError(alignment.Name() + " is locked");
    }

    [[nodiscard]] std::size_t count() const noexcept { return m_Rows.count(); }
    [[nodiscard]] py::bytes fasta() const { return m_Rows.fasta(); }
    [[nodiscard]] py::slice range() const { return sliceOf(m_Range); }

    // What is wrong with the answer, or nothing.
    std::string take(const std::string &answer)
    {
        Alignment &alignment = *m_Alignment;
        if (alignment.layoutRevision() != m_Revision)
            throw RefusedError("the columns of " + alignment.Name() +
                               " were not realigned: it was changed meanwhile");
        const Result<realign::RealignedRows::Columns> read = m_Rows.read(answer);
        if (!read)
            return read.error().message();
        const realign::RealignedRows::Columns &columns = read.value();
        bool isDone = false;
        changed(alignment, [&](Alignment &changing) {
            isDone = replaceColumns(changing.table(), m_Range, columns.rows, columns.count);
        });
        if (!isDone)
            throw RefusedError("the columns of " + alignment.Name() + " were not realigned");
        m_Range.second = m_Range.first + columns.count;
        return {};
    }

private:
    [[nodiscard]] static std::vector<bool> chosen(const Alignment &alignment,
                                                  const py::object &rows)
    {
        return rows.is_none() ? std::vector<bool>()
                              : flagsOf(rows, alignment.table().rowCount(), "row");
    }
    [[nodiscard]] static py::slice sliceOf(const Alignment::Range &range)
    {
        return {py::ssize_t(range.first), py::ssize_t(range.second), 1};
    }

    AlignmentReference m_Alignment;
    Alignment::Range m_Range;
    unsigned long m_Revision;
    realign::RealignedRows m_Rows;
};

} // namespace

void declareRealigning(py::module_ &module)
{
    py::class_<Realigning>(module, "_Realigning")
        .def(py::init<const AlignmentReference &, const py::object &, const py::object &>())
        .def_property_readonly("count", &Realigning::count)
        .def_property_readonly("fasta", &Realigning::fasta)
        .def_property_readonly("range", &Realigning::range)
        .def("take", &Realigning::take);
}

} // namespace TAMBO::script
