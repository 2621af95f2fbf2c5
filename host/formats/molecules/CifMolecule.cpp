// SPDX-License-Identifier: GPL-3.0-or-later
#include "CifMolecule.h"

#include "FormatText.h"

#include <gemmi/cif.hpp>
#include <gemmi/mmcif.hpp>

#include <algorithm>
#include <exception>

namespace TAMBO::formats {

namespace {

namespace cif = gemmi::cif;

bool startsWith(const std::string &text, const std::string &start)
{
    return text.compare(0, start.size(), start) == 0;
}

// What stands at a place of the text, both counted from 1.
std::string_view textAt(std::string_view text, std::size_t line, std::size_t column)
{
    for (; line > 1 && !text.empty(); --line)
        text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
    text = text.substr(0, text.find('\n'));
    return text.substr(std::min(column - 1, text.size()));
}

// Messages of the library begin with the file's name and mostly the line.
Failure describe(const std::exception &error, const std::string &file, std::string_view text)
{
    if (const auto *syntax = dynamic_cast<const tao::pegtl::parse_error *>(&error);
        syntax != nullptr && !syntax->positions().empty()) {
        const tao::pegtl::position &place = syntax->positions().front();
        const std::string cause = cleanText(syntax->message());
        if (cause != "parse error" && !startsWith(cause, "expected"))
            return failureAt(file, place.line, cause);
        return failureAt(file, place.line,
                         "expected a data name, \"loop_\" or \"data_\", found " +
                             shown(textAt(text, place.line, place.column)));
    }
    const std::string cause = cleanText(error.what());
    if (startsWith(cause, file + ':'))
        return {FailureKind::BadInput, cause};
    return failureOf(file, cause);
}

cif::Block *blockWithAtoms(cif::Document &document)
{
    for (cif::Block &block : document.blocks)
        if (block.has_tag("_atom_site.Cartn_x"))
            return &block;
    return nullptr;
}

std::string residueNumber(const cif::Table::Row &row, int number, int code)
{
    return row.has2(static_cast<std::size_t>(code)) ? row.str(number) + row.str(code)
                                                    : row.str(number);
}

void readElements(cif::Block &block, std::vector<CifElement> &elements)
{
    for (const auto &row :
         block.find("_struct_conf.", {"conf_type_id", "id", "beg_auth_asym_id", "beg_auth_seq_id",
                                      "?pdbx_beg_PDB_ins_code", "end_auth_asym_id",
                                      "end_auth_seq_id", "?pdbx_end_PDB_ins_code"})) {
        const std::string type = row.str(0);
        const bool isHelix = startsWith(type, "HELX");
        if ((isHelix || startsWith(type, "STRN")) && row.str(2) == row.str(5))
            elements.push_back({row.str(1), isHelix ? 'H' : 'E', row.str(2),
                                residueNumber(row, 3, 4), residueNumber(row, 6, 7)});
    }
    for (const auto &row : block.find("_struct_sheet_range.",
                                      {"sheet_id", "id", "beg_auth_asym_id", "beg_auth_seq_id",
                                       "?pdbx_beg_PDB_ins_code", "end_auth_asym_id",
                                       "end_auth_seq_id", "?pdbx_end_PDB_ins_code"})) {
        if (row.str(2) == row.str(5))
            elements.push_back({row.str(0) + '-' + row.str(1), 'E', row.str(2),
                                residueNumber(row, 3, 4), residueNumber(row, 6, 7)});
    }
}

void convert(const std::string &text, const std::string &file, CifMolecule &molecule)
{
    cif::Document document = cif::read_memory(text.data(), text.size(), file.c_str());
    cif::Block *block = blockWithAtoms(document);
    if (block == nullptr) {
        molecule.outcome =
            failureOf(file, "is a CIF file without atom positions (_atom_site.Cartn_x)");
        return;
    }
    // What the library takes for "not said" could not be told from what files say.
    for (std::string &value : block->find_values("_atom_site.B_iso_or_equiv")) {
        if (cif::is_null(value))
            value = "0";
    }
    molecule.structure = gemmi::make_structure_from_block(*block);
    if (molecule.structure.models.empty() || molecule.structure.models.front().chains.empty())
        molecule.outcome =
            failureOf(file, "has an incomplete _atom_site table; expected id, type_symbol, "
                            "label_alt_id, label_asym_id, Cartn_x, Cartn_y, Cartn_z, occupancy, "
                            "B_iso_or_equiv and auth_seq_id");
    else
        readElements(*block, molecule.elements);
}

} // namespace

CifMolecule readCif(const std::string &text, const std::string &file)
{
    CifMolecule molecule;
    try {
        convert(text, file, molecule);
    } catch (const std::exception &error) {
        molecule.outcome = describe(error, file, text);
    }
    return molecule;
}

} // namespace TAMBO::formats
