// SPDX-License-Identifier: GPL-3.0-or-later
// The alignment that a command names by files, with the structures of its rows.
#pragma once

#include "FamilyOrder.h"
#include "Loader.h"
#include "ObjectSources.h"
#include "OpenedSession.h"
#include "Result.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace TAMBO {
class Alignment;
}

namespace TAMBO::app {

class OpenedFamily
{
public:
    // Further files are opened before the family's, since rows are tied to the structures that are
    // there; those beside it that its rows name come with it. Needs an application object.
    [[nodiscard]] static Result<std::unique_ptr<OpenedFamily>> open(const FamilyOrder &order);

    [[nodiscard]] const Alignment &alignment() const noexcept { return *m_Alignment; }
    [[nodiscard]] const std::filesystem::path &file() const noexcept { return m_File; }

private:
    OpenedFamily() : m_Loader(m_Sources) { }

    [[nodiscard]] Result<std::vector<Alignment *>> read(const FamilyOrder &order);
    [[nodiscard]] Result<void> choose(const std::vector<Alignment *> &alignments,
                                      const FamilyOrder &order);

    ObjectSources m_Sources;
    Loader m_Loader;
    std::unique_ptr<OpenedSession> m_Session;
    std::filesystem::path m_File;
    const Alignment *m_Alignment = nullptr;
};

} // namespace TAMBO::app
