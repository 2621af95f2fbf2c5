// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileEndings.h"

#include <algorithm>

namespace TAMBO {

namespace {

struct Entry
{
    std::string_view format;
    bool isStructure;
    std::vector<std::string_view> endings;
};

const std::vector<Entry> &entries()
{
    static const std::vector<Entry> all = {
        {"pir", false, {".ali", ".pir"}},
        {"fasta", false, {".fasta", ".fa", ".fas", ".afa", ".mfa", ".faa"}},
        {"a2m", false, {".a2m"}},
        {"a3m", false, {".a3m"}},
        {"clustal", false, {".aln", ".clustal", ".clw"}},
        {"stockholm", false, {".sto", ".stk", ".stockholm", ".pfam"}},
        {"msf", false, {".msf"}},
        {"phylip", false, {".phy", ".phylip"}},
        {"pdb", true, {".pdb", ".ent"}},
        {"mmcif", true, {".cif", ".mmcif"}},
    };
    return all;
}

std::vector<std::string_view> endingsOfKind(bool areStructures)
{
    std::vector<std::string_view> all;
    for (const Entry &entry : entries()) {
        if (entry.isStructure == areStructures)
            all.insert(all.end(), entry.endings.begin(), entry.endings.end());
    }
    return all;
}

} // namespace

const std::vector<std::string_view> &endingsOf(std::string_view format)
{
    static const std::vector<std::string_view> none;
    const auto entry = std::ranges::find(entries(), format, &Entry::format);
    return entry == entries().end() ? none : entry->endings;
}

std::vector<std::string_view> structureEndings()
{
    return endingsOfKind(true);
}

std::vector<std::string_view> alignmentEndings()
{
    return endingsOfKind(false);
}

} // namespace TAMBO
