// SPDX-License-Identifier: GPL-3.0-or-later
// Several structures as plain values, ready to be written together.
#pragma once

#include "Records.h"
#include "Result.h"
#include "WriteOptions.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace TAMBO {
class Structure;
struct WriteAids;
} // namespace TAMBO

namespace TAMBO::app {

class MergedFiles
{
public:
    enum class Kind { Models, Chains, Files };

    // Where their atoms are now.
    explicit MergedFiles(const std::vector<const Structure *> &structures);

    [[nodiscard]] std::size_t count() const noexcept { return m_Records->size(); }
    // Whether all of them can be written so; the failure names the one that cannot.
    [[nodiscard]] Result<void> check(const WriteOptions &options) const;
    // What is lost, and which chains get other names: a sentence each.
    [[nodiscard]] QStringList notes(Kind kind, const WriteOptions &options) const;
    // Of these, what is lost of the one structure that is part of it as it is loaded.
    [[nodiscard]] QStringList ownLosses(Kind kind, std::size_t structure,
                                        const WriteOptions &options) const;
    // For a file of each, without endings, each another one.
    [[nodiscard]] QStringList names() const;
    // Of Files the one structure. From any thread, as long as a copy of this is there.
    [[nodiscard]] Result<void> write(const QString &path, Kind kind, std::size_t structure,
                                     const WriteOptions &options, WriteAids &aids) const;

private:
    // Nobody changes them any more.
    std::shared_ptr<const std::vector<StructureRecord>> m_Records;
};

} // namespace TAMBO::app
