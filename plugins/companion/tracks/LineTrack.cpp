// SPDX-License-Identifier: GPL-3.0-or-later
#include "LineTrack.h"

#include "Alignment.h"
#include "AlignmentDetails.h"
#include "ResidueScores.h"
#include "Texts.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace companion {

using TAMBO::Alignment;
using TAMBO::AlignmentDetails;

namespace {

constexpr char kStructureKey[] = "structure";
constexpr char kScoreKey[] = "model-score";
constexpr std::size_t kTenths = 10;

struct LineKind
{
    // With "_cons" behind it of columns.
    std::string_view tag;
    LineTrack::Look look;
};

// As the format of Stockholm files defines them.
constexpr std::array kKnown = {LineKind{"SS", LineTrack::Look::Symbols},
                               LineKind{"SA", LineTrack::Look::Bars},
                               LineKind{"PP", LineTrack::Look::Bars}};

std::string_view withoutCons(std::string_view tag)
{
    constexpr std::string_view kCons = "_cons";
    return tag.ends_with(kCons) ? tag.substr(0, tag.size() - kCons.size()) : tag;
}

const LineKind *kindOf(std::string_view tag)
{
    const auto found = std::ranges::find(kKnown, withoutCons(tag), &LineKind::tag);
    return found == kKnown.end() ? nullptr : &*found;
}

QString meaningOf(std::string_view tag)
{
    const std::string_view kind = withoutCons(tag);
    if (kind == "SS")
        return tr("Secondary structure, as the file has it: boxes are helices, arrows strands.");
    if (kind == "SA")
        return tr("How much of a residue solvent can reach, as the file has it: 0 is up to 10 %, 9 "
                  "from 90 % on.");
    if (kind == "PP")
        return tr("How sure the place of the residue is, as the file has it: 0 is up to 5 %, 9 is "
                  "85 to 95 %, * more.");
    if (tag == "RF")
        return tr("Which columns were taken for those of the family, as the file has it.");
    return tr("As the file has it.");
}

LineTrack ofFile(const std::string &tag, std::size_t line)
{
    const LineKind *const kind = kindOf(tag);
    const QString name = QString::fromUtf8(tag.data(), qsizetype(tag.size()));
    return {QString(),      name,
            meaningOf(tag), kind == nullptr ? LineTrack::Look::Letters : kind->look,
            std::nullopt,   line};
}

QString percents(int from, int to)
{
    return tr("%1 to %2 %").arg(from).arg(to);
}

QString elementText(char character)
{
    switch (elementOf(character)) {
    case 'H':
        return tr("helix");
    case 'E':
        return tr("strand");
    case 'T':
        return tr("turn");
    default:
        return tr("neither helix nor strand");
    }
}

// A digit for the tenth of its model that each residue is in.
std::string scoreText(const Alignment &alignment, unsigned long row, unsigned long begin,
                      unsigned long end)
{
    const std::optional<ResidueScores> scores = residueScores(alignment, row);
    std::vector<TAMBO::AlignmentCell> cells;
    alignment.readRow(row, begin, end, cells);
    std::string text(cells.size(), ' ');
    if (!scores)
        return text;
    const std::vector<std::uint32_t> shownHere = AlignmentDetails::shownResidues(alignment, row);
    unsigned long residue = alignment.residueCount(row, begin);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (cells[i].isGap())
            continue;
        if (const auto tenth = scores->partOf(shownHere[residue], kTenths))
            text[i] = char('0' + *tenth);
        ++residue;
    }
    return text;
}

QString barText(const LineTrack &track, char character)
{
    if (track.isScore)
        return tr("%1 of 10, from the lowest of its model").arg(character - '0' + 1);
    const bool isAccess = withoutCons(track.name.toStdString()).ends_with("SA");
    if (character == '*' && !isAccess)
        return percents(95, 100);
    if (character < '0' || character > '9')
        return {};
    const int digit = character - '0';
    return isAccess ? percents(10 * digit, 10 * digit + 10)
                    : percents(std::max(0, 10 * digit - 5), 10 * digit + 5);
}

} // namespace

std::vector<LineTrack> lineTracks(const Alignment &alignment,
                                  const std::vector<unsigned long> &rows)
{
    std::vector<LineTrack> tracks;
    const std::vector<std::string> columns = AlignmentDetails::columnLines(alignment);
    for (std::size_t line = 0; line < columns.size(); ++line) {
        LineTrack track = ofFile(columns[line], line);
        track.key = QStringLiteral("gc:") + track.name;
        tracks.push_back(std::move(track));
    }
    for (const unsigned long row : rows) {
        const QString name = QString::fromStdString(alignment.GetSeqName(row));
        tracks.push_back(
            {QLatin1String(kStructureKey), name,
             tr("Secondary structure of %1: boxes are helices, arrows strands.").arg(name),
             LineTrack::Look::Symbols, row, std::nullopt});
        if (residueScores(alignment, row))
            tracks.push_back(
                {QLatin1String(kScoreKey), tr("%1 score").arg(name),
                 tr("The engine's score of the residues of %1, by tenths of its model; lower fits "
                    "better. It is no confidence, and says nothing between models: each has a "
                    "highest tenth, and a wrong alignment can score well.")
                     .arg(name),
                 LineTrack::Look::Bars, row, std::nullopt, true});
        const std::vector<std::string> residues = AlignmentDetails::residueLines(alignment, row);
        for (std::size_t line = 0; line < residues.size(); ++line) {
            LineTrack track = ofFile(residues[line], line);
            track.key = QStringLiteral("gr:") + track.name;
            track.name = name + u' ' + track.name;
            track.row = row;
            tracks.push_back(std::move(track));
        }
    }
    return tracks;
}

QString lineTitle(const LineTrack &track)
{
    if (!track.row)
        return tr("%1 of the file").arg(track.name);
    if (track.isScore)
        return tr("Model score of rows");
    if (!track.line)
        return tr("Secondary structure of rows");
    return tr("%1 of rows, from the file").arg(track.key.mid(track.key.indexOf(u':') + 1));
}

bool isOnAtFirst(const LineTrack &track)
{
    static const QStringList kOn = {
        QLatin1String(kStructureKey), QLatin1String(kScoreKey),     QStringLiteral("gc:SS_cons"),
        QStringLiteral("gc:SA_cons"), QStringLiteral("gc:PP_cons"), QStringLiteral("gc:RF"),
        QStringLiteral("gr:SS"),      QStringLiteral("gr:SA"),      QStringLiteral("gr:PP")};
    return kOn.contains(track.key);
}

int trackLines(const LineTrack &track) noexcept
{
    constexpr int kBars = 2;
    return track.look == LineTrack::Look::Bars ? kBars : 1;
}

std::string lineText(const Alignment &alignment, const LineTrack &track, unsigned long begin,
                     unsigned long end)
{
    if (!track.row) {
        std::string text = AlignmentDetails::columnText(alignment, *track.line, begin, end);
        std::ranges::replace(text, AlignmentDetails::kNothing, ' ');
        return text;
    }
    if (track.line) {
        std::string text =
            AlignmentDetails::residueText(alignment, *track.row, *track.line, begin, end);
        std::ranges::replace(text, AlignmentDetails::kNothing, ' ');
        return text;
    }
    if (track.isScore)
        return scoreText(alignment, *track.row, begin, end);
    std::string text = AlignmentDetails::elements(alignment, *track.row, begin, end);
    std::vector<TAMBO::AlignmentCell> cells;
    alignment.readRow(*track.row, begin, end, cells);
    for (std::size_t i = 0; i < text.size() && i < cells.size(); ++i)
        text[i] = cells[i].isGap() ? ' ' : text[i] == '\0' ? '-' : text[i];
    return text;
}

QString lineValue(const LineTrack &track, char character)
{
    if (character == ' ')
        return tr("%1: nothing").arg(track.name);
    QString meaning;
    if (track.look == LineTrack::Look::Symbols)
        meaning = elementText(character);
    else if (track.look == LineTrack::Look::Bars)
        meaning = barText(track, character);
    const QString text = QStringLiteral("%1: %2").arg(track.name, QString(QLatin1Char(character)));
    return meaning.isEmpty() ? text : text + QStringLiteral(", ") + meaning;
}

QString columnValue(const Alignment &alignment, const LineTrack &track, unsigned long col)
{
    const std::string text = lineText(alignment, track, col, col + 1);
    if (text.empty())
        return {};
    if (!track.isScore || text.front() == ' ')
        return lineValue(track, text.front());
    const std::optional<ResidueScores> scores = residueScores(alignment, *track.row);
    const std::vector<std::uint32_t> shownHere =
        AlignmentDetails::shownResidues(alignment, *track.row);
    const double score = scores->of(shownHere[alignment.residueCount(*track.row, col)]).value_or(0);
    return QStringLiteral("%1: %2, %3")
        .arg(track.name, QString::number(score, 'f', 2), barText(track, text.front()));
}

// The letters are those of DSSP: W. Kabsch and C. Sander, Biopolymers 22, 2577 (1983).
char elementOf(char character) noexcept
{
    constexpr std::string_view kHelix = "HGIhgi";
    constexpr std::string_view kStrand = "EBeb";
    constexpr std::string_view kTurn = "Tt";
    if (character == ' ' || character == '\0')
        return ' ';
    if (kHelix.find(character) != std::string_view::npos)
        return 'H';
    if (kStrand.find(character) != std::string_view::npos)
        return 'E';
    return kTurn.find(character) != std::string_view::npos ? 'T' : '-';
}

double lineShare(const LineTrack &track, char character) noexcept
{
    // Above the digits there is '*' where it means something.
    const double most = track.isScore || track.key.endsWith(QLatin1String("SA")) ||
                                track.key.endsWith(QLatin1String("SA_cons"))
                            ? 10
                            : 11;
    if (character == '*')
        return 1;
    return character >= '0' && character <= '9' ? (character - '0' + 1) / most : 0;
}

} // namespace companion
