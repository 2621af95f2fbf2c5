// SPDX-License-Identifier: GPL-3.0-or-later
// Objects as bytes, in pieces: the piece that is asked for next is written, so that the window's
// thread can go on in between. An ObjectLoader makes the objects of the pieces again.
#pragma once

#include <cstddef>
#include <vector>

namespace TAMBO {

class ObjectSpace;
class ObjectWriter;
class StoredObject;

class ObjectStore
{
public:
    // Space with all that stands in it, and other objects, which stand nowhere: steps of undo own
    // them. None of them may change or go until all is written.
    explicit ObjectStore(const ObjectSpace &space, std::vector<const StoredObject *> others = {});
    // The objects alone, and nothing of what stands in Space.
    explicit ObjectStore(std::vector<const StoredObject *> objects);

    // Writes more, until that took as long as so many bytes take or nothing is left. The writer has
    // no more bytes then than that and one part. False at the end, when nothing more was written.
    [[nodiscard]] bool writeNext(ObjectWriter &out, std::size_t bytes);
    // Of how many objects, and how many of them are written.
    [[nodiscard]] std::size_t size() const noexcept { return m_Objects.size(); }
    [[nodiscard]] std::size_t written() const noexcept { return m_Next; }

private:
    void arrange();

    // What others refer to comes before them.
    std::vector<const StoredObject *> m_Objects;
    std::size_t m_Next = 0;
    // Of the next object.
    std::size_t m_Part = 0;
};

} // namespace TAMBO
