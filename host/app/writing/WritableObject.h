// SPDX-License-Identifier: GPL-3.0-or-later
// A loaded alignment or structure as plain values, ready to be written as a file.
#pragma once

#include "AlignmentSnapshot.h"
#include "Records.h"
#include "Result.h"
#include "WriteOptions.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace TAMBO {
class Compound;
class Peptide;
struct WriteAids;
} // namespace TAMBO

namespace TAMBO::app {

// What is lost of a structure as it is loaded. What is said of every structure is lost by its being
// opened, not by its being written.
[[nodiscard]] std::vector<std::string> ownLossesOf(const StructureRecord &structure,
                                                   const WriteOptions &options);

class WritableObject
{
public:
    // An alignment or a structure, or a sequence, which is written as an alignment of one row.
    explicit WritableObject(const Compound &object);
    // The same. Null when that took long and the user has given it up.
    [[nodiscard]] static std::shared_ptr<const WritableObject> asked(const Compound &object);
    // One row each, in that order; there is at least one.
    WritableObject(const std::string &name, const std::vector<const Peptide *> &sequences);
    [[nodiscard]] static bool isWritable(const Compound &object);

    // The first one is the usual one.
    [[nodiscard]] std::vector<FileFormat> formats() const;
    // Whether the format can hold the object; the failure is a sentence.
    [[nodiscard]] Result<void> checkWritable(const WriteOptions &options) const;
    // What the format loses or changes, one sentence each.
    [[nodiscard]] QStringList losses(const WriteOptions &options) const;
    // Of these, what is lost of the object as it is loaded. What never was in it does not count.
    [[nodiscard]] QStringList ownLosses(const WriteOptions &options) const;
    // What no file holds of how the object is shown.
    [[nodiscard]] QStringList lostLooks() const;
    // The old file is replaced only by a complete new one that reads back the same. The log
    // tells of a file that could not be replaced and was written in place.
    [[nodiscard]] Result<void> write(const QString &path, const WriteOptions &options) const;
    // The same from any thread; what there is to tell of it stands in the aids.
    [[nodiscard]] Result<void> write(const QString &path, const WriteOptions &options,
                                     WriteAids &aids) const;

private:
    using Record = std::variant<AlignmentSnapshot, StructureRecord>;

    explicit WritableObject(Record &&record) : m_Record(std::move(record)) { }

    Record m_Record;
};

} // namespace TAMBO::app
