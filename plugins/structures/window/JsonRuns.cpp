// SPDX-License-Identifier: GPL-3.0-or-later
#include "JsonRuns.h"

#include <QJsonValue>
#include <QString>

#include <array>

namespace structures {

namespace {

constexpr std::array kStyleNames = {"hidden", "cartoon", "trace", "sticks", "balls", "spheres"};
// Behind the name of a style.
constexpr QLatin1Char kSideChain('+');

QJsonValue valueOf(bool value)
{
    return value;
}

QJsonValue valueOf(const ResidueStyle &style)
{
    QString text = QLatin1String(kStyleNames[std::size_t(style.style)]);
    if (style.hasSideChain)
        text += kSideChain;
    return text;
}

bool read(const QJsonValue &json, bool &value)
{
    value = json.toBool();
    return json.isBool();
}

bool read(const QJsonValue &json, ResidueStyle &style)
{
    QString text = json.toString();
    style.hasSideChain = text.endsWith(kSideChain);
    if (style.hasSideChain)
        text.chop(1);
    for (std::size_t i = 0; i < kStyleNames.size(); ++i)
        if (text == QLatin1String(kStyleNames[i])) {
            style.style = Style(i);
            return true;
        }
    return false;
}

template <typename Value> QJsonArray runs(const std::vector<Value> &values)
{
    QJsonArray json;
    for (std::size_t begin = 0; begin < values.size();) {
        std::size_t end = begin;
        while (end < values.size() && values[end] == values[begin])
            ++end;
        json.append(double(end - begin));
        json.append(valueOf(values[begin]));
        begin = end;
    }
    return json;
}

} // namespace

QJsonArray runsOf(const std::vector<bool> &values)
{
    return runs(values);
}

QJsonArray runsOf(const std::vector<ResidueStyle> &styles)
{
    return runs(styles);
}

template <typename Value>
std::optional<std::vector<Value>> readRuns(const QJsonArray &runs, std::size_t count)
{
    std::vector<Value> values;
    if (runs.size() % 2 != 0)
        return std::nullopt;
    for (qsizetype i = 0; i < runs.size(); i += 2) {
        const double length = runs[i].toDouble(-1);
        Value value{};
        if (!(length >= 1 && length <= double(count - values.size())) || !read(runs[i + 1], value))
            return std::nullopt;
        values.insert(values.end(), std::size_t(length), value);
    }
    if (values.size() != count)
        return std::nullopt;
    return values;
}

template std::optional<std::vector<bool>> readRuns(const QJsonArray &runs, std::size_t count);
template std::optional<std::vector<ResidueStyle>> readRuns(const QJsonArray &runs,
                                                           std::size_t count);

} // namespace structures
