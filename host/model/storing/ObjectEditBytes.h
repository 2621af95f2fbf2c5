// SPDX-License-Identifier: GPL-3.0-or-later
// Edits as bytes, in which objects have their numbers.
#pragma once

#include "EditBytes.h"

#include <memory>
#include <string_view>

namespace TAMBO {

class ObjectIndex;
class ObjectLoader;

// Where the content of objects goes that an edit owns.
enum class ObjectContents {
    // Into the edit's bytes.
    Inside,
    // Somebody else keeps it, together with that of all others.
    Elsewhere
};

class ObjectEditWriter final : public EditWriter
{
public:
    explicit ObjectEditWriter(ObjectContents contents) : m_Contents(contents) { }
    ~ObjectEditWriter() override;

    void reference(const Compound &object) override;
    void content(const Compound &object) override;

private:
    ObjectContents m_Contents;
};

class ObjectEditReader final : public EditReader
{
public:
    // All of them outlive this. elsewhere: what has the objects whose content is elsewhere; null
    // when it is inside.
    ObjectEditReader(std::string_view bytes, ObjectIndex &index, ObjectLoader *elsewhere = nullptr)
        : EditReader(bytes), m_Index(index), m_Elsewhere(elsewhere)
    { }
    ~ObjectEditReader() override;

    using EditReader::reference;
    Compound *reference() override;
    ObjectIndex &index() noexcept override { return m_Index; }
    std::unique_ptr<Compound> content() override;

private:
    ObjectIndex &m_Index;
    ObjectLoader *m_Elsewhere;
};

} // namespace TAMBO
