// SPDX-License-Identifier: GPL-3.0-or-later
#include "Setting.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

// Point sizes that a text can be read at.
constexpr double kSmallestFont = 1;
constexpr double kLargestFont = 400;

template <typename T> T report(bool *ok, bool success, T value)
{
    if (ok != nullptr)
        *ok = success;
    return value;
}

QString trimmedText(const std::optional<std::string> &value)
{
    return value ? QString::fromStdString(*value).trimmed() : QString();
}

bool isOneOf(const QString &text, const std::array<const char *, 4> &words)
{
    return std::ranges::any_of(words, [&](const char *word) {
        return text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
    });
}

// How many fields the toolkit's own description of a font has, over its versions.
constexpr int kFewestFields = 10;
constexpr int kMostFields = 17;

// "Family", "Family, size" or the toolkit's description; the toolkit itself would take any text at
// all for a family name.
bool isDescription(const QStringList &fields)
{
    if (fields.first().trimmed().isEmpty())
        return false;
    bool isNumber = false;
    fields.first().toDouble(&isNumber);
    if (isNumber)
        return false;
    if (fields.size() == 1)
        return true;
    const double size = fields.at(1).toDouble(&isNumber);
    if (fields.size() > 2)
        return isNumber && fields.size() >= kFewestFields && fields.size() <= kMostFields;
    return isNumber && size >= kSmallestFont && size <= kLargestFont;
}

} // namespace

bool Setting::ToBool(bool *ok) const
{
    const QString text = trimmedText(m_Value);
    if (isOneOf(text, {"true", "yes", "on", "1"}))
        return report(ok, true, true);
    return report(ok, isOneOf(text, {"false", "no", "off", "0"}), false);
}

QFont Setting::ToFont(bool *ok) const
{
    const QString text = trimmedText(m_Value);
    const QStringList fields = text.split(',');
    QFont font;
    const bool good = !text.isEmpty() && isDescription(fields) &&
                      (fields.size() > 2 ? font.fromString(text) : true);
    if (!good)
        return report(ok, false, QFont());
    if (fields.size() <= 2)
        font.setFamily(fields.first().trimmed());
    if (fields.size() == 2)
        font.setPointSizeF(fields.at(1).toDouble());
    return report(ok, true, font);
}

float Setting::ToFloat(bool *ok) const
{
    bool isNumber = false;
    const double value = ToDouble(&isNumber);
    const bool good = isNumber && std::abs(value) <= double(std::numeric_limits<float>::max());
    return report(ok, good, good ? float(value) : 0.0F);
}

double Setting::ToDouble(bool *ok) const
{
    bool isNumber = false;
    const double value = trimmedText(m_Value).toDouble(&isNumber);
    const bool good = isNumber && std::isfinite(value);
    return report(ok, good, good ? value : 0.0);
}

std::string Setting::ToString(bool *ok) const
{
    return report(ok, m_Value.has_value(), m_Value.value_or(std::string()));
}
