// SPDX-License-Identifier: GPL-3.0-or-later
// Structures that lie elsewhere because another alignment keeps them superposed, too: what was
// edited last has them.
#pragma once

#include "FitsFound.h"

#include <QString>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace companion {

class Disputes
{
public:
    // Looks at other alignments only when a structure lies elsewhere.
    Disputes(const TAMBO::Alignment &alignment, const FitsFound &found);

    // Whether nothing has come since that would make it say something else.
    [[nodiscard]] bool isUpToDate() const;
    [[nodiscard]] bool isDisputed(const TAMBO::StructureFit &fit) const;
    // Of some that are disputed.
    [[nodiscard]] QString text(const std::vector<TAMBO::StructureFit> &fits) const;

private:
    // Other alignments that are kept superposed, as they are.
    struct Keeper
    {
        TAMBO::Alignment *alignment;
        std::uint64_t layout;
        std::string name;

        friend bool operator==(const Keeper &, const Keeper &) = default;
    };
    using Keepers = std::vector<Keeper>;

    [[nodiscard]] static Keepers keepersBeside(const TAMBO::Alignment &alignment);
    [[nodiscard]] TAMBO::Compound *disputedBy(const TAMBO::StructureFit &fit) const;

    const TAMBO::Alignment *m_Alignment;
    // The first one is that which stays.
    std::vector<TAMBO::StructureRow> m_Rows;
    bool m_IsAnyElsewhere;
    Keepers m_Keepers;
    // Of a structure the name of the first that keeps it.
    std::map<const TAMBO::Compound *, std::string> m_KeeperOf;
};

} // namespace companion
