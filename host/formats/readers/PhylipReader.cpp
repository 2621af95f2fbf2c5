// SPDX-License-Identifier: GPL-3.0-or-later
#include "PhylipReader.h"

#include "FormatSigns.h"
#include "FormatText.h"
#include "PhylipLayout.h"
#include "PiecedRows.h"
#include "WorkLooks.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace TAMBO::formats {

namespace {

// Names of ten characters come first: files made so seldom fit in any other manner with the right
// names, and the others seldom fit in theirs.
constexpr std::array<PhylipManner, 4> kManners = {{
    {.hasFixedNames = true, .isInterleaved = true},
    {.hasFixedNames = true, .isInterleaved = false},
    {.hasFixedNames = false, .isInterleaved = false},
    {.hasFixedNames = false, .isInterleaved = true},
}};
// As they are called when they are written.
constexpr std::array<const char *, kManners.size()> kNamesOfManners = {
    "phylip", "phylip-sequential", "phylip-relaxed-sequential", "phylip-relaxed"};

std::vector<std::string_view> linesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// Numbers that no file can hold become one that none does.
PhylipSize sizeOf(std::string_view header) noexcept
{
    const auto nextNumber = [&header] {
        header = trimmed(header);
        std::uint64_t number = 0;
        const auto [end, error] =
            std::from_chars(header.data(), header.data() + header.size(), number);
        header.remove_prefix(static_cast<std::size_t>(end - header.data()));
        return error == std::errc() ? number : ~std::uint64_t{};
    };
    PhylipSize size;
    size.rows = nextNumber();
    size.columns = nextNumber();
    return size;
}

class PhylipParser
{
public:
    explicit PhylipParser(TextReader &reader)
        : m_Reader(reader), m_Looks(reader), m_FileName(reader.fileName())
    {
        m_Text = reader.restOfText();
        const std::size_t size = m_Text.size();
        // For the fast loops that look ahead.
        m_Text.resize(size + RowBuilder::kReadAhead);
        m_Lines = linesOf(std::string_view(m_Text).substr(0, size));
    }

    Result<FileContents> run();

private:
    void addAlignment();
    PhylipLayout bestLayout(const PhylipSize &size);
    void build(const PhylipLayout &layout);
    bool hasOwnDots(const PhylipLayout &layout);
    // Lines are counted from 0.
    void fail(std::size_t line, const std::string &cause)
    {
        if (m_Outcome)
            m_Outcome = failureAt(m_FileName, line + 1, cause);
    }
    void findLine()
    {
        while (m_Next < m_Lines.size() && trimmed(m_Lines[m_Next]).empty())
            ++m_Next;
    }

    TextReader &m_Reader;
    WorkLooks m_Looks;
    std::string m_FileName;
    std::string m_Text;
    std::vector<std::string_view> m_Lines;
    std::size_t m_Next = 0;
    FileContents m_Contents;
    Result<void> m_Outcome;
};

Result<FileContents> PhylipParser::run()
{
    for (findLine(); m_Next < m_Lines.size() && m_Outcome && m_Reader.outcome(); findLine())
        addAlignment();
    if (!m_Reader.outcome())
        return m_Reader.outcome().error();
    if (m_Outcome && m_Contents.alignments.empty())
        fail(0, "the file ends before the numbers of rows and columns");
    if (!m_Outcome)
        return m_Outcome.error();
    std::vector<AlignmentRecord> &alignments = m_Contents.alignments;
    for (std::size_t i = 0; i < alignments.size(); ++i) {
        alignments[i].name = baseName(m_FileName);
        if (alignments.size() > 1)
            alignments[i].name += '_' + std::to_string(i + 1);
    }
    m_Contents.format = formatName(FileFormat::Phylip);
    return std::move(m_Contents);
}

void PhylipParser::addAlignment()
{
    const std::size_t header = m_Next++;
    const PhylipSize size = sizeOf(m_Lines[header]);
    if (size.rows == 0 || size.columns == 0)
        return fail(header, "found " + shown(m_Lines[header]) +
                                ", expected the numbers of rows and columns");
    findLine();
    // A claim is believed only as far as there are lines for it.
    if (size.rows > m_Lines.size() - m_Next)
        return fail(m_Lines.size() - 1, "the file ends after " +
                                            counted(m_Lines.size() - m_Next, "line") +
                                            ", expected " + counted(size.rows, "row"));
    const PhylipLayout layout = bestLayout(size);
    if (!layout.fits())
        return fail(layout.causeLine, layout.cause);
    if (!hasOwnDots(layout))
        return;
    build(layout);
    m_Next = layout.end;
}

// Of the manners that fit, the first with the fewest oddities; otherwise the one that leads
// furthest, since it has most to say.
PhylipLayout PhylipParser::bestLayout(const PhylipSize &size)
{
    PhylipLayout best = layOut(m_Lines, m_Next, size, kManners.front(), m_Looks);
    m_Contents.writtenAs = kNamesOfManners.front();
    for (std::size_t i = 1; i < kManners.size(); ++i) {
        if (best.fits() && best.oddities == 0)
            break;
        PhylipLayout other = layOut(m_Lines, m_Next, size, kManners[i], m_Looks);
        const bool isBetter = other.fits() ? !best.fits() || other.oddities < best.oddities
                                           : !best.fits() && other.end > best.end;
        if (!isBetter)
            continue;
        best = std::move(other);
        m_Contents.writtenAs = kNamesOfManners[i];
    }
    return best;
}

// A dot may mean a gap or "as in the first row". Residues must not be made up nor lost, so dots are
// taken for gaps only where the first row, which can repeat no other, has some too.
bool PhylipParser::hasOwnDots(const PhylipLayout &layout)
{
    const PhylipLayout::Piece *other = nullptr;
    for (const PhylipLayout::Piece &piece : layout.pieces) {
        if (piece.text.find('.') == std::string_view::npos)
            continue;
        if (piece.row == 0)
            return true;
        if (other == nullptr)
            other = &piece;
    }
    if (other != nullptr)
        fail(other->line, "found \".\" in row " + shown(trimmed(layout.names[other->row])) +
                              ", which may mean a gap or the residue of the first row; write \"-\" "
                              "for gaps");
    return other == nullptr;
}

void PhylipParser::build(const PhylipLayout &layout)
{
    PiecedRows rows;
    for (const std::string_view name : layout.names)
        rows.add(trimmed(name));
    for (const PhylipLayout::Piece &piece : layout.pieces) {
        if (!m_Looks.goesOn(piece.text.size()))
            return;
        (void)rows.append(piece.row, piece.text, piece.line + 1);
    }
    AlignmentRecord &alignment = m_Contents.alignments.emplace_back();
    alignment.remarks = rows.remarks(m_FileName);
    alignment.packed = rows.take(m_Reader);
}

} // namespace

Result<FileContents> readPhylip(TextReader &reader)
{
    PhylipParser parser(reader);
    if (!reader.outcome())
        return reader.outcome().error();
    return parser.run();
}

} // namespace TAMBO::formats
