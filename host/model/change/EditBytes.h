// SPDX-License-Identifier: GPL-3.0-or-later
// Edits as bytes, and what is made of them again: for steps of undo that outlive the program.
#pragma once

#include "Edit.h"
#include "Result.h"
#include "ValueBytes.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace TAMBO {

class ObjectIndex;

// Each kind of edit begins with its own. The numbers stand in files: none is ever given to another
// kind.
enum class EditTag : std::uint8_t {
    Gap = 1,
    RowMove = 2,
    InsertRows = 3,
    RemoveRows = 4,
    OpenColumns = 5,
    CloseColumns = 6,
    RemoveColumns = 7,
    RestoreColumns = 8,
    ColumnText = 9,
    ReplaceColumns = 10,
    Objects = 11,
    Name = 12,
    ObjectColor = 13,
    Value = 14,
    ResidueColors = 15,
    ResidueNumbers = 16,
    Ties = 17,
    Places = 18,
    GroupNumber = 19,
    Motion = 20,
    RowOrder = 21,
    RemoveRuns = 22,
    RestoreRuns = 23,
    Annotation = 24
};

// Who knows the kinds of objects says how they are named and what they consist of.
class EditWriter : public ValueWriter
{
public:
    virtual ~EditWriter() = default;
    EditWriter(const EditWriter &) = delete;
    EditWriter &operator=(const EditWriter &) = delete;

    void tag(EditTag tag) { number(static_cast<std::uint64_t>(tag)); }
    // By which the object is found again, wherever it is then.
    virtual void reference(const Compound &object) = 0;
    // An object that the edit owns, or brings along, with all that is in it.
    virtual void content(const Compound &object) = 0;

    // Of which each is greater than the one before.
    void ascendingNumbers(std::span<const std::size_t> values);

protected:
    EditWriter() = default;
};

class EditReader : public ValueReader
{
public:
    virtual ~EditReader() = default;
    EditReader(const EditReader &) = delete;
    EditReader &operator=(const EditReader &) = delete;

    // Null, and the reader has failed, when there is no such object.
    [[nodiscard]] virtual Compound *reference() = 0;
    // Which leads to all objects there are.
    [[nodiscard]] virtual ObjectIndex &index() noexcept = 0;
    [[nodiscard]] virtual std::unique_ptr<Compound> content() = 0;

    // One of that class.
    template <typename Kind> [[nodiscard]] Kind *reference()
    {
        auto *const found = dynamic_cast<Kind *>(reference());
        if (found == nullptr)
            fail("an object is of the wrong kind");
        return found;
    }
    [[nodiscard]] std::vector<std::size_t> ascendingNumbers();
    // A text that is there as long as the program runs: kinds of edits are literals elsewhere.
    [[nodiscard]] const char *kind();
    // The failure as whoever asked for the edit is told it.
    [[nodiscard]] Failure failure() const;

protected:
    using ValueReader::ValueReader;
};

using LoadedEdit = Result<std::unique_ptr<Edit>>;

} // namespace TAMBO
