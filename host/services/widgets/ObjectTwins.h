// SPDX-License-Identifier: GPL-3.0-or-later
// What tells the objects of a list apart that have the same name: their files, places in the tree,
// lengths, and at last their order.
#pragma once

#include <QString>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace TAMBO {
class Compound;
}

namespace TAMBO::services {

class ObjectTwins
{
public:
    using Objects = std::vector<const Compound *>;
    // What a list shows of an object.
    using NameOf = std::function<std::string(const Compound &object)>;

    // Of longer lists nobody reads the names one by one.
    static constexpr std::size_t kMost = 20'000;

    // What is to stand behind each name: empty where the name is that of one object of the list
    // alone, and in a list of more than kMost.
    [[nodiscard]] static std::vector<QString> differences(const Objects &objects,
                                                          const NameOf &nameOf);
    // The names with that in brackets.
    [[nodiscard]] static QString label(const QString &name, const QString &difference);
    // The full name, with a remark in brackets, and the file below it, where one is known.
    [[nodiscard]] static QString toolTip(const Compound &object, const QString &remark = {});
    // "223 residues", "6 × 303", "2 chains".
    [[nodiscard]] static QString sizeText(const Compound &object);
};

} // namespace TAMBO::services
