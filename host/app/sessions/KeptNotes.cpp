// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptNotes.h"

#include "ObjectIndex.h"
#include "Text.h"
#include "ValueBytes.h"

#include <limits>
#include <utility>

namespace TAMBO::app {

namespace {

constexpr std::uint64_t kNotesVersion = 1;
constexpr std::uint64_t kMostNumber = std::numeric_limits<std::uint32_t>::max();

// For a window.
std::string readText(ValueReader &in)
{
    std::string text(in.text());
    if (!isUtf8(text))
        in.fail("a text is damaged");
    return text;
}

} // namespace

std::string KeptNotes::store() const
{
    if (m_Notes.all().empty())
        return {};
    ValueWriter out;
    out.number(kNotesVersion);
    out.number(m_Notes.all().size());
    for (const auto &[identity, note] : m_Notes.all()) {
        out.number(identity);
        out.text(note.title);
        out.number(note.values.size());
        for (const auto &[name, value] : note.values) {
            out.text(name);
            out.text(value);
        }
    }
    return out.take();
}

ObjectNotes::Notes KeptNotes::read(ValueReader &in)
{
    constexpr std::size_t kLeastOfNote = 3;
    constexpr std::size_t kLeastOfValue = 2;
    ObjectNotes::Notes notes;
    if (in.number() != kNotesVersion)
        in.fail("it was written by a newer version of the program");
    for (std::size_t i = in.count(kLeastOfNote); i > 0 && !in.failed(); --i) {
        const auto identity = static_cast<std::uint32_t>(in.number(kMostNumber));
        ObjectNote note;
        note.title = readText(in);
        for (std::size_t values = in.count(kLeastOfValue); values > 0 && !in.failed(); --values) {
            std::string name = readText(in);
            note.values.emplace_back(std::move(name), readText(in));
        }
        notes[identity] = std::move(note);
    }
    if (!in.atEnd())
        in.fail("there is something behind the notes");
    return notes;
}

Result<void> KeptNotes::load(std::string_view content, const ObjectIndex &objects)
{
    ValueReader in(content);
    ObjectNotes::Notes notes = read(in);
    if (in.failed())
        return Failure(FailureKind::BadInput, in.cause());
    std::erase_if(notes, [&](const auto &entry) { return objects.find(entry.first) == nullptr; });
    m_Notes.setAll(std::move(notes));
    return {};
}

std::optional<std::uint64_t> KeptNotes::revision() const
{
    return m_Notes.revision();
}

void KeptNotes::clear()
{
    m_Notes.setAll({});
}

} // namespace TAMBO::app
