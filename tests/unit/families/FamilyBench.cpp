// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyBench.h"

#include "AminoAcids.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;
using namespace TAMBO;
using namespace TAMBO::families;

FamilyBench::FamilyBench()
{
    std::string name = (fs::temp_directory_path() / "families-XXXXXX").string();
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    m_Path = name;
    settings.kestram = "/programs/kestram";
    settings.tambo = "/programs/tambo";
}

FamilyBench::~FamilyBench()
{
    std::error_code ignored;
    fs::permissions(m_Path, fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(m_Path, ignored);
}

Family FamilyBench::smallFamily()
{
    return {"globins",
            "globins.ali",
            {{"t1", "ACDEFGHIKL", true},
             {"a", "ACDEF-HIKM", false},
             {"t2", "WWDEFGHIKM", true},
             {"b", "WWDEF-HIKM", false},
             {"c", "--AAAAAA--", false}}};
}

StructureRecord FamilyBench::structureOf(const FamilyRow &row)
{
    StructureRecord structure;
    structure.name = row.name;
    ChainRecord &chain = structure.chains.emplace_back();
    chain.name = "A";
    int number = 0;
    for (const char letter : row.text) {
        if (letter == '-')
            continue;
        ResidueRecord &residue = chain.residues.emplace_back();
        residue.typeName = aminoAcidName(letter);
        residue.letter = letter;
        residue.number = SequenceNumber(++number);
        float shift = 0;
        for (const char *atom : {"N", "CA", "C"}) {
            residue.atoms.push_back(
                {atom, std::string(atom, 1), Vertex(float(number) * 3.5F + shift, 1, -2)});
            shift += 1.25F;
        }
    }
    return structure;
}

TemplateSource FamilyBench::templatesOf(const Family &family)
{
    return [&family](std::size_t row) -> Result<StructureRecord> {
        return structureOf(family.rows[row]);
    };
}

Result<PreparedFamily> FamilyBench::prepare(const Family &family, const ModelsOrder &order) const
{
    const auto plan = planModels(family, order);
    if (!plan)
        return plan.error();
    return prepareFamily(family, plan.value(), templatesOf(family), this->family(), settings);
}

void FamilyBench::write(const std::string &name, const std::string &text) const
{
    fs::create_directories((m_Path / name).parent_path());
    std::ofstream(m_Path / name, std::ios::binary) << text;
}

std::string FamilyBench::read(const std::string &name) const
{
    std::ifstream stream(m_Path / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool FamilyBench::isThere(const std::string &name) const
{
    return fs::exists(m_Path / name);
}
