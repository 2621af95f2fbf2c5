// SPDX-License-Identifier: GPL-3.0-or-later
// The objects that SelectObject offers, one per row: name, kind, size, whether they are in the
// alignment that the asking window shows, and a tick where several can be chosen. Maybe a million
// of them, so that a text is made when it is shown.
#pragma once

#include "PointerMap.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QString>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO {
class Alignment;
class Compound;
} // namespace TAMBO

namespace TAMBO::services {

class CandidateModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { NameColumn, KindColumn, SizeColumn, PresentColumn, ColumnCount };

    enum class Ticks { Without, With };

    CandidateModel(const std::vector<Compound *> &candidates, Ticks ticks,
                   QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

    [[nodiscard]] Compound *object(int row) const { return m_Objects[std::size_t(row)]; }
    [[nodiscard]] int rowOf(const Compound *object) const;
    [[nodiscard]] std::string name(int row) const;
    // As the object says it: "chain".
    [[nodiscard]] std::string kind(int row) const;
    // Rows of an alignment, residues of a sequence, parts of other objects.
    [[nodiscard]] qulonglong amount(int row) const;

    // Says of those that have rows in the alignment which one, and of the alignment itself that it
    // is shown. Null: nothing.
    void setShown(const Alignment *shown);
    // The first row, from 0; kAbsent for what is not there.
    [[nodiscard]] qulonglong present(int row) const;
    static constexpr qulonglong kAbsent = ~qulonglong(0);
    // Names that several of them have are followed by what tells these apart.
    void tellApart() { m_TellsApart = true; }
    // An object may have got another name.
    void forgetNames() { m_Differences.reset(); }

    [[nodiscard]] bool isTicked(int row) const { return m_IsTicked[std::size_t(row)]; }
    void setTicked(int row, bool ticked) { setTicked(std::vector<int>{row}, ticked); }
    // One change for all of them.
    void setTicked(const std::vector<int> &rows, bool ticked);
    [[nodiscard]] int tickedCount() const noexcept { return m_TickedCount; }
    // In the order of the rows.
    [[nodiscard]] std::vector<Compound *> ticked() const;
    // Takes out the rows of objects that have left the workbench since the model was made. The
    // rows that the former ones have become, -1 for those that are gone; empty when none is.
    std::vector<int> forgetDeletedObjects();

private:
    [[nodiscard]] QString shownName(int row) const;
    [[nodiscard]] QString sizeText(int row) const;
    [[nodiscard]] QString presentText(int row) const;
    [[nodiscard]] QIcon icon(const QString &kind) const;

    std::vector<Compound *> m_Objects;
    // Was below the root of the objects at the start.
    std::vector<bool> m_IsLoaded;
    std::vector<bool> m_IsTicked;
    Ticks m_Ticks;
    int m_TickedCount = 0;
    mutable std::map<QString, QIcon> m_Icons;
    bool m_TellsApart = false;
    // Behind the names; made when the first one is shown.
    mutable std::optional<std::vector<QString>> m_Differences;
    // By what they stand for; alone for comparing.
    PointerMap<Compound, qulonglong> m_Present;
};

} // namespace TAMBO::services
