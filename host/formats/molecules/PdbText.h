// SPDX-License-Identifier: GPL-3.0-or-later
// Puts the text of a PDB file in order before the coordinate library reads it: real files have
// bookkeeping in the last columns, lines cut short, models without an end, and free text.
#pragma once

#include "NamedBonds.h"
#include "Records.h"
#include "Result.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TAMBO::formats {

class PdbText
{
public:
    explicit PdbText(std::string fileName) : m_FileName(std::move(fileName)) { }

    // One line after the other, without its end.
    void add(std::string_view line);
    // To be called after the last line.
    void finish();

    [[nodiscard]] const Result<void> &outcome() const noexcept { return m_Outcome; }
    // ATOM, HETATM and TER records of each model: of further ones those that can be read.
    [[nodiscard]] const std::vector<std::string> &coordinates() const noexcept
    {
        return m_Coordinates;
    }
    [[nodiscard]] unsigned long models() const noexcept { return m_Coordinates.size(); }
    [[nodiscard]] const std::vector<ElementRecord> &elements() const noexcept { return m_Elements; }
    // Of SSBOND and LINK records.
    [[nodiscard]] const std::vector<NamedBond> &bonds() const noexcept { return m_Bonds; }
    // Of CONECT records: the serial numbers of two atoms each.
    using SerialBond = std::pair<int, int>;
    [[nodiscard]] const std::vector<SerialBond> &serialBonds() const noexcept
    {
        return m_SerialBonds;
    }
    [[nodiscard]] const std::vector<std::string> &remarks() const noexcept { return m_Remarks; }

private:
    void addAtom(std::string_view line, std::string_view record);
    [[nodiscard]] bool isReadable(std::string_view line);
    void addHelix(std::string_view line);
    void addStrand(std::string_view line);
    void addDisulfide(std::string_view line);
    void addLink(std::string_view line);
    void addConnections(std::string_view line);
    static void blankSegments(std::string &coordinates);
    void fail(std::string_view found, const char *expected);

    std::string m_FileName;
    std::vector<std::string> m_Coordinates;
    std::vector<ElementRecord> m_Elements;
    std::vector<NamedBond> m_Bonds;
    std::vector<SerialBond> m_SerialBonds;
    std::vector<std::string> m_Remarks;
    Result<void> m_Outcome;
    std::uint64_t m_Line = 0;
    bool m_ModelHasAtoms = false;
    std::uint64_t m_Incomplete = 0;
    std::uint64_t m_FirstIncompleteLine = 0;
    bool m_HasBookkeeping = false;
};

} // namespace TAMBO::formats
