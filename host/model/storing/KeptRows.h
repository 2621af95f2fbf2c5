// SPDX-License-Identifier: GPL-3.0-or-later
// An alignment as it was when somebody began to write it, while single rows of it change or go to
// other places. Of each of these the bytes are kept that it had then, once.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace TAMBO {

class Alignment;
class ObjectWriter;
class StoredObject;

class KeptRows
{
public:
    // Before anything changes.
    explicit KeptRows(const StoredObject &alignment);

    // Before the row at this place changes.
    void keep(std::size_t row);
    // Before a row goes from one place to another. False when that has happened so often that
    // finding rows again would take long, and nothing is noted.
    [[nodiscard]] bool move(std::size_t from, std::size_t to);

    // As StoredObject has it, and as it was.
    [[nodiscard]] std::size_t partCount() const noexcept;
    void writePart(std::size_t part, ObjectWriter &out) const;

private:
    struct Move
    {
        std::size_t from = 0;
        std::size_t to = 0;
    };

    [[nodiscard]] static std::size_t placeAfter(const Move &move, std::size_t place) noexcept;
    [[nodiscard]] std::size_t placeNow(std::size_t former) const noexcept;
    [[nodiscard]] std::size_t placeThen(std::size_t now) const noexcept;

    const StoredObject &m_Stored;
    const Alignment &m_Alignment;
    std::size_t m_RowsOfPart;
    std::string m_FirstPart;
    std::vector<Move> m_Moves;
    // By the places that they had.
    std::unordered_map<std::size_t, std::string> m_Rows;
};

} // namespace TAMBO
