// SPDX-License-Identifier: GPL-3.0-or-later
#include "SiblingStructures.h"

#include <array>
#include <optional>
#include <set>

namespace TAMBO::app {

namespace {

namespace fs = std::filesystem;

constexpr std::array<const char *, 8> kEndings = {"",     ".gz",     ".pdb", ".pdb.gz",
                                                  ".ent", ".ent.gz", ".cif", ".cif.gz"};

std::optional<fs::path> findBeside(const fs::path &alignmentFile, const std::string &name)
{
    // Only the last part counts: a file that travelled still names the directories it came from.
    const fs::path fileName = fs::path(name).filename();
    if (fileName.empty() || fileName == "." || fileName == "..")
        return std::nullopt;
    for (const char *ending : kEndings) {
        fs::path candidate = alignmentFile.parent_path() / fileName;
        candidate += ending;
        std::error_code error;
        if (fs::is_regular_file(candidate, error) &&
            !fs::equivalent(candidate, alignmentFile, error))
            return candidate;
    }
    return std::nullopt;
}

} // namespace

std::vector<fs::path> siblingStructures(const fs::path &alignmentFile,
                                        const std::vector<AlignmentRecord> &alignments)
{
    std::vector<fs::path> found;
    std::set<std::string> asked;
    std::set<fs::path> taken;
    for (const AlignmentRecord &alignment : alignments) {
        for (const RowRecord &row : alignment.rows) {
            const std::string &name = row.link->structure;
            if (name.empty() || !asked.insert(name).second)
                continue;
            const std::optional<fs::path> file = findBeside(alignmentFile, name);
            if (file && taken.insert(*file).second)
                found.push_back(*file);
        }
    }
    return found;
}

std::string structureName(const fs::path &file)
{
    fs::path name = file.filename();
    if (name.extension() == ".gz")
        name.replace_extension();
    return name.stem().string();
}

} // namespace TAMBO::app
