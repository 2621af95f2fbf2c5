// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectOrigins.h"

#include "Alignment.h"
#include "PointerMap.h"
#include "Space.h"

#include <cstddef>
#include <utility>

namespace TAMBO::services {

namespace {

struct KnownOrigins
{
    ObjectOrigins::FileOf fileOf;
    ObjectOrigins::Picked picked;
};

KnownOrigins &knownOrigins()
{
    static KnownOrigins origins;
    return origins;
}

} // namespace

void ObjectOrigins::install(FileOf fileOf, Picked picked)
{
    knownOrigins() = {std::move(fileOf), std::move(picked)};
}

void ObjectOrigins::remove()
{
    knownOrigins() = {};
}

QString ObjectOrigins::fileOf(const Compound &object)
{
    return filesOf({&object}).front();
}

std::vector<QString> ObjectOrigins::filesOf(const std::vector<const Compound *> &objects)
{
    std::vector<QString> files(objects.size());
    const FileOf &fileOf = knownOrigins().fileOf;
    if (!fileOf)
        return files;
    PointerMap<Compound, std::size_t> sequences;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        files[i] = fileOf(*objects[i]);
        if (files[i].isEmpty() && objects[i]->Kind() == CompoundKind::Sequence)
            sequences[*objects[i]] = i;
    }
    if (sequences.empty())
        return files;
    for (const Compound *const object : *Space::instance()) {
        if (object == nullptr || object->Kind() != CompoundKind::Alignment)
            continue;
        const QString file = fileOf(*object);
        if (file.isEmpty())
            continue;
        const auto &alignment = dynamic_cast<const Alignment &>(*object);
        for (unsigned long row = 0; row < alignment.height(); ++row) {
            const Compound *const sequence = alignment.GetSeq(row);
            const std::size_t *const place =
                sequence == nullptr ? nullptr : std::as_const(sequences).find(*sequence);
            if (place != nullptr && files[*place].isEmpty())
                files[*place] = file;
        }
    }
    return files;
}

std::vector<Compound *> ObjectOrigins::picked()
{
    return knownOrigins().picked ? knownOrigins().picked() : std::vector<Compound *>();
}

} // namespace TAMBO::services
