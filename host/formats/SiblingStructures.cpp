// SPDX-License-Identifier: GPL-3.0-or-later
#include "SiblingStructures.h"

#include "FormatTable.h"
#include "RowPacking.h"
#include "StructureCode.h"
#include "Text.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace TAMBO {

namespace {

namespace fs = std::filesystem;

// A file's name as it is, then with each ending, each of them also compressed.
std::vector<std::string> possibleEndings()
{
    std::vector<std::string> all;
    std::vector<std::string_view> endings = endingsOf(FormatKind::Structures);
    endings.insert(endings.begin(), std::string_view());
    for (const std::string_view ending : endings) {
        all.emplace_back(ending);
        all.push_back(std::string(ending).append(kCompressedEnding));
    }
    return all;
}

class Siblings
{
public:
    explicit Siblings(const fs::path &alignmentFile) : m_AlignmentFile(alignmentFile) { }

    [[nodiscard]] std::optional<fs::path> find(const std::string &name);

private:
    // What the name stands for, not only the part before the chain.
    [[nodiscard]] std::optional<fs::path> findWhole(const std::string &name);
    [[nodiscard]] std::optional<fs::path> findAsWritten(const std::string &name) const;
    // However the file's name is written.
    [[nodiscard]] std::optional<fs::path> findByCode(const std::string &name);
    [[nodiscard]] bool isSibling(const fs::path &file) const;
    void listDirectory();

    const fs::path &m_AlignmentFile;
    const std::vector<std::string> m_Endings = possibleEndings();
    // Of each code the names of the files.
    std::optional<std::map<std::string, std::set<fs::path>>> m_Files;
};

std::optional<fs::path> Siblings::find(const std::string &name)
{
    const std::string fileName(withoutDirectories(name));
    if (fileName.empty() || fileName == "." || fileName == "..")
        return std::nullopt;
    std::optional<fs::path> file = findWhole(fileName);
    if (file)
        return file;
    const std::optional<ChainName> chain = chainNameOf(fileName);
    return chain ? findWhole(chain->structure) : std::nullopt;
}

std::optional<fs::path> Siblings::findWhole(const std::string &name)
{
    std::optional<fs::path> file = findAsWritten(name);
    return file ? file : findByCode(name);
}

std::optional<fs::path> Siblings::findAsWritten(const std::string &name) const
{
    for (const std::string &ending : m_Endings) {
        fs::path candidate = m_AlignmentFile.parent_path() / name;
        candidate += ending;
        if (isSibling(candidate))
            return candidate;
    }
    return std::nullopt;
}

std::optional<fs::path> Siblings::findByCode(const std::string &name)
{
    if (!m_Files)
        listDirectory();
    const auto files = m_Files->find(structureCode(name));
    if (files == m_Files->end())
        return std::nullopt;
    const auto found = std::ranges::find_if(files->second, [this](const fs::path &fileName) {
        return isSibling(m_AlignmentFile.parent_path() / fileName);
    });
    return found == files->second.end() ? std::nullopt
                                        : std::optional(m_AlignmentFile.parent_path() / *found);
}

bool Siblings::isSibling(const fs::path &file) const
{
    std::error_code error;
    return fs::is_regular_file(file, error) && !fs::equivalent(file, m_AlignmentFile, error);
}

void Siblings::listDirectory()
{
    m_Files.emplace();
    const fs::path directory =
        m_AlignmentFile.has_parent_path() ? m_AlignmentFile.parent_path() : fs::path(".");
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
        fs::path fileName = entry->path().filename();
        std::string code = structureCode(fileName.string());
        (*m_Files)[std::move(code)].insert(std::move(fileName));
    }
}

} // namespace

std::vector<fs::path> siblingStructures(const fs::path &alignmentFile,
                                        const std::vector<AlignmentRecord> &alignments)
{
    Siblings siblings(alignmentFile);
    std::vector<fs::path> found;
    std::set<std::string> asked;
    std::set<fs::path> taken;
    for (const AlignmentRecord &alignment : alignments) {
        forEachNamedStructure(alignment, [&](const std::string &name) {
            if (!asked.insert(name).second)
                return;
            const std::optional<fs::path> file = siblings.find(name);
            if (file && taken.insert(*file).second)
                found.push_back(*file);
        });
    }
    return found;
}

std::string structureName(const fs::path &file)
{
    fs::path name = file.filename();
    if (name.extension() == kCompressedEnding)
        name.replace_extension();
    return name.stem().string();
}

} // namespace TAMBO
