// SPDX-License-Identifier: GPL-3.0-or-later
// New residue numbers for many chains and sequences: of each what it counts from now, what it is to
// count from, where that ends, and what is in the way. A row without a new number stays as it is.
#pragma once

#include "PointerMap.h"
#include "SequenceNumber.h"

#include <QAbstractTableModel>
#include <QString>

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace TAMBO {
class Compound;
class Peptide;
} // namespace TAMBO

namespace TAMBO::app {

class RenumberTable : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { NameColumn, NowColumn, FromColumn, ToColumn, ClashColumn, ColumnCount };

    // What the objects are or hold: sequences, chains of structures, rows of alignments; each once,
    // those without residues left out.
    [[nodiscard]] static std::vector<Compound *>
    sequencesOf(const std::vector<Compound *> &objects);

    // Remembers what it needs of the sequences, which may go meanwhile.
    explicit RenumberTable(const std::vector<Compound *> &sequences, QObject *parent = nullptr);
    ~RenumberTable() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

    // All of them from this number; nothing: they stay as they are.
    void setAll(std::optional<int> from);
    // What came of filling in: how many rows, and of how many the name is of another length.
    struct Filled
    {
        int rows = 0;
        int otherLengths = 0;
    };
    // From names like "HBA_HUMAN/23-145" the number that the range begins with, where the row has
    // as many residues. Other rows stay as they are.
    Filled fillFromNames();
    [[nodiscard]] bool hasRangesInNames() const;
    // Where numbers are left out now, as many are left out then; otherwise each is the next one.
    void setKeepsJumps(bool keeps);
    [[nodiscard]] bool hasJumps() const;

    [[nodiscard]] int changedCount() const;
    [[nodiscard]] int clashCount() const;
    // With the name of its row; empty without one.
    [[nodiscard]] QString firstClash() const;

    // In the order of the sequences that the table was made of, which are all still there: those
    // that have a new number, in one step of undo. How many that were; locked ones stay.
    std::size_t apply(const std::vector<Compound *> &sequences) const;

signals:
    void changed();

private:
    struct Line
    {
        QString name;
        // In the sequence's own name.
        std::optional<std::pair<int, int>> range;
        QString now;
        std::size_t count = 0;
        SequenceNumber first;
        bool isLocked = false;
        // All numbers; empty where each is the next one.
        std::vector<SequenceNumber> jumping;
        // Of what else has a number in the chain, with its letter; sorted.
        std::vector<std::pair<int, char>> others;
        // Whose numbers they are.
        const Compound *owner = nullptr;
        // As typed, when it is no number.
        QString wrong;
        std::optional<int> from;
    };

    static Line lineOf(Peptide &sequence);
    [[nodiscard]] SequenceNumber numberOf(const Line &line, std::size_t index) const;
    [[nodiscard]] QString clashOf(const Line &line) const;
    [[nodiscard]] static QString rangeText();
    // Rows may stand for the same residues.
    [[nodiscard]] bool isAskedTwice(const Line &line) const;
    void announce();

    std::vector<Line> m_Lines;
    // In how many rows with a new number the residues of an owner stand.
    PointerMap<Compound, int> m_Asked;
    bool m_KeepsJumps = true;
};

} // namespace TAMBO::app
