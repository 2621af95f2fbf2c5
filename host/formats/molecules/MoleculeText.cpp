// SPDX-License-Identifier: GPL-3.0-or-later
#include "MoleculeText.h"

// The standard library's number formatting; the other one that the library knows is not installed
// everywhere.
#define USE_STD_SNPRINTF
#define GEMMI_WRITE_IMPLEMENTATION
#include <gemmi/polyheur.hpp>
#include <gemmi/to_cif.hpp>
#include <gemmi/to_mmcif.hpp>
#include <gemmi/to_pdb.hpp>

#include <sstream>

namespace TAMBO::formats {

std::string pdbTextOf(const gemmi::Structure &structure)
{
    std::ostringstream text;
    gemmi::write_pdb(structure, text);
    return text.str();
}

std::string cifTextOf(gemmi::Structure &structure)
{
    gemmi::setup_entities(structure);
    gemmi::MmcifOutputGroups groups(false);
    groups.atoms = true;
    groups.block_name = true;
    groups.entry = true;
    groups.entity = true;
    groups.struct_asym = true;
    groups.struct_conf = true;
    groups.struct_sheet = true;
    groups.group_pdb = true;
    std::ostringstream text;
    gemmi::cif::write_cif_to_stream(text, gemmi::make_mmcif_document(structure, groups),
                                    gemmi::cif::Style::Pdbx);
    return text.str();
}

} // namespace TAMBO::formats
