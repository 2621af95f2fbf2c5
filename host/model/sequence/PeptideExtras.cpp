// SPDX-License-Identifier: GPL-3.0-or-later
#include "PeptideExtras.h"

#include "NumberEdit.h"
#include "ResidueSelection.h"
#include "StructureContents.h"

namespace TAMBO {

PeptideExtras::PeptideExtras(ResidueOwner &owner) noexcept : handles(owner) { }

PeptideExtras::~PeptideExtras() = default;

std::size_t PeptideExtras::bytes() const noexcept
{
    return sizeof(*this) + handles.bytes() + colors.bytes() +
           (numbers ? sizeof(NumberSlot) - sizeof(ResidueNumbers) + numbers->numbers.bytes() : 0) +
           (selection ? selection->bytes() : 0) + (deselected ? deselected->bytes() : 0) +
           (ties ? ties->bytes() : 0) + (contents ? contents->bytes() : 0);
}

} // namespace TAMBO
