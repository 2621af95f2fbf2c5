// SPDX-License-Identifier: GPL-3.0-or-later
#include "PirFile.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "Peptide.h"
#include "Structure.h"

#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <array>
#include <optional>

namespace TAMBO::app {

namespace {

constexpr std::size_t kLineLength = 75;
constexpr std::size_t kFields = 10;
using Fields = std::array<std::string, kFields>;

// The places of a title line's fields.
enum Field { Type, Code, First, FirstChain, Last, LastChain };

// A line break would end the title, a colon a field of it.
std::string plain(std::string text, bool isField)
{
    for (char &character : text) {
        if (static_cast<unsigned char>(character) < ' ' || (isField && character == ':'))
            character = ' ';
    }
    return text;
}

// A title line without the fields of a modelling program is somebody's description.
std::optional<Fields> fieldsOf(const std::string &title)
{
    const bool hasFields = title.starts_with("structure") || title.starts_with("sequence");
    if (!hasFields || title.find(':') == std::string::npos)
        return std::nullopt;
    Fields fields;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < kFields && begin <= title.size(); ++i) {
        // Whatever stands behind the last colon that counts is one field.
        const std::size_t end = i + 1 == kFields ? std::string::npos : title.find(':', begin);
        fields[i] = title.substr(begin, end == std::string::npos ? end : end - begin);
        begin = end == std::string::npos ? title.size() + 1 : end + 1;
    }
    return fields;
}

std::string joined(const Fields &fields)
{
    std::string title;
    for (std::size_t i = 0; i < kFields; ++i)
        title += (i == 0 ? "" : ":") + fields[i];
    return title;
}

// Where the row's residues have their coordinates; null chain for a row without a structure.
struct Link
{
    const Structure *structure = nullptr;
    const Peptide *firstChain = nullptr;
    const Peptide *lastChain = nullptr;
    std::string first;
    std::string last;
};

const Structure *structureOf(const Peptide *chain)
{
    return chain == nullptr ? nullptr : dynamic_cast<const Structure *>(chain->Parent());
}

Link linkOf(const AlignmentRow &row, unsigned long width)
{
    Link link;
    row.forEachResidue(0, width, [&](unsigned long, std::uint32_t index) {
        const ResiduePlace place = row.sequence().resolve(index);
        const Structure *structure = structureOf(place.peptide);
        // A model is in no file that another could name.
        if (structure == nullptr || structure->isModel() || (link.structure != nullptr && link.structure != structure))
            return;
        if (link.structure == nullptr) {
            link.structure = structure;
            link.firstChain = place.peptide;
            link.first = place.peptide->number(place.index).getValue();
        }
        link.lastChain = place.peptide;
        link.last = place.peptide->number(place.index).getValue();
    });
    return link;
}

std::string titleOf(const AlignmentRow &row, unsigned long width)
{
    const RowLabel *label = row.label();
    const std::string written = label == nullptr ? std::string() : plain(label->description, false);
    std::optional<Fields> fields = fieldsOf(written);
    if (!fields && !written.empty())
        return written;
    const Link link = linkOf(row, width);
    if (link.structure == nullptr) {
        return fields ? joined(*fields) : "sequence:" + plain(row.name(), true) + "::::::::";
    }
    if (!fields) {
        fields.emplace();
        fields->at(Type) = "structureX";
        fields->at(Code) = plain(link.structure->Name(), true);
    }
    fields->at(First) = link.first;
    fields->at(FirstChain) = plain(link.firstChain->Name(), true);
    fields->at(Last) = link.last;
    fields->at(LastChain) = plain(link.lastChain->Name(), true);
    return joined(*fields);
}

// The row as the file shows it: a break between two chains stands in the gap behind the last
// residue before it.
std::string cellsOf(const Alignment &alignment, std::size_t index)
{
    std::string cells = alignment.GetSequence(index, false);
    const AlignmentRow &row = alignment.table().row(index);
    if (row.label() == nullptr || row.label()->chainBreaks.empty())
        return cells;
    // The breaks count the letters of the file, which a chain may have more of in front.
    const bool isChain = structureOf(&row.sequence()) != nullptr;
    const std::uint64_t shift = isChain && !cells.empty() ? row.residueIndex(0) : 0;
    std::size_t next = 0;
    const auto &breaks = row.label()->chainBreaks;
    std::size_t last = std::string::npos;
    row.forEachResidue(0, cells.size(), [&](unsigned long column, std::uint32_t residue) {
        while (next < breaks.size() && residue >= breaks[next] + shift) {
            if (last != std::string::npos && last + 1 < column)
                cells[last + 1] = '/';
            ++next;
        }
        last = column;
    });
    return cells;
}

} // namespace

std::string pirText(const Alignment &alignment)
{
    std::string text;
    const AlignmentTable &table = alignment.table();
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        const std::string cells = cellsOf(alignment, row);
        text += ">P1;" + plain(table.row(row).name(), false) + '\n';
        text += titleOf(table.row(row), alignment.width()) + '\n';
        for (std::size_t begin = 0; begin < cells.size(); begin += kLineLength)
            text += cells.substr(begin, kLineLength) + '\n';
        // The end has a line of its own when the last one is full.
        if (cells.size() % kLineLength != 0)
            text.pop_back();
        text += "*\n\n";
    }
    return text;
}

QString writePirFile(const QString &path, const Alignment &alignment)
{
    const std::string text = pirText(alignment);
    QSaveFile file(path);
    const bool isWritten = file.open(QIODevice::WriteOnly) &&
                           file.write(text.data(), qint64(text.size())) == qint64(text.size()) &&
                           file.commit();
    if (isWritten)
        return {};
    return QStringLiteral("%1 could not be written: %2")
        .arg(QFileInfo(path).fileName(), file.errorString());
}

} // namespace TAMBO::app
