// SPDX-License-Identifier: GPL-3.0-or-later
// Objects as bytes, in pieces: the piece that is asked for next is written, so that the window's
// thread can go on in between. An ObjectLoader makes the objects of the pieces again.
#pragma once

#include "KeptRows.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace TAMBO {

class ObjectSpace;
class ObjectWriter;
class StoredObject;

class ObjectStore
{
public:
    // Space with all that stands in it, and other objects, which stand nowhere: steps of undo own
    // them. None of them may come or go until all is written, and none may change but alignments:
    // after that goBack() is called or, of single rows, before it keepRow() or keepMove(). No
    // object is looked at before its turn.
    explicit ObjectStore(const ObjectSpace &space, std::vector<const StoredObject *> others = {});
    // The objects alone, and nothing of what stands in Space.
    explicit ObjectStore(std::vector<const StoredObject *> objects);

    // Writes more, until that took as long as so many bytes take or nothing is left. The writer has
    // no more bytes then than that and one part, and never of alignments together with others.
    // False at the end, when nothing more was written.
    [[nodiscard]] bool writeNext(ObjectWriter &out, std::size_t bytes);
    // Of how many objects, and how many of them are written.
    [[nodiscard]] std::size_t size() const noexcept;
    [[nodiscard]] std::size_t written() const noexcept { return m_Written; }

    // What all pieces so far have been about.
    [[nodiscard]] bool hasBegunAlignments() const noexcept { return m_HasBegunAlignments; }
    // A row of an alignment is about to change, or to go to another place: what is still to be
    // written is written as it is now.
    void keepRow(const StoredObject &alignment, std::size_t row);
    // False when that cannot be.
    [[nodiscard]] bool keepMove(const StoredObject &alignment, std::size_t from, std::size_t to);
    // Whether what is left takes no longer than writing so many bytes.
    [[nodiscard]] bool isBelow(std::size_t bytes) const;

    // To before the first alignment. Those are written once more, with Space, which is behind them.
    void goBack();

private:
    // What comes next, and null behind the last one.
    [[nodiscard]] const StoredObject *findNext();
    [[nodiscard]] bool areOthersDone() const noexcept;
    [[nodiscard]] bool isWritten(const StoredObject &alignment) const noexcept;
    [[nodiscard]] std::size_t partCount(const StoredObject &object) const;
    void writePart(const StoredObject &object, ObjectWriter &out);

    const ObjectSpace *m_Space = nullptr;
    std::vector<const StoredObject *> m_Others;
    // Of what stands in Space and the others behind it; alignments among them are only noted.
    std::size_t m_Next = 0;
    // They refer to sequences, which come before them.
    std::vector<const StoredObject *> m_Alignments;
    std::size_t m_NextAlignment = 0;
    // Of some that are not written yet.
    std::unordered_map<const StoredObject *, KeptRows> m_Kept;
    bool m_IsSpaceWritten = false;
    bool m_HasBegunAlignments = false;
    std::size_t m_Written = 0;
    // Of the next object.
    std::size_t m_Part = 0;
};

} // namespace TAMBO
