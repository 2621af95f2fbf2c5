// SPDX-License-Identifier: GPL-3.0-or-later
// Edits as the records of a session keep them: the objects that an edit brings along stand in its
// bytes, or elsewhere when there are many of them, since writing those takes its time.
#pragma once

#include "EditBytes.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TAMBO {
class ObjectIndex;
class ObjectLoader;
class StoredObject;
} // namespace TAMBO

namespace TAMBO::sessions {

class SessionEditWriter final : public EditWriter
{
public:
    // most: of the content that stands in the edits of a step, in bytes of memory.
    explicit SessionEditWriter(std::size_t most) : m_Most(most) { }
    ~SessionEditWriter() override;

    void reference(const Compound &object) override;
    void content(const Compound &object) override;

    // The objects since the last call whose content is not in the bytes.
    [[nodiscard]] std::vector<const StoredObject *> takeElsewhere() noexcept
    {
        return std::exchange(m_Elsewhere, {});
    }
    void beginStep() noexcept { m_Inside = 0; }

private:
    std::size_t m_Most;
    // Of the step.
    std::size_t m_Inside = 0;
    std::vector<const StoredObject *> m_Elsewhere;
};

// The objects of a change that stand elsewhere, as pieces of an ObjectStore. They may refer to
// objects in edits before the first one that brings one of them along, so they are not made before.
class ObjectsElsewhere
{
public:
    explicit ObjectsElsewhere(ObjectIndex &index);
    ~ObjectsElsewhere();

    void add(std::string_view piece) { m_Pieces.emplace_back(piece); }
    // None of the change behind it.
    void clear();
    [[nodiscard]] Result<std::unique_ptr<Compound>> take(std::uint32_t identity);

private:
    ObjectIndex &m_Index;
    std::vector<std::string> m_Pieces;
    // Null before somebody asks.
    std::unique_ptr<ObjectLoader> m_Objects;
};

class SessionEditReader final : public EditReader
{
public:
    // All of them outlive this.
    SessionEditReader(std::string_view bytes, ObjectIndex &index, ObjectsElsewhere &elsewhere)
        : EditReader(bytes), m_Index(index), m_Elsewhere(elsewhere)
    { }
    ~SessionEditReader() override;

    using EditReader::reference;
    Compound *reference() override;
    ObjectIndex &index() noexcept override { return m_Index; }
    std::unique_ptr<Compound> content() override;

private:
    ObjectIndex &m_Index;
    ObjectsElsewhere &m_Elsewhere;
};

} // namespace TAMBO::sessions
