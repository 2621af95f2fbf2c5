// SPDX-License-Identifier: GPL-3.0-or-later
// The residue numbers of a peptide before a step, which are few runs whatever was renumbered.
#pragma once

#include "ChangeSession.h"
#include "ResidueNumbers.h"

#include <memory>

namespace TAMBO {

class Peptide;

class NumberEdit final : public GrowingEdit
{
public:
    // Keeps the numbers as they are now.
    explicit NumberEdit(Peptide &peptide);
    ~NumberEdit() override;

    void close() noexcept override;
    std::unique_ptr<Edit> apply() override;
    // Residues that have been tied to a chain meanwhile get their numbers there.
    std::unique_ptr<Edit> repeat() override;
    std::size_t bytes() const override;
    const char *kind() const override { return "renumber"; }
    EditPart part() const override { return EditPart::Numbers; }
    Compound *subject() const override;

private:
    Peptide &m_Peptide;
    std::unique_ptr<ResidueNumbers> m_Numbers;
};

} // namespace TAMBO
