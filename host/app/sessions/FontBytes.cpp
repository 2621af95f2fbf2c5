// SPDX-License-Identifier: GPL-3.0-or-later
#include "FontBytes.h"

#include "ValueBytes.h"

#include <QString>

#include <cstdint>
#include <string_view>

namespace TAMBO::app {

namespace {

// A dialog offers fonts up to this size, in points; and what those may be in pixels.
constexpr double kLargestPoints = 512;
constexpr std::uint64_t kLargestPixels = 4096;
constexpr std::size_t kLongestFontName = 1000;
constexpr std::uint64_t kMostWeight = 1000;

QString readName(ValueReader &in)
{
    const std::string_view name = in.text();
    if (name.size() > kLongestFontName) {
        in.fail("the name of a font is too long");
        return {};
    }
    return QString::fromUtf8(name.data(), qsizetype(name.size()));
}

void readSize(ValueReader &in, QFont &font)
{
    if (in.flag()) {
        const double points = in.real64();
        // Whatever is not a number is not in between either.
        if (points >= 1 && points <= kLargestPoints)
            font.setPointSizeF(points);
        else
            in.fail("a font has a size that none can have");
        return;
    }
    const std::uint64_t pixels = in.number(kLargestPixels);
    if (pixels == 0)
        in.fail("a font has a size that none can have");
    else
        font.setPixelSize(int(pixels));
}

} // namespace

void writeFont(const QFont &font, ValueWriter &out)
{
    out.text(font.family().toStdString());
    out.text(font.styleName().toStdString());
    const bool isInPoints = font.pixelSize() < 0;
    out.flag(isInPoints);
    if (isInPoints)
        out.real(font.pointSizeF());
    else
        out.number(std::uint64_t(font.pixelSize()));
    out.number(std::uint64_t(font.weight()));
    out.number(std::uint64_t(font.style()));
    for (const bool is : {font.underline(), font.strikeOut(), font.overline(), font.fixedPitch()})
        out.flag(is);
}

QFont readFont(ValueReader &in)
{
    // Nothing of the program's font, which may have hints of its own.
    QFont font(readName(in), 1);
    const QString style = readName(in);
    if (!style.isEmpty())
        font.setStyleName(style);
    readSize(in, font);
    const std::uint64_t weight = in.number(kMostWeight);
    if (weight == 0)
        in.fail("a font has a weight that none can have");
    else
        font.setWeight(QFont::Weight(weight));
    font.setStyle(QFont::Style(in.number(QFont::StyleOblique)));
    font.setUnderline(in.flag());
    font.setStrikeOut(in.flag());
    font.setOverline(in.flag());
    // To ask for letters of different widths is more than not to ask for equal ones.
    if (in.flag())
        font.setFixedPitch(true);
    return font;
}

} // namespace TAMBO::app
