// SPDX-License-Identifier: GPL-3.0-or-later
#include "MeasuresText.h"

#include <QJsonArray>

#include <limits>

namespace structures {

namespace {

constexpr int kVersion = 1;
// Of an atom's name, in letters.
constexpr qsizetype kLongestName = 100;

QJsonObject atomToJson(const AtomAddress &address)
{
    if (address.isWater())
        return {{"structure", qint64(address.structure)}, {"water", qint64(address.water)}};
    return {{"chain", qint64(address.chain)},
            {"child", qint64(address.child)},
            {"atom", QString::fromStdString(address.atom)},
            {"nth", qint64(address.nth)}};
}

std::optional<std::uint32_t> number(const QJsonValue &value)
{
    const qint64 whole = value.toInteger(-1);
    if (whole < 0 || whole > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return std::uint32_t(whole);
}

std::optional<AtomAddress> atomFromJson(const QJsonObject &json)
{
    if (json.contains("water")) {
        const auto structure = number(json["structure"]);
        const auto water = number(json["water"]);
        if (!structure || !water || *water == kNone)
            return std::nullopt;
        AtomAddress address;
        address.structure = *structure;
        address.water = *water;
        return address;
    }
    const auto chain = number(json["chain"]);
    const auto child = number(json["child"]);
    const auto nth = number(json["nth"]);
    const QString atom = json["atom"].toString();
    if (!chain || !child || !nth || atom.isEmpty() || atom.size() > kLongestName)
        return std::nullopt;
    AtomAddress address{*chain, *child, atom.toStdString()};
    address.nth = *nth;
    return address;
}

std::optional<Measure> measureFromJson(const QJsonObject &json)
{
    const QJsonArray atoms = json["atoms"].toArray();
    if (std::size_t(atoms.size()) > Measure::kMost)
        return std::nullopt;
    Measure measure;
    for (const auto &atom : atoms) {
        const auto address = atomFromJson(atom.toObject());
        if (!address)
            return std::nullopt;
        measure.atoms.push_back(*address);
    }
    return measure;
}

} // namespace

QJsonObject measuresToJson(const Measures &measures)
{
    QJsonArray all;
    for (const Measure &measure : measures.all()) {
        QJsonArray atoms;
        for (const AtomAddress &atom : measure.atoms)
            atoms.append(atomToJson(atom));
        all.append(QJsonObject{{"atoms", atoms}});
    }
    return {{"version", kVersion}, {"measures", all}};
}

Measures measuresFromJson(const QJsonObject &json)
{
    Measures measures;
    if (json["version"].toInt() != kVersion)
        return measures;
    const QJsonArray all = json["measures"].toArray();
    for (const auto &one : all)
        if (auto measure = measureFromJson(one.toObject()))
            measures.add(std::move(*measure));
    return measures;
}

} // namespace structures
