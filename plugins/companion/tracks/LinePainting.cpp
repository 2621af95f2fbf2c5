// SPDX-License-Identifier: GPL-3.0-or-later
#include "LinePainting.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QPolygonF>

#include <algorithm>

namespace companion {

namespace {

constexpr QColor kHelixColor(226, 128, 128);
constexpr QColor kStrandColor(240, 205, 90);
constexpr QColor kSymbolEdge(70, 70, 70);
constexpr QColor kBarColor(120, 130, 170);
constexpr QColor kTickColor(90, 90, 90);
// Letters are drawn where there is room for them.
constexpr int kReadableLetter = 6;
constexpr int kSeparatedBar = 4;
// Of the height, at each side.
constexpr double kBesideShaft = 0.28;
constexpr int kBesideName = 6;

// Columns with the same element, gaps in between left out.
struct Piece
{
    char element = ' ';
    std::size_t begin = 0;
    std::size_t end = 0;
    // Behind some gaps the same element goes on.
    bool goesOn = false;
};

std::vector<Piece> piecesOf(const std::string &text)
{
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char element = elementOf(text[i]);
        if (element == ' ')
            continue;
        if (!pieces.empty() && pieces.back().element == element) {
            if (pieces.back().end == i) {
                ++pieces.back().end;
                continue;
            }
            pieces.back().goesOn = element != '-' && element != 'T';
        }
        pieces.push_back({element, i, i + 1});
    }
    return pieces;
}

void paintHelix(QPainter &painter, const QRectF &place)
{
    const double round = std::min(place.width(), place.height()) / 2;
    painter.setBrush(kHelixColor);
    painter.drawRoundedRect(place, round, round);
}

void paintStrand(QPainter &painter, const QRectF &place, bool hasHead)
{
    const double inset = place.height() * kBesideShaft;
    const QRectF shaft = place.adjusted(0, inset, 0, -inset);
    painter.setBrush(kStrandColor);
    if (!hasHead) {
        painter.drawRect(shaft);
        return;
    }
    const double head = std::min(place.width(), place.height() * 0.75);
    const double neck = place.right() - head;
    painter.drawPolygon(
        QPolygonF({shaft.topLeft(), QPointF(neck, shaft.top()), QPointF(neck, place.top()),
                   QPointF(place.right(), place.center().y()), QPointF(neck, place.bottom()),
                   QPointF(neck, shaft.bottom()), shaft.bottomLeft()}));
}

void paintSymbols(QPainter &painter, const std::string &text, const QRect &first)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(kSymbolEdge);
    const std::vector<Piece> pieces = piecesOf(text);
    const auto left = [&first](std::size_t column) {
        return first.left() + double(column) * first.width();
    };
    const double middle = first.top() + first.height() / 2.0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Piece &piece = pieces[i];
        const QRectF place(left(piece.begin), first.top() + 0.5,
                           left(piece.end) - left(piece.begin), first.height() - 1.0);
        if (piece.goesOn)
            painter.drawLine(QPointF(place.right(), middle),
                             QPointF(left(pieces[i + 1].begin), middle));
        if (piece.element == 'H')
            paintHelix(painter, place);
        else if (piece.element == 'E')
            paintStrand(painter, place, !piece.goesOn);
        else
            painter.drawLine(QPointF(place.left(), middle), QPointF(place.right(), middle));
        // A turn is a bow above the line.
        if (piece.element == 'T' && place.width() > 2) {
            painter.setBrush(Qt::NoBrush);
            painter.drawArc(place.adjusted(0, place.height() / 4, 0, place.height() / 4), 0,
                            180 * 16);
        }
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void paintBars(QPainter &painter, const LineTrack &track, const std::string &text,
               const QRect &first)
{
    const int width = first.width() - (first.width() >= kSeparatedBar ? 1 : 0);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const double share = lineShare(track, text[i]);
        if (share <= 0)
            continue;
        const int height = std::max(1, qRound(share * first.height()));
        painter.fillRect(first.left() + int(i) * first.width(),
                         first.top() + first.height() - height, width, height, kBarColor);
    }
}

void paintLetters(QPainter &painter, const std::string &text, const QRect &first)
{
    if (first.width() < kReadableLetter) {
        for (std::size_t i = 0; i < text.size(); ++i)
            if (text[i] != ' ' && text[i] != '-' && text[i] != '_' && text[i] != '~')
                painter.fillRect(first.left() + int(i) * first.width(),
                                 first.top() + first.height() / 4, first.width(),
                                 first.height() / 2, kTickColor);
        return;
    }
    QFont font = painter.font();
    // As high as wide cells let it be, and no larger than the names.
    const int size = std::min(first.height() - 1, first.width() * 5 / 3);
    font.setPixelSize(std::clamp(size, 1, QFontMetrics(font).height() - 1));
    painter.save();
    painter.setFont(font);
    painter.setPen(Qt::black);
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != ' ')
            painter.drawText(first.translated(int(i) * first.width(), 0),
                             Qt::AlignCenter | Qt::TextDontClip, QString(QLatin1Char(text[i])));
    painter.restore();
}

} // namespace

void paintLine(QPainter &painter, const LineTrack &track, const std::string &text,
               const QRect &first)
{
    switch (track.look) {
    case LineTrack::Look::Symbols:
        return paintSymbols(painter, text, first);
    case LineTrack::Look::Bars:
        return paintBars(painter, track, text, first);
    case LineTrack::Look::Letters:
        return paintLetters(painter, text, first);
    }
}

void paintLineName(QPainter &painter, const LineTrack &track, const QRect &place)
{
    const QRect text = place.adjusted(kBesideName / 2, 0, -kBesideName, 0);
    painter.setPen(Qt::black);
    painter.drawText(
        text, Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip,
        painter.fontMetrics().elidedText(track.name, Qt::ElideMiddle, std::max(0, text.width())));
}

} // namespace companion
