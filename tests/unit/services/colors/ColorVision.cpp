// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColorVision.h"

#include <QColor>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

const Matrix kSame = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
const Matrix kProtanopia = {{{0.152286, 1.052583, -0.204868},
                             {0.114503, 0.786281, 0.099216},
                             {-0.003882, -0.048116, 1.051998}}};
const Matrix kDeuteranopia = {{{0.367322, 0.860646, -0.227968},
                               {0.280085, 0.672501, 0.047413},
                               {-0.011820, 0.042940, 0.968881}}};
const Matrix kTritanopia = {{{1.255528, -0.076749, -0.178779},
                             {-0.078411, 0.930809, 0.147602},
                             {0.004733, 0.691367, 0.303900}}};
// From linear sRGB to CIE XYZ.
const Matrix kToXyz = {{{0.4124564, 0.3575761, 0.1804375},
                        {0.2126729, 0.7151522, 0.0721750},
                        {0.0193339, 0.1191920, 0.9503041}}};

Triple operator*(const Matrix &matrix, const Triple &v)
{
    Triple product{};
    for (std::size_t row = 0; row < 3; ++row)
        product[row] = matrix[row][0] * v[0] + matrix[row][1] * v[1] + matrix[row][2] * v[2];
    return product;
}

Triple linear(Color color)
{
    const QColor parts = color.toQColor();
    const auto toLinear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return {toLinear(parts.redF()), toLinear(parts.greenF()), toLinear(parts.blueF())};
}

LabColor toLab(const Triple &linearColor)
{
    const Triple xyz = kToXyz * linearColor;
    const Triple white = kToXyz * Triple{1, 1, 1};
    Triple f{};
    for (std::size_t i = 0; i < 3; ++i) {
        const double share = xyz[i] / white[i];
        f[i] = share > 216.0 / 24389 ? std::cbrt(share) : (24389.0 / 27 * share + 16) / 116;
    }
    return {116 * f[1] - 16, 500 * (f[0] - f[1]), 200 * (f[1] - f[2])};
}

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180;
}

double hueOf(double a, double b)
{
    const double degrees = std::atan2(b, a) * 180 / std::numbers::pi;
    return degrees < 0 ? degrees + 360 : degrees;
}

double seventh(double chroma)
{
    const double power = std::pow(chroma, 7);
    return std::sqrt(power / (power + std::pow(25.0, 7)));
}

} // namespace

const char *nameOf(Vision vision)
{
    switch (vision) {
    case Vision::Normal:
        return "normal";
    case Vision::Protanopia:
        return "protanopia";
    case Vision::Deuteranopia:
        return "deuteranopia";
    case Vision::Tritanopia:
        return "tritanopia";
    }
    return "";
}

LabColor seenBy(Vision vision, Color color)
{
    const Matrix &matrix = vision == Vision::Protanopia     ? kProtanopia
                           : vision == Vision::Deuteranopia ? kDeuteranopia
                           : vision == Vision::Tritanopia   ? kTritanopia
                                                            : kSame;
    Triple seen = matrix * linear(color);
    for (double &part : seen)
        part = std::clamp(part, 0.0, 1.0);
    return toLab(seen);
}

double colorDifference(const LabColor &first, const LabColor &second)
{
    const double meanC = (std::hypot(first.a, first.b) + std::hypot(second.a, second.b)) / 2;
    const double stretch = 1.5 - 0.5 * seventh(meanC);
    const double a1 = first.a * stretch;
    const double a2 = second.a * stretch;
    const double c1 = std::hypot(a1, first.b);
    const double c2 = std::hypot(a2, second.b);
    const double h1 = hueOf(a1, first.b);
    const double h2 = hueOf(a2, second.b);
    const bool isGrey = c1 * c2 == 0;

    double turn = isGrey ? 0 : h2 - h1;
    if (turn > 180)
        turn -= 360;
    else if (turn < -180)
        turn += 360;
    const double deltaL = second.lightness - first.lightness;
    const double deltaC = c2 - c1;
    const double deltaH = 2 * std::sqrt(c1 * c2) * std::sin(radians(turn / 2));

    const double l = (first.lightness + second.lightness) / 2;
    const double c = (c1 + c2) / 2;
    double h = h1 + h2;
    if (!isGrey && std::abs(h1 - h2) > 180)
        h += h < 360 ? 360 : -360;
    if (!isGrey)
        h /= 2;
    const double t = 1 - 0.17 * std::cos(radians(h - 30)) + 0.24 * std::cos(radians(2 * h)) +
                     0.32 * std::cos(radians(3 * h + 6)) - 0.20 * std::cos(radians(4 * h - 63));
    const double around50 = (l - 50) * (l - 50);
    const double weightL = 1 + 0.015 * around50 / std::sqrt(20 + around50);
    const double weightC = 1 + 0.045 * c;
    const double weightH = 1 + 0.015 * c * t;
    const double blue = 30 * std::exp(-std::pow((h - 275) / 25, 2));
    const double rotation = -std::sin(radians(2 * blue)) * 2 * seventh(c);
    const double partL = deltaL / weightL;
    const double partC = deltaC / weightC;
    const double partH = deltaH / weightH;
    return std::sqrt(partL * partL + partC * partC + partH * partH + rotation * partC * partH);
}

double letterContrast(Color cell)
{
    const QColor parts = cell.toQColor();
    const int grey = (11 * parts.red() + 16 * parts.green() + 5 * parts.blue()) >> 5;
    const double luminance = (kToXyz * linear(cell))[1];
    return grey <= 126 ? 1.05 / (luminance + 0.05) : (luminance + 0.05) / 0.05;
}
