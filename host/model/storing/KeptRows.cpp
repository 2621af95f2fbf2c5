// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptRows.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "ObjectWriter.h"

#include <algorithm>

namespace TAMBO {

namespace {

// Each row that is written has its place looked for through all of them.
constexpr std::size_t kMostMoves = 64;

} // namespace

KeptRows::KeptRows(const StoredObject &alignment)
    : m_Stored(alignment),
      m_Alignment(dynamic_cast<const Alignment &>(alignment)),
      m_RowsOfPart(m_Alignment.table().rowsOfPart())
{
    ObjectWriter out;
    m_Stored.writePart(0, out);
    m_FirstPart = out.take();
}

std::size_t KeptRows::placeAfter(const Move &move, std::size_t place) noexcept
{
    if (place == move.from)
        return move.to;
    if (move.from < place && place <= move.to)
        return place - 1;
    return move.to <= place && place < move.from ? place + 1 : place;
}

std::size_t KeptRows::placeNow(std::size_t former) const noexcept
{
    for (const Move &move : m_Moves)
        former = placeAfter(move, former);
    return former;
}

std::size_t KeptRows::placeThen(std::size_t now) const noexcept
{
    for (auto move = m_Moves.rbegin(); move != m_Moves.rend(); ++move)
        now = placeAfter({move->to, move->from}, now);
    return now;
}

void KeptRows::keep(std::size_t row)
{
    std::string &bytes = m_Rows[placeThen(row)];
    if (!bytes.empty())
        return;
    ObjectWriter out;
    m_Alignment.table().row(row).write(out);
    bytes = out.take();
}

bool KeptRows::move(std::size_t from, std::size_t to)
{
    if (m_Moves.size() == kMostMoves)
        return false;
    m_Moves.push_back({from, to});
    return true;
}

std::size_t KeptRows::partCount() const noexcept
{
    return 1 + (m_Alignment.table().rowCount() + m_RowsOfPart - 1) / m_RowsOfPart;
}

void KeptRows::writePart(std::size_t part, ObjectWriter &out) const
{
    if (part == 0)
        return out.raw(m_FirstPart);
    const AlignmentTable &table = m_Alignment.table();
    const std::size_t begin = (part - 1) * m_RowsOfPart;
    const std::size_t end = std::min(begin + m_RowsOfPart, table.rowCount());
    AlignmentTable::beginRows(m_Stored, begin, end, out);
    for (std::size_t i = begin; i < end; ++i) {
        if (const auto kept = m_Rows.find(i); kept != m_Rows.end())
            out.raw(kept->second);
        else
            table.row(placeNow(i)).write(out);
    }
}

} // namespace TAMBO
