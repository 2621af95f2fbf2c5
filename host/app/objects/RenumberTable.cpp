// SPDX-License-Identifier: GPL-3.0-or-later
#include "RenumberTable.h"

#include "Alignment.h"
#include "DataPoint.h"
#include "LongWork.h"
#include "ObjectFacts.h"
#include "ObjectTwins.h"
#include "Peptide.h"
#include "PlainText.h"
#include "PointerSet.h"
#include "Space.h"
#include "StepName.h"

#include <QRegularExpression>

#include <algorithm>

namespace TAMBO::app {

namespace {

// What PDB files can hold, which write those above 9999 with letters.
constexpr int kLeastInFiles = -999;
constexpr int kMostInFiles = 1'000'000;

bool isLockedAnywhere(const Compound *object)
{
    while (object != nullptr && !object->IsLocked())
        object = object->Parent();
    return object != nullptr;
}

using NumbersOfOthers = std::vector<std::pair<int, char>>;

void addGroups(const Peptide &chain, NumbersOfOthers &others)
{
    for (std::size_t i = 0; i < chain.objectCount(); ++i) {
        if (const auto *const group = dynamic_cast<const Group *>(chain.object(i)))
            others.emplace_back(group->GetSeqId().number(), group->GetSeqId().insertionCode());
    }
}

// A row may stand for a part of its chain, and the rest of it keeps its numbers.
void addRest(const Peptide &chain, const Peptide &sequence, NumbersOfOthers &others)
{
    std::vector<bool> isHere(chain.residueCount(), false);
    for (std::size_t i = 0; i < sequence.residueCount(); ++i) {
        const ResiduePlace place = sequence.resolve(i);
        if (place.peptide == &chain)
            isHere[place.index] = true;
    }
    for (std::size_t i = 0; i < isHere.size(); ++i) {
        if (!isHere[i])
            others.emplace_back(chain.number(i).number(), chain.number(i).insertionCode());
    }
}

QString numbersText(const SequenceNumber &first, const SequenceNumber &last)
{
    const QString from = QString::fromStdString(first.getValue());
    const QString to = QString::fromStdString(last.getValue());
    return first == last ? from : RenumberTable::tr("%1 to %2").arg(from, to);
}

// Of "HBA_HUMAN/23-145", whatever stands behind it.
std::optional<std::pair<int, int>> rangeOf(const QString &name)
{
    static const QRegularExpression pattern("/(-?[0-9]+)-(-?[0-9]+)($|[/\\s])");
    const QRegularExpressionMatch match = pattern.match(name);
    bool isFirst = false;
    bool isLast = false;
    const int first = match.captured(1).toInt(&isFirst);
    const int last = match.captured(2).toInt(&isLast);
    return isFirst && isLast ? std::optional(std::pair(first, last)) : std::nullopt;
}

} // namespace

std::vector<Compound *> RenumberTable::sequencesOf(const std::vector<Compound *> &objects)
{
    std::vector<Compound *> sequences;
    PointerSet<Compound> known;
    const auto add = [&](Compound *object) {
        const Peptide *const peptide = Peptide::from(object);
        if (peptide != nullptr && peptide->residueCount() > 0 && known.insert(object))
            sequences.push_back(object);
    };
    for (Compound *const object : objects) {
        switch (object->Kind()) {
        case CompoundKind::Alignment: {
            const auto &alignment = dynamic_cast<const Alignment &>(*object);
            for (unsigned long row = 0; row < alignment.height(); ++row)
                add(alignment.GetSeq(row));
            break;
        }
        case CompoundKind::Structure:
            for (std::size_t i = 0; i < object->ChildCount(); ++i)
                add(object->Child(i));
            break;
        default:
            add(object);
        }
    }
    return sequences;
}

RenumberTable::RenumberTable(const std::vector<Compound *> &sequences, QObject *parent)
    : QAbstractTableModel(parent)
{
    const std::vector<QString> differences = services::ObjectTwins::differences(
        {sequences.begin(), sequences.end()},
        [](const Compound &sequence) { return sequence.GetFQName(); });
    m_Lines.reserve(sequences.size());
    for (std::size_t i = 0; i < sequences.size(); ++i) {
        m_Lines.push_back(lineOf(*Peptide::from(sequences[i])));
        m_Lines.back().name = services::ObjectTwins::label(
            QString::fromStdString(sequences[i]->GetFQName()), differences[i]);
    }
}

RenumberTable::~RenumberTable() = default;

RenumberTable::Line RenumberTable::lineOf(Peptide &sequence)
{
    Line line;
    line.range = rangeOf(QString::fromStdString(sequence.Name()));
    line.count = sequence.residueCount();
    line.first = sequence.number(0);
    line.now = numbersText(line.first, sequence.number(line.count - 1));
    line.isLocked = isLockedAnywhere(&sequence);
    line.owner = &sequence.dataOwner(0);
    if (sequence.hasOwnNumbers() || sequence.hasTies()) {
        SequenceNumber expected = line.first;
        bool isJumping = false;
        std::vector<SequenceNumber> numbers;
        numbers.reserve(line.count);
        for (std::size_t i = 0; i < line.count; ++i, ++expected) {
            numbers.push_back(sequence.number(i));
            isJumping = isJumping || numbers.back() != expected;
        }
        if (isJumping)
            line.jumping = std::move(numbers);
    }
    addGroups(sequence, line.others);
    sequence.forEachTiedChain([&](const Peptide &chain) {
        line.isLocked = line.isLocked || isLockedAnywhere(&chain);
        addGroups(chain, line.others);
        addRest(chain, sequence, line.others);
    });
    std::ranges::sort(line.others);
    return line;
}

SequenceNumber RenumberTable::numberOf(const Line &line, std::size_t index) const
{
    // A clash says so where it is beyond; the sum would be too large for a number.
    const int from = std::clamp(*line.from, kLeastInFiles, kMostInFiles);
    if (!m_KeepsJumps || line.jumping.empty())
        return SequenceNumber(from + int(index));
    const SequenceNumber &old = line.jumping[index];
    return SequenceNumber(old.number() - line.first.number() + from, old.insertionCode());
}

bool RenumberTable::isAskedTwice(const Line &line) const
{
    const int *const asked = m_Asked.find(*line.owner);
    return asked != nullptr && *asked > 1;
}

QString RenumberTable::rangeText()
{
    return tr("numbers go from %1 to %2").arg(kLeastInFiles).arg(kMostInFiles);
}

// Empty when nothing is in the way.
QString RenumberTable::clashOf(const Line &line) const
{
    if (!line.wrong.isEmpty())
        return tr("\"%1\" is no whole number").arg(line.wrong);
    if (!line.from)
        return {};
    if (line.isLocked)
        return tr("locked");
    if (isAskedTwice(line))
        return tr("another row has the same residues");
    if (*line.from < kLeastInFiles || *line.from > kMostInFiles ||
        line.count > std::size_t(kMostInFiles))
        return rangeText();
    const bool isEach = !line.others.empty() || (m_KeepsJumps && !line.jumping.empty());
    for (std::size_t i = isEach ? 0 : line.count - 1; i < line.count; ++i) {
        const SequenceNumber number = numberOf(line, i);
        if (number.number() < kLeastInFiles || number.number() > kMostInFiles)
            return rangeText();
        if (std::ranges::binary_search(line.others,
                                       std::pair(number.number(), number.insertionCode())))
            return tr("%1 is the number of another residue or group of the chain")
                .arg(QString::fromStdString(number.getValue()));
    }
    return {};
}

// ---- The item model

int RenumberTable::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_Lines.size());
}

int RenumberTable::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant RenumberTable::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Line &line = m_Lines[std::size_t(index.row())];
    const auto text = [&]() -> QString {
        switch (index.column()) {
        case NameColumn:
            return line.name;
        case NowColumn:
            return line.now;
        case FromColumn:
            return line.from ? QString::number(*line.from) : line.wrong;
        case ToColumn:
            return line.from ? QString::fromStdString(numberOf(line, line.count - 1).getValue())
                             : QString();
        default:
            return clashOf(line);
        }
    };
    if (role == Qt::DisplayRole || (role == Qt::EditRole && index.column() == FromColumn))
        return text();
    if (role == Qt::ToolTipRole)
        return index.column() == FromColumn ? tr("The number of the first residue; empty: the row "
                                                 "stays as it is")
                                            : plainToolTip(text());
    if (role == Qt::TextAlignmentRole)
        return int((index.column() == FromColumn || index.column() == ToColumn ? Qt::AlignRight
                                                                               : Qt::AlignLeft) |
                   Qt::AlignVCenter);
    return {};
}

QVariant RenumberTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return int((section == FromColumn || section == ToColumn ? Qt::AlignRight : Qt::AlignLeft) |
                   Qt::AlignVCenter);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case NameColumn:
        return tr("Sequence");
    case NowColumn:
        return tr("Now");
    case FromColumn:
        return tr("From");
    case ToColumn:
        return tr("To");
    default:
        return tr("Clash");
    }
}

Qt::ItemFlags RenumberTable::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.column() == FromColumn)
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool RenumberTable::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.column() != FromColumn)
        return false;
    Line &line = m_Lines[std::size_t(index.row())];
    const QString text = value.toString().trimmed();
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    line.from = isNumber ? std::optional<int>(number) : std::nullopt;
    line.wrong = isNumber ? QString() : text;
    announce();
    return true;
}

void RenumberTable::setAll(std::optional<int> from)
{
    for (Line &line : m_Lines) {
        line.from = from;
        line.wrong.clear();
    }
    announce();
}

RenumberTable::Filled RenumberTable::fillFromNames()
{
    Filled filled;
    for (Line &line : m_Lines) {
        if (!line.range)
            continue;
        const long long length = static_cast<long long>(line.range->second) - line.range->first + 1;
        if (length != static_cast<long long>(line.count)) {
            ++filled.otherLengths;
            continue;
        }
        line.from = line.range->first;
        line.wrong.clear();
        ++filled.rows;
    }
    announce();
    return filled;
}

bool RenumberTable::hasRangesInNames() const
{
    return std::ranges::any_of(m_Lines, [](const Line &line) { return line.range.has_value(); });
}

void RenumberTable::setKeepsJumps(bool keeps)
{
    m_KeepsJumps = keeps;
    announce();
}

// One row may be in the way of another one.
void RenumberTable::announce()
{
    m_Asked = {};
    for (const Line &line : m_Lines) {
        if (line.from)
            ++m_Asked[*line.owner];
    }
    if (!m_Lines.empty())
        emit dataChanged(index(0, FromColumn), index(rowCount() - 1, ClashColumn));
    emit changed();
}

bool RenumberTable::hasJumps() const
{
    return std::ranges::any_of(m_Lines, [](const Line &line) { return !line.jumping.empty(); });
}

int RenumberTable::changedCount() const
{
    return int(
        std::ranges::count_if(m_Lines, [](const Line &line) { return line.from.has_value(); }));
}

int RenumberTable::clashCount() const
{
    return int(std::ranges::count_if(
        m_Lines, [this](const Line &line) { return !clashOf(line).isEmpty(); }));
}

QString RenumberTable::firstClash() const
{
    for (const Line &line : m_Lines) {
        const QString clash = clashOf(line);
        if (!clash.isEmpty())
            return tr("%1: %2").arg(line.name, clash);
    }
    return {};
}

// ---- Doing it

std::size_t RenumberTable::apply(const std::vector<Compound *> &sequences) const
{
    LongWork work("Renumbering", sequences.size(), LongWork::Kind::Changing);
    const DataPoint<Space> step(nullptr, Space::instance());
    if (!step.m_good)
        return 0;
    const StepName name(tr("Renumber").toStdString());
    std::size_t done = 0;
    for (std::size_t row = 0; row < sequences.size() && row < m_Lines.size(); ++row) {
        if (!work.goesOn())
            break;
        const Line &line = m_Lines[row];
        Peptide *const sequence = line.from ? Peptide::from(sequences[row]) : nullptr;
        if (sequence == nullptr)
            continue;
        const DataPoint<Compound> guard(nullptr, sequences[row]);
        if (!guard.m_good)
            continue;
        for (std::size_t i = 0; i < std::min(line.count, sequence->residueCount()); ++i) {
            const SequenceNumber number = numberOf(line, i);
            if (sequence->number(i) != number)
                sequence->setNumber(i, number);
        }
        ++done;
    }
    return done;
}

} // namespace TAMBO::app

#include "moc_RenumberTable.cpp"
