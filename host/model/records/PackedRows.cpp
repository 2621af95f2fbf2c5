// SPDX-License-Identifier: GPL-3.0-or-later
#include "PackedRows.h"

namespace TAMBO {

PackedRow &PackedRows::add(PackedRow &&row)
{
    if (m_Size % kBlock == 0) {
        // A small file has no room for thousands.
        m_Blocks.emplace_back().reserve(m_Size == 0 ? 0 : kBlock);
    }
    ++m_Size;
    return m_Blocks.back().emplace_back(std::move(row));
}

void PackedRows::append(PackedRows &&other)
{
    if (empty()) {
        *this = std::exchange(other, {});
        return;
    }
    other.takeEach([this](PackedRow &&row) { add(std::move(row)); });
}

void PackedRows::remove(const std::vector<std::size_t> &rows)
{
    PackedRows kept;
    std::size_t index = 0;
    auto next = rows.begin();
    takeEach([&](PackedRow &&row) {
        if (next != rows.end() && *next == index)
            ++next;
        else
            kept.add(std::move(row));
        ++index;
    });
    *this = std::move(kept);
}

} // namespace TAMBO
