// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResultsModel.h"

#include "PlainText.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <limits>

namespace TAMBO::app {

namespace {

using families::ResultRow;
using families::TargetState;

// Beyond it one signal for all lines costs less than one for each stretch of them.
constexpr std::size_t kMostStretches = 64;

const QString kNotKnown = QStringLiteral("NA");

bool isNumber(int column)
{
    switch (column) {
    case ResultsModel::ResiduesColumn:
    case ResultsModel::ModelledColumn:
    case ResultsModel::IdentityColumn:
    case ResultsModel::CoverageColumn:
    case ResultsModel::GapsColumn:
    case ResultsModel::RmsColumn:
    case ResultsModel::CaCountColumn:
    case ResultsModel::ScoreColumn:
    case ResultsModel::SecondsColumn:
    case ResultsModel::ExitColumn:
        return true;
    default:
        return false;
    }
}

// In the order in which one looks at them.
int rankOf(TargetState state)
{
    switch (state) {
    case TargetState::Running:
        return 0;
    case TargetState::Failed:
        return 1;
    case TargetState::Killed:
        return 2;
    case TargetState::NotRun:
        return 3;
    case TargetState::Ok:
        break;
    }
    return 4;
}

QString stateText(TargetState state)
{
    switch (state) {
    case TargetState::Ok:
        return ResultsModel::tr("ok");
    case TargetState::Failed:
        return ResultsModel::tr("failed");
    case TargetState::Killed:
        return ResultsModel::tr("killed");
    case TargetState::Running:
        return ResultsModel::tr("running");
    case TargetState::NotRun:
        break;
    }
    return ResultsModel::tr("not run");
}

QString headerTip(int column)
{
    switch (column) {
    case ResultsModel::StateColumn:
        return ResultsModel::tr(
            "ok: there is a model. killed: its job was ended from outside. Those "
            "that are not ok are tried when the run goes on");
    case ResultsModel::ModelledColumn:
        return ResultsModel::tr(
            "Residues that the model has. Those before the first and behind the "
            "last one of the template are not modelled");
    case ResultsModel::IdentityColumn:
        return ResultsModel::tr("Columns in which target and template have the same letter, of the "
                                "target's residues");
    case ResultsModel::CoverageColumn:
        return ResultsModel::tr("Residues that the model has, of the target's");
    case ResultsModel::GapsColumn:
        return ResultsModel::tr("Insertions and deletions that the engine had to build");
    case ResultsModel::RmsColumn:
        return ResultsModel::tr("Root mean square distance of the model's CA atoms to those of the "
                                "template: how far the "
                                "model has moved away from it, and not how good it is");
    case ResultsModel::CaCountColumn:
        return ResultsModel::tr("CA atoms that this distance is of");
    case ResultsModel::ScoreColumn:
        return ResultsModel::tr(
            "A statistical potential of the backbone, computed by the engine; lower is better. It "
            "can be compared between models of the same target only: it grows with the length, and "
            "is no measure of how correct a model is");
    case ResultsModel::SecondsColumn:
        return ResultsModel::tr("From the job's begin to its end");
    case ResultsModel::JobColumn:
        return ResultsModel::tr("Its number in the batch system, where there is one");
    case ResultsModel::ExitColumn:
        return ResultsModel::tr("Of the program kestram; more than 128: ended by a signal");
    case ResultsModel::LastLineColumn:
        return ResultsModel::tr("What the job has said last, with the reason when it has failed");
    default:
        return {};
    }
}

} // namespace

ResultsModel::ResultsModel(QObject *parent) : QAbstractTableModel(parent) { }

ResultsModel::Line ResultsModel::lineOf(const ResultRow &row)
{
    Line line{row, {}};
    for (const std::string &text : families::resultTexts(row))
        line.texts << QString::fromStdString(text);
    return line;
}

void ResultsModel::count(const ResultRow &row, bool isThere)
{
    const auto add = [isThere](std::size_t &count) { count += isThere ? 1 : std::size_t(-1); };
    add(m_Counts.all);
    switch (row.state) {
    case TargetState::Ok:
        return add(m_Counts.ok);
    case TargetState::Failed:
        return add(m_Counts.failed);
    case TargetState::Killed:
        return add(m_Counts.killed);
    case TargetState::Running:
        return add(m_Counts.running);
    case TargetState::NotRun:
        return add(m_Counts.notRun);
    }
}

void ResultsModel::take(const Changes &changes)
{
    std::vector<std::pair<std::size_t, std::size_t>> stretches;
    const auto firstNew = std::ranges::find_if(
        changes, [this](const auto &change) { return change.first >= m_Lines.size(); });
    for (auto change = changes.begin(); change != firstNew; ++change) {
        Line &line = m_Lines[change->first];
        Line now = lineOf(change->second);
        const bool isSame = now.texts == line.texts;
        count(line.result, false);
        line = std::move(now);
        count(line.result, true);
        if (isSame)
            continue;
        if (!stretches.empty() && stretches.back().second + 1 == change->first)
            ++stretches.back().second;
        else
            stretches.emplace_back(change->first, change->first);
    }
    if (stretches.size() > kMostStretches)
        stretches = {{stretches.front().first, stretches.back().second}};
    for (const auto &[first, last] : stretches)
        emit dataChanged(index(int(first), 0), index(int(last), ColumnCount - 1));
    if (firstNew == changes.end())
        return;
    beginInsertRows({}, int(m_Lines.size()),
                    int(m_Lines.size()) + int(changes.end() - firstNew) - 1);
    for (auto change = firstNew; change != changes.end(); ++change) {
        m_Lines.push_back(lineOf(change->second));
        count(change->second, true);
    }
    endInsertRows();
}

void ResultsModel::clear()
{
    beginResetModel();
    m_Lines.clear();
    m_Counts = {};
    endResetModel();
}

ObjectNote ResultsModel::note(int row, const QString &family) const
{
    ObjectNote note;
    note.title = tr("Model of the family %1").arg(family).toStdString();
    const QStringList &values = texts(row);
    for (int column = 0; column < int(values.size()); ++column)
        note.values.emplace_back(title(column).toStdString(), values[column].toStdString());
    return note;
}

QString ResultsModel::title(int column)
{
    switch (column) {
    case TargetColumn:
        return tr("Target");
    case TemplateColumn:
        return tr("Template");
    case StateColumn:
        return tr("State");
    case ResiduesColumn:
        return tr("Residues");
    case ModelledColumn:
        return tr("Modelled");
    case IdentityColumn:
        return tr("Identity (%)");
    case CoverageColumn:
        return tr("Coverage (%)");
    case GapsColumn:
        return tr("Gaps rebuilt");
    case RmsColumn:
        return tr("CA RMS (Å)");
    case CaCountColumn:
        return tr("CA atoms");
    case ScoreColumn:
        return tr("Backbone score");
    case SecondsColumn:
        return tr("Seconds");
    case HostColumn:
        return tr("Host");
    case JobColumn:
        return tr("Job");
    case ExitColumn:
        return tr("Exit status");
    case LastLineColumn:
        return tr("Last line");
    case EngineColumn:
        return tr("Engine");
    case ModelColumn:
        return tr("File");
    default:
        return {};
    }
}

QStringList ResultsModel::fieldNames()
{
    QStringList names;
    for (const std::string &name : families::resultTitles())
        names << QString::fromStdString(name);
    return names;
}

int ResultsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_Lines.size());
}

int ResultsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant ResultsModel::sortKey(const Line &line, int column) const
{
    if (column == StateColumn)
        return rankOf(line.result.state);
    if (!isNumber(column))
        return line.texts[column];
    bool isKnown = false;
    const double number = line.texts[column].toDouble(&isKnown);
    return isKnown ? number : std::numeric_limits<double>::infinity();
}

QVariant ResultsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Line &line = m_Lines[std::size_t(index.row())];
    const QString &text = line.texts[index.column()];
    switch (role) {
    case Qt::DisplayRole:
        if (index.column() == StateColumn)
            return stateText(line.result.state);
        return text == kNotKnown ? QString() : text;
    case kSortRole:
        return sortKey(line, index.column());
    case Qt::TextAlignmentRole:
        return isNumber(index.column()) ? int(Qt::AlignRight | Qt::AlignVCenter)
                                        : int(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ToolTipRole:
        return text == kNotKnown || isNumber(index.column()) ? QString() : plainToolTip(text);
    case Qt::ForegroundRole:
        return line.result.state == TargetState::NotRun
                   ? QVariant(QGuiApplication::palette().color(QPalette::PlaceholderText))
                   : QVariant();
    default:
        return {};
    }
}

QVariant ResultsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return title(section);
    const QString tip = role == Qt::ToolTipRole ? headerTip(section) : QString();
    // In lines of a readable length.
    return tip.isEmpty() ? QVariant()
                         : QVariant(QStringLiteral("<p>%1</p>").arg(tip.toHtmlEscaped()));
}

} // namespace TAMBO::app

#include "moc_ResultsModel.cpp"
