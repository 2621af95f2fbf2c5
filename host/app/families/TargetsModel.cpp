// SPDX-License-Identifier: GPL-3.0-or-later
#include "TargetsModel.h"

#include "PlainText.h"

#include <QLocale>

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace TAMBO::app {

namespace {

using families::PlannedModel;

double identityIn(const PlannedModel &model)
{
    return model.residues == 0 ? 0 : 100.0 * double(model.identical) / double(model.residues);
}

} // namespace

TargetsModel::TargetsModel(QObject *parent) : QAbstractTableModel(parent) { }

void TargetsModel::setFamily(families::Family family)
{
    beginResetModel();
    m_Family = std::move(family);
    m_Lines.assign(m_Family.rows.size(), {});
    std::unordered_map<std::string, int> counts;
    for (const families::FamilyRow &row : m_Family.rows)
        ++counts[row.name];
    for (std::size_t row = 0; row < m_Lines.size(); ++row) {
        m_Lines[row].isTicked = !m_Family.rows[row].hasStructure;
        m_Lines[row].isTwin = counts[m_Family.rows[row].name] > 1;
    }
    endResetModel();
    setTemplate({});
}

// Rows with a structure may be built, too; but not on themselves.
std::vector<std::string> TargetsModel::measuredTargets(const std::string &templateName) const
{
    std::unordered_map<std::string, int> counts;
    std::size_t measured = 0;
    for (const families::FamilyRow &row : m_Family.rows) {
        ++counts[row.name];
        measured += row.hasStructure ? 1 : 0;
    }
    std::vector<std::string> names;
    for (const families::FamilyRow &row : m_Family.rows) {
        // Which of several rows is meant cannot be said by a name.
        if (row.hasStructure && measured > 1 && counts[row.name] == 1 && row.name != templateName)
            names.push_back(row.name);
    }
    return names;
}

void TargetsModel::take(const Result<std::vector<PlannedModel>> &plan)
{
    if (!plan)
        return;
    for (const PlannedModel &model : plan.value())
        m_Lines[model.target].model = model;
}

void TargetsModel::setTemplate(const std::string &name)
{
    for (Line &line : m_Lines)
        line.model.reset();
    const Result<std::vector<PlannedModel>> plan = families::planModels(m_Family, {name, {}});
    take(plan);
    const std::vector<std::string> measured = measuredTargets(name);
    if (!measured.empty())
        take(families::planModels(m_Family, {name, measured}));
    const bool isPossible =
        std::ranges::any_of(m_Lines, [](const Line &line) { return line.model.has_value(); });
    m_Objection = isPossible || plan ? QString() : QString::fromStdString(plan.error().message());
    if (!m_Lines.empty())
        emit dataChanged(index(0, 0), index(int(m_Lines.size()) - 1, ColumnCount - 1));
    countTicks();
}

bool TargetsModel::canBeBuilt(std::size_t row) const
{
    const std::optional<PlannedModel> &model = m_Lines[row].model;
    return model && model->aligned > 0;
}

bool TargetsModel::isTicked(std::size_t row) const
{
    return m_Lines[row].isTicked && canBeBuilt(row);
}

void TargetsModel::countTicks()
{
    m_TickedCount = 0;
    for (std::size_t row = 0; row < m_Lines.size(); ++row)
        m_TickedCount += isTicked(row) ? 1 : 0;
    emit ticksChanged();
}

void TargetsModel::setTicked(const std::vector<int> &rows, bool ticked)
{
    if (rows.empty())
        return;
    for (const int row : rows) {
        if (canBeBuilt(std::size_t(row)))
            m_Lines[std::size_t(row)].isTicked = ticked;
    }
    const auto [first, last] = std::ranges::minmax(rows);
    emit dataChanged(index(first, TargetColumn), index(last, TargetColumn), {Qt::CheckStateRole});
    countTicks();
}

std::vector<PlannedModel> TargetsModel::plan() const
{
    std::vector<PlannedModel> plan;
    for (std::size_t row = 0; row < m_Lines.size(); ++row) {
        if (isTicked(row))
            plan.push_back(*m_Lines[row].model);
    }
    return plan;
}

int TargetsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_Lines.size());
}

int TargetsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString TargetsModel::nameText(std::size_t row) const
{
    const QString name = QString::fromStdString(m_Family.rows[row].name);
    return m_Lines[row].isTwin ? tr("%1 (row %2)").arg(name).arg(row + 1) : name;
}

QString TargetsModel::text(std::size_t row, int column) const
{
    const std::optional<PlannedModel> &model = m_Lines[row].model;
    if (column == TargetColumn)
        return nameText(row);
    if (!model)
        return {};
    switch (column) {
    case ResiduesColumn:
        return QLocale().toString(qulonglong(model->residues));
    case TemplateColumn:
        return nameText(model->templateRow);
    default:
        return QLocale().toString(identityIn(*model), 'f', 1);
    }
}

QString TargetsModel::whyNot(std::size_t row) const
{
    if (canBeBuilt(row))
        return {};
    if (m_Lines[row].model)
        return tr("It shares no column with %1.").arg(text(row, TemplateColumn));
    return m_Objection.isEmpty() ? tr("It cannot be built: it is the template itself, the only row "
                                      "with a structure, or another row has its name.")
                                 : m_Objection;
}

QVariant TargetsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto row = std::size_t(index.row());
    const bool isText = index.column() == TargetColumn || index.column() == TemplateColumn;
    switch (role) {
    case Qt::DisplayRole:
        return text(row, index.column());
    case kSortRole:
        if (isText)
            return text(row, index.column());
        if (!m_Lines[row].model)
            return -1.0;
        return index.column() == ResiduesColumn ? double(m_Lines[row].model->residues)
                                                : identityIn(*m_Lines[row].model);
    case Qt::CheckStateRole:
        return index.column() == TargetColumn
                   ? QVariant(int(isTicked(row) ? Qt::Checked : Qt::Unchecked))
                   : QVariant();
    case Qt::TextAlignmentRole:
        return int((isText ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    case Qt::ToolTipRole:
        return plainToolTip(canBeBuilt(row) ? text(row, index.column()) : whyNot(row));
    default:
        return {};
    }
}

QVariant TargetsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::ToolTipRole && section == IdentityColumn)
        return QStringLiteral("<p>%1</p>")
            .arg(tr("Columns in which target and template have the same letter, of the target's "
                    "residues. Below 30 % models are often wrong"));
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case TargetColumn:
        return tr("Target");
    case ResiduesColumn:
        return tr("Residues");
    case TemplateColumn:
        return tr("Template");
    default:
        return tr("Identity (%)");
    }
}

Qt::ItemFlags TargetsModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (canBeBuilt(std::size_t(index.row())))
        flags |= Qt::ItemIsEnabled;
    if (index.column() == TargetColumn)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

bool TargetsModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || !index.isValid() || index.column() != TargetColumn ||
        !canBeBuilt(std::size_t(index.row())))
        return false;
    setTicked({index.row()}, value.toInt() == Qt::Checked);
    return true;
}

} // namespace TAMBO::app

#include "moc_TargetsModel.cpp"
