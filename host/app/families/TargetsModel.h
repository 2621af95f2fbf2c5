// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a family to choose targets from, each with the template that it would be built on.
#pragma once

#include "FamilyPlan.h"

#include <QAbstractTableModel>
#include <QString>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO::app {

class TargetsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { TargetColumn, ResiduesColumn, TemplateColumn, IdentityColumn, ColumnCount };
    static constexpr int kSortRole = Qt::UserRole;

    explicit TargetsModel(QObject *parent = nullptr);

    // Those without a structure are ticked.
    void setFamily(families::Family family);
    [[nodiscard]] const families::Family &family() const noexcept { return m_Family; }
    // Empty: the best one for each. What is ticked stays so.
    void setTemplate(const std::string &name);

    // Of rows of one name, with its number.
    [[nodiscard]] QString nameText(std::size_t row) const;
    // Why nothing can be built at all; empty when something can.
    [[nodiscard]] QString objection() const { return m_Objection; }
    // Rows that can be built, one change for all of them.
    void setTicked(const std::vector<int> &rows, bool ticked);
    [[nodiscard]] std::size_t tickedCount() const noexcept { return m_TickedCount; }
    // Of those that are ticked, in the order of the rows.
    [[nodiscard]] std::vector<families::PlannedModel> plan() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

signals:
    void ticksChanged();

private:
    struct Line
    {
        bool isTicked = false;
        // Another row has its name.
        bool isTwin = false;
        // None: it cannot be built.
        std::optional<families::PlannedModel> model;
    };

    [[nodiscard]] bool canBeBuilt(std::size_t row) const;
    [[nodiscard]] bool isTicked(std::size_t row) const;
    void take(const Result<std::vector<families::PlannedModel>> &plan);
    [[nodiscard]] std::vector<std::string> measuredTargets(const std::string &templateName) const;
    void countTicks();
    [[nodiscard]] QString text(std::size_t row, int column) const;
    [[nodiscard]] QString whyNot(std::size_t row) const;

    families::Family m_Family;
    std::vector<Line> m_Lines;
    std::size_t m_TickedCount = 0;
    QString m_Objection;
};

} // namespace TAMBO::app
