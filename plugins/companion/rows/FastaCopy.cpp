// SPDX-License-Identifier: GPL-3.0-or-later
#include "FastaCopy.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "ResidueColumns.h"
#include "RowPass.h"
#include "SelectedRows.h"
#include "Texts.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace companion {

namespace {

// As files of FASTA have them.
constexpr std::size_t kCopiedLine = 60;

struct CopiedPart
{
    std::vector<bool> rows;
    std::vector<bool> columns;
};

unsigned long countOf(const std::vector<bool> &flags)
{
    return static_cast<unsigned long>(std::ranges::count(flags, true));
}

CopiedPart partOf(const TAMBO::Alignment &alignment, const TAMBO::CellBlock &block)
{
    CopiedPart part{std::vector<bool>(alignment.height()), std::vector<bool>(alignment.width())};
    for (unsigned long row = block.rowBegin; row < block.rowEnd; ++row)
        part.rows[row] = true;
    for (unsigned long col = block.colBegin; col < block.colEnd; ++col)
        part.columns[col] = true;
    return part;
}

// A line would end at what names may have.
void appendRecord(std::string &text, std::string name, std::string_view cells)
{
    std::ranges::replace_if(
        name, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    text += '>' + name + '\n';
    for (; !cells.empty(); cells.remove_prefix(std::min(kCopiedLine, cells.size()))) {
        text += cells.substr(0, kCopiedLine);
        text += '\n';
    }
}

// Nothing when the user has cancelled it; longer than most, or cut there, when it does not fit.
std::optional<std::string> textOf(TAMBO::AlignmentWindow &window, const CopiedPart &part,
                                  std::size_t most)
{
    std::string text;
    RowPass pass(
        window, [&](const TAMBO::Alignment &) { text.clear(); },
        [&](const TAMBO::Alignment &alignment, unsigned long row) {
            if (row >= part.rows.size() || !part.rows[row])
                return true;
            const std::string cells = alignment.GetSequence(row, false);
            std::string wanted;
            for (std::size_t col = 0; col < std::min(cells.size(), part.columns.size()); ++col)
                if (part.columns[col])
                    wanted += cells[col];
            appendRecord(text, alignment.GetSeqName(row), wanted);
            return text.size() <= most;
        });
    if (!finish(pass, tr("Copying rows…"), window))
        return std::nullopt;
    return text;
}

QString copied(TAMBO::AlignmentWindow &window, const CopiedPart &part, std::size_t most)
{
    const unsigned long rows = countOf(part.rows);
    const unsigned long columns = countOf(part.columns);
    const QString tooMuch =
        tr("Nothing is copied: %L1 rows × %L2 columns are more than %L3 MB. New Alignment of Block "
           "or of Selected makes an alignment of them, which can be exported.")
            .arg(rows)
            .arg(columns)
            .arg(most >> 20);
    // By division: the product may not fit.
    if (columns > 0 && rows > most / columns)
        return tooMuch;
    const std::optional<std::string> text = textOf(window, part, most);
    if (!text)
        return tr("Nothing is copied: it was cancelled.");
    if (text->size() > most)
        return tooMuch;
    QGuiApplication::clipboard()->setText(QString::fromStdString(*text));
    return tr("Copied as FASTA: %1 × %2.")
        .arg(rows == 1 ? tr("1 row") : tr("%L1 rows").arg(rows),
             columns == 1 ? tr("1 column") : tr("%L1 columns").arg(columns));
}

} // namespace

QString copyAsFasta(TAMBO::AlignmentWindow &window, const std::optional<TAMBO::CellBlock> &block,
                    std::size_t most)
{
    if (window.alignment() == nullptr)
        return tr("No alignment is shown.");
    if (block) {
        const TAMBO::Alignment &alignment = *window.alignment();
        const TAMBO::CellBlock part =
            block->intersected({0, alignment.height(), 0, alignment.width()});
        return part.isEmpty() ? tr("Nothing is copied: there is no block.")
                              : copied(window, partOf(alignment, part), most);
    }
    const std::optional<SelectedRows> selected = selectedRows(window);
    if (!selected || window.alignment() == nullptr)
        return tr("Nothing is copied: it was cancelled.");
    if (selected->rows.empty())
        return tr("Nothing is copied: there is no block, and no row has selected residues.");
    std::vector<bool> rows(window.alignment()->height());
    for (const unsigned long row : selected->rows)
        rows[row] = true;
    const std::optional<std::vector<bool>> columns = columnsWithResidues(window, rows);
    return columns ? copied(window, {rows, *columns}, most)
                   : tr("Nothing is copied: it was cancelled.");
}

} // namespace companion
