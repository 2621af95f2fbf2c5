// SPDX-License-Identifier: GPL-3.0-or-later
// The rows that a view of the objects has asked for, and how they follow the objects. A row is made
// when it is asked for, so a structure of a million atoms costs nothing until somebody opens it.
#pragma once

#include "Compound.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace TAMBO::app {

// Sequences without a structure stand together below one row of their own at the end, since a
// large alignment brings thousands of them. That row stands for no object.
class ObjectRows
{
public:
    struct Row
    {
        Compound *object = nullptr;
        Row *parent = nullptr;
        int place = 0;
        // The first ones of the object's children.
        std::vector<std::unique_ptr<Row>> rows;
        // How many children the object had when it was last looked at.
        std::size_t known = 0;

        [[nodiscard]] bool isComplete() const noexcept { return rows.size() == known; }
        void renumber(std::size_t from);
    };

    // Hears of each change of the rows below one, before and after it. Ranges are half-open.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void aboutToRemove(const Row &row, std::size_t begin, std::size_t end) = 0;
        virtual void removed() = 0;
        virtual void aboutToInsert(const Row &row, std::size_t begin, std::size_t end) = 0;
        virtual void inserted() = 0;
        virtual void aboutToMove(const Row &row, std::size_t from, std::size_t to) = 0;
        virtual void moved() = 0;
    };

    // Both outlive the rows, of which there are none before the first synchronise().
    ObjectRows(Compound &root, Listener &listener);
    ~ObjectRows();
    ObjectRows(const ObjectRows &) = delete;
    ObjectRows &operator=(const ObjectRows &) = delete;

    // Stands for the root.
    [[nodiscard]] Row &top() const noexcept { return *m_Top; }
    // Null when there is none.
    [[nodiscard]] const Row *sequences() const noexcept { return m_Sequences; }
    [[nodiscard]] std::size_t sequenceCount() const noexcept
    {
        return m_All.size() - m_Others.size();
    }
    // Null when nobody has asked for the object's row yet, and for the root.
    [[nodiscard]] const Row *find(const Compound *object) const;

    // Follows what was added, deleted and moved.
    void synchronise();
    [[nodiscard]] bool canFetchMore(const Row &row) const noexcept;
    void fetchMore(Row &row);
    // False when the user has given it up; then nothing has been added.
    [[nodiscard]] bool fetchAll(Row &row);

private:
    using Children = std::vector<Compound *>;

    void splitTopLevel();
    void noteKinds(const Children &all);
    [[nodiscard]] std::size_t childCount(const Row &row) const;
    // Null stands for the row of the sequences.
    [[nodiscard]] Compound *child(const Row &row, std::size_t place) const;
    [[nodiscard]] Compound *sequence(std::size_t place) const;
    [[nodiscard]] Children children(const Row &row, std::size_t begin, std::size_t end) const;
    void synchronise(Row &row);
    void matchRows(Row &row, std::size_t first, const Children &wanted, std::size_t count);
    void removeGone(Row &row, std::size_t first, const Children &wanted);
    [[nodiscard]] std::unique_ptr<Row> makeRow(Row &parent, Compound *object);
    void insertRows(Row &row, std::size_t at, std::vector<std::unique_ptr<Row>> fresh);
    void addRows(Row &row, std::size_t at, const Children &objects);
    void moveRow(Row &row, std::size_t from, std::size_t to);

    Compound &m_Root;
    Listener &m_Listener;
    // The top-level objects, and which of them are sequences.
    Children m_All;
    std::vector<bool> m_AreSequences;
    // The places of those shown at the top; all else is below the sequences' row.
    std::vector<std::size_t> m_Others;
    std::unique_ptr<Row> m_Top;
    Row *m_Sequences = nullptr;
    // Views ask for more while they are told of new rows; what is being matched must stand still.
    bool m_IsMatching = false;
};

} // namespace TAMBO::app
