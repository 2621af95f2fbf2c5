// SPDX-License-Identifier: GPL-3.0-or-later
#include "MmcifReader.h"

#include "FormatText.h"
#include "StructureConversion.h"

#include <gemmi/cif.hpp>
#include <gemmi/mmcif.hpp>

#include <algorithm>
#include <exception>
#include <optional>

namespace TAMBO::formats {

namespace {

namespace cif = gemmi::cif;

// What stands at a place of the text, both counted from 1.
std::string_view textAt(std::string_view text, std::size_t line, std::size_t column)
{
    for (; line > 1; --line)
        text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
    text = text.substr(0, text.find('\n'));
    return text.substr(std::min(column - 1, text.size()));
}

// Messages of the library begin with the file's name and mostly the line.
Failure failureFrom(const std::exception &error, const std::string &file, std::string_view text)
{
    if (const auto *syntax = dynamic_cast<const tao::pegtl::parse_error *>(&error);
        syntax != nullptr && !syntax->positions().empty()) {
        const tao::pegtl::position &place = syntax->positions().front();
        const std::string cause = cleanText(syntax->message());
        if (cause != "parse error" && !cause.starts_with("expected"))
            return failureAt(file, place.line, cause);
        return failureAt(file, place.line,
                         "expected a data name, \"loop_\" or \"data_\", found " +
                             shown(textAt(text, place.line, place.column)));
    }
    const std::string cause = cleanText(error.what());
    return cause.starts_with(file + ':') ? Failure{cause} : failureOf(file, cause);
}

const cif::Block *blockWithAtoms(const cif::Document &document)
{
    const auto block =
        std::find_if(document.blocks.begin(), document.blocks.end(),
                     [](const cif::Block &block) { return block.has_tag("_atom_site.Cartn_x"); });
    return block == document.blocks.end() ? nullptr : &*block;
}

SequenceNumber residueNumber(const cif::Table::Row &row, std::size_t number, std::size_t code)
{
    std::string text = row.str(static_cast<int>(number));
    if (row.has2(code))
        text += row.str(static_cast<int>(code));
    return SequenceNumber(text);
}

void readElements(cif::Block &block, std::vector<ElementRecord> &elements)
{
    for (const auto &row :
         block.find("_struct_conf.", {"conf_type_id", "id", "beg_auth_asym_id", "beg_auth_seq_id",
                                      "?pdbx_beg_PDB_ins_code", "end_auth_asym_id",
                                      "end_auth_seq_id", "?pdbx_end_PDB_ins_code"})) {
        const std::string type = row.str(0);
        const bool isHelix = type.starts_with("HELX");
        if ((isHelix || type.starts_with("STRN")) && row.str(2) == row.str(5))
            addElement(elements, ElementRecord{cleanText(row.str(1)), isHelix ? 'H' : 'E',
                                               cleanText(row.str(2)), residueNumber(row, 3, 4),
                                               residueNumber(row, 6, 7)});
    }
    for (const auto &row : block.find("_struct_sheet_range.",
                                      {"sheet_id", "id", "beg_auth_asym_id", "beg_auth_seq_id",
                                       "?pdbx_beg_PDB_ins_code", "end_auth_asym_id",
                                       "end_auth_seq_id", "?pdbx_end_PDB_ins_code"})) {
        if (row.str(2) == row.str(5))
            addElement(elements, ElementRecord{cleanText(row.str(0) + '-' + row.str(1)), 'E',
                                               cleanText(row.str(2)), residueNumber(row, 3, 4),
                                               residueNumber(row, 6, 7)});
    }
}

Result<FileContents> convert(const std::string &text, const std::string &file)
{
    cif::Document document = cif::read_memory(text.data(), text.size(), file.c_str());
    const cif::Block *block = blockWithAtoms(document);
    if (block == nullptr)
        return failureOf(file, "is a CIF file without atom positions (_atom_site.Cartn_x)");
    gemmi::Structure parsed = gemmi::make_structure_from_block(*block);
    if (parsed.models.empty() || parsed.models.front().chains.empty())
        return failureOf(file, "has an incomplete _atom_site table; expected id, type_symbol, "
                               "label_alt_id, label_asym_id, Cartn_x, Cartn_y, Cartn_z, occupancy, "
                               "B_iso_or_equiv and auth_seq_id");
    StructureRecord structure;
    structure.name = baseName(file);
    structure.models = parsed.models.size();
    readElements(const_cast<cif::Block &>(*block), structure.elements);
    if (structure.models > 1)
        structure.remarks.push_back(file + ": the first of " + std::to_string(structure.models) +
                                    " models was read");
    convertModel(parsed.models.front(), file, structure);
    FileContents contents;
    contents.format = "mmcif";
    contents.structures.push_back(std::move(structure));
    return contents;
}

} // namespace

Result<FileContents> readMmcif(TextReader &reader)
{
    const std::string text = reader.restOfText();
    if (reader.failure())
        return *reader.failure();
    try {
        return convert(text, reader.fileName());
    } catch (const std::exception &error) {
        return failureFrom(error, reader.fileName(), text);
    }
}

} // namespace TAMBO::formats
