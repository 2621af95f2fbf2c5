// SPDX-License-Identifier: GPL-3.0-or-later
#include "Ruler.h"

#include <array>

namespace companion {

namespace {

constexpr unsigned long kFirstStep = 10;
// A number and the blank before it.
constexpr double kRoomOfNumber = 1.3;

} // namespace

unsigned long rulerStep(double numberWidth, double cellWidth) noexcept
{
    constexpr std::array<unsigned long, 3> kFactors = {1, 2, 5};
    const double needed = kRoomOfNumber * numberWidth;
    for (unsigned long ten = kFirstStep;; ten *= 10)
        for (const unsigned long factor : kFactors)
            if (const unsigned long step = ten * factor;
                double(step) * cellWidth >= needed || step > 1'000'000'000)
                return step;
}

std::vector<RulerMark> rulerMarks(unsigned long begin, unsigned long end, unsigned long step,
                                  double digitWidth, double cellWidth)
{
    std::vector<RulerMark> marks;
    for (unsigned long number = (begin / step + 1) * step; number <= end; number += step) {
        const QString text = QString::number(number);
        if (double(text.size()) * digitWidth <= double(number - begin) * cellWidth)
            marks.push_back({number - 1, text});
    }
    return marks;
}

QString rulerText(unsigned long begin, unsigned long end)
{
    QString line(qsizetype(end - begin), u' ');
    const unsigned long step = rulerStep(double(QString::number(end).size()), 1);
    for (const RulerMark &mark : rulerMarks(begin, end, step, 1, 1))
        line.replace(qsizetype(mark.col - begin) + 1 - mark.text.size(), mark.text.size(),
                     mark.text);
    return line;
}

} // namespace companion
