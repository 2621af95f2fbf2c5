// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModellingInput.h"

#include "AminoAcids.h"
#include "FileReader.h"
#include "SequenceMatch.h"
#include "Text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace kestram {

namespace {

using TAMBO::Failure;
using TAMBO::FailureKind;
using TAMBO::ResidueRecord;
using TAMBO::Result;
using TAMBO::upperCase;

bool hasBackbone(const ResidueRecord &residue)
{
    constexpr std::array<std::string_view, 3> kBackbone = {"N", "CA", "C"};
    return std::ranges::all_of(kBackbone, [&residue](std::string_view name) {
        return std::ranges::find(residue.atoms, name, &TAMBO::AtomRecord::name) !=
               residue.atoms.end();
    });
}

// By its name: files that name no elements have D taken for an unknown one, and DG for a metal. No
// other atom of an amino acid begins like that.
bool isHydrogen(const TAMBO::AtomRecord &atom)
{
    const std::size_t letter = atom.name.find_first_not_of("0123456789");
    return letter != std::string::npos && (atom.name[letter] == 'H' || atom.name[letter] == 'D');
}

std::string shown(const ResidueRecord &residue)
{
    return residue.typeName + ' ' + residue.number.getValue();
}

std::vector<ResidueRecord> firstChain(TAMBO::StructureRecord &structure)
{
    for (TAMBO::ChainRecord &chain : structure.chains) {
        std::erase_if(chain.residues, [](const ResidueRecord &r) { return !r.isAminoAcid; });
        if (!chain.residues.empty())
            return std::move(chain.residues);
    }
    return {};
}

// Ties the letters of the template's row to the residues of the structure.
class TemplateMatch
{
public:
    TemplateMatch(ModellingInput &input, std::vector<ResidueRecord> residues, std::string file)
        : m_Input(input), m_Residues(std::move(residues)), m_File(std::move(file))
    {
        for (std::size_t col = 0; col < input.templateRow.size(); ++col) {
            if (input.templateRow[col] == '-')
                continue;
            m_Letters += input.templateRow[col];
            m_Columns.push_back(col);
        }
    }

    Result<void> run();

private:
    [[nodiscard]] std::string place(std::size_t letter) const
    {
        return "row \"" + m_Input.templateName + "\", column " +
               std::to_string(m_Columns[letter] + 1);
    }
    void take(std::size_t letter, ResidueRecord &residue);
    void remarkOnMissing() const;

    ModellingInput &m_Input;
    std::vector<ResidueRecord> m_Residues;
    std::string m_File;
    std::string m_Letters;
    // The column of each letter.
    std::vector<std::size_t> m_Columns;
    std::vector<bool> m_IsTaken;
};

Result<void> TemplateMatch::run()
{
    std::string found;
    for (const ResidueRecord &residue : m_Residues)
        found += TAMBO::capitalLetter(residue.letter);
    m_IsTaken.assign(m_Letters.size(), false);
    std::size_t next = 0;
    std::size_t nextLetter = 0;
    const auto strange = [&](std::size_t residue, std::size_t letter) {
        const std::string where = letter < m_Letters.size()
                                      ? place(letter) + ": '" + m_Letters[letter] + "'"
                                      : "row \"" + m_Input.templateName + "\": its end";
        return Failure{FailureKind::BadInput, where + " stands where " + m_File + " has " +
                                                  shown(m_Residues[residue]) + " ('" +
                                                  found[residue] + "')"};
    };
    for (const TAMBO::MatchRun &run : TAMBO::matchSequences(m_Letters, found, {}).runs) {
        if (run.second != next)
            return strange(next, nextLetter);
        for (std::size_t i = 0; i < run.count; ++i) {
            const char letter = m_Letters[run.first + i];
            const char other = found[run.second + i];
            if (letter != other && letter != 'X' && other != 'X')
                return strange(run.second + i, run.first + i);
            take(run.first + i, m_Residues[run.second + i]);
        }
        next = run.second + run.count;
        nextLetter = run.first + run.count;
    }
    if (next < m_Residues.size())
        return strange(next, nextLetter);
    remarkOnMissing();
    if (m_Input.residues.empty())
        return Failure{
            FailureKind::BadInput, "no residue of it has a whole backbone (N, CA, C)", {m_File}};
    return {};
}

void TemplateMatch::take(std::size_t letter, ResidueRecord &residue)
{
    if (!hasBackbone(residue))
        return;
    m_IsTaken[letter] = true;
    // The engine builds its own, and does not know deuterium.
    std::erase_if(residue.atoms, isHydrogen);
    m_Input.residues.push_back(std::move(residue));
}

void TemplateMatch::remarkOnMissing() const
{
    for (std::size_t i = 0; i < m_Letters.size(); ++i) {
        if (m_IsTaken[i])
            continue;
        const std::size_t begin = i;
        while (i + 1 < m_Letters.size() && !m_IsTaken[i + 1])
            ++i;
        std::string text = place(begin);
        if (i > begin)
            text += " to " + std::to_string(m_Columns[i] + 1);
        m_Input.remarks.push_back(text + ": no backbone coordinates for " +
                                  m_Letters.substr(begin, i - begin + 1) + "; treated as missing");
        for (std::size_t letter = begin; letter <= i; ++letter)
            m_Input.templateRow[m_Columns[letter]] = '-';
    }
}

// The engine knows the twenty amino acids and no other residue.
bool isStandard(char letter)
{
    return std::string_view("ACDEFGHIKLMNPQRSTVWY").find(letter) != std::string_view::npos;
}

char standardLetter(char letter)
{
    constexpr std::array<std::string_view, 5> kNearest = {"UC", "OK", "BD", "ZE", "JL"};
    for (const std::string_view pair : kNearest) {
        if (pair[0] == letter)
            return pair[1];
    }
    return isStandard(letter) ? letter : 'A';
}

std::string placeText(const std::string &row, std::size_t col)
{
    return "row \"" + row + "\", column " + std::to_string(col + 1);
}

void standardizeTarget(ModellingInput &input)
{
    for (std::size_t col = 0; col < input.targetRow.size(); ++col) {
        char &letter = input.targetRow[col];
        if (letter == '-' || isStandard(letter))
            continue;
        const char instead = standardLetter(letter);
        input.remarks.push_back(placeText(input.targetName, col) + ": '" + letter +
                                "' is modelled as '" + instead + "'");
        letter = instead;
    }
}

// A modified residue counts as its parent, an unknown one as alanine. Of their atoms those stay
// that both have; the engine builds the side chain.
void standardizeTemplate(ModellingInput &input)
{
    constexpr std::array<std::string_view, 5> kCommon = {"N", "CA", "C", "O", "CB"};
    auto residue = input.residues.begin();
    for (std::size_t col = 0; col < input.templateRow.size(); ++col) {
        char &letter = input.templateRow[col];
        if (letter == '-')
            continue;
        ResidueRecord &here = *residue++;
        letter = standardLetter(isStandard(letter) ? letter : here.letter);
        const std::string_view name = TAMBO::aminoAcidName(letter);
        // Selenomethionine the engine knows.
        if (here.typeName == name || (here.typeName == "MSE" && name == "MET"))
            continue;
        input.remarks.push_back(placeText(input.templateName, col) + ": " + shown(here) +
                                " is used as " + std::string(name));
        here.typeName = name;
        std::erase_if(here.atoms, [&](const TAMBO::AtomRecord &atom) {
            return std::ranges::find(kCommon, atom.name) == kCommon.end();
        });
    }
}

// An engine has no use for columns without a residue.
void dropEmptyColumns(ModellingInput &input)
{
    std::string templateRow;
    std::string targetRow;
    for (std::size_t col = 0; col < input.templateRow.size(); ++col) {
        if (input.templateRow[col] == '-' && input.targetRow[col] == '-')
            continue;
        templateRow += input.templateRow[col];
        targetRow += input.targetRow[col];
    }
    input.templateRow = templateRow;
    input.targetRow = targetRow;
}

bool haveCommonColumn(const ModellingInput &input)
{
    for (std::size_t col = 0; col < input.templateRow.size(); ++col)
        if (input.templateRow[col] != '-' && input.targetRow[col] != '-')
            return true;
    return false;
}

} // namespace

Result<ModellingInput> readInput(const std::filesystem::path &alignment,
                                 const std::filesystem::path &structure)
{
    Result<TAMBO::FileContents> rows = TAMBO::readFile(alignment);
    if (!rows)
        return rows.error();
    if (rows->alignments.empty() || rows->alignments.front().rows.size() < 2 ||
        !rows->alignments.front().isAligned)
        return Failure{FailureKind::BadInput,
                       "expected an alignment of a template and a target",
                       {alignment.filename().string()}};
    Result<TAMBO::FileContents> coordinates = TAMBO::readFile(structure);
    if (!coordinates)
        return coordinates.error();
    const std::string file = structure.filename().string();
    std::vector<ResidueRecord> residues;
    if (!coordinates->structures.empty())
        residues = firstChain(coordinates->structures.front());
    if (residues.empty())
        return Failure{FailureKind::BadInput, "holds no amino acids", {file}};

    const std::vector<TAMBO::RowRecord> &records = rows->alignments.front().rows;
    ModellingInput input;
    input.templateName = records[0].name;
    input.targetName = records[1].name;
    input.templateRow = upperCase(records[0].sequence.text());
    input.targetRow = upperCase(records[1].sequence.text());
    if (const Result<void> matched = TemplateMatch(input, std::move(residues), file).run();
        !matched)
        return matched.error();
    if (!haveCommonColumn(input))
        return Failure{FailureKind::BadInput,
                       "row \"" + input.targetName + "\" shares no column with the template"};
    standardizeTemplate(input);
    standardizeTarget(input);
    dropEmptyColumns(input);
    return input;
}

std::string fastaText(const ModellingInput &input)
{
    return ">target\n" + input.targetRow + "\n>template.A\n" + input.templateRow + '\n';
}

std::string pdbText(const ModellingInput &input)
{
    std::string text;
    int serial = 0;
    int number = 0;
    for (const ResidueRecord &residue : input.residues) {
        ++number;
        for (const TAMBO::AtomRecord &atom : residue.atoms) {
            // Of amino acids: all elements but selenium have one letter.
            const std::string element =
                atom.element.empty() ? atom.name.substr(0, 1) : upperCase(atom.element);
            const std::string name =
                atom.name.size() < 4 && element.size() < 2 ? ' ' + atom.name : atom.name;
            std::array<char, 128> line{};
            std::snprintf(line.data(), line.size(),
                          "ATOM  %5d %-4s %3s A%4d    %8.3f%8.3f%8.3f  1.00  0.00          %2s\n",
                          ++serial % 100'000, name.c_str(), residue.typeName.c_str(),
                          number % 10'000, static_cast<double>(atom.position.x()),
                          static_cast<double>(atom.position.y()),
                          static_cast<double>(atom.position.z()), element.c_str());
            text += line.data();
        }
    }
    return text + "TER\nEND\n";
}

} // namespace kestram
