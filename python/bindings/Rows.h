// SPDX-License-Identifier: GPL-3.0-or-later
// A row of an alignment as Python holds it: it stays the same row when others come, go or move.
#pragma once

#include "ProcessModel.h"
#include "Records.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO::script {

class RowReference
{
public:
    RowReference(const AlignmentReference &alignment, std::size_t row);

    [[nodiscard]] const AlignmentReference &alignment() const noexcept { return m_Alignment; }
    [[nodiscard]] const ChainReference &chain() const noexcept { return m_Chain; }
    // Where it stands now; a GoneError when it has left the alignment.
    [[nodiscard]] std::size_t index() const;
    // With a '-' for each gap.
    [[nodiscard]] std::string text(std::size_t begin, std::size_t end) const;

    friend bool operator==(const RowReference &a, const RowReference &b)
    {
        return a.m_Alignment == b.m_Alignment && a.m_Chain == b.m_Chain;
    }

private:
    AlignmentReference m_Alignment;
    ChainReference m_Chain;
    // Where it stood last.
    mutable std::size_t m_Hint;
};

// A ValueError unless the text is one line, as files have it. what: for the message.
void checkLine(const std::string &text, const char *what);
// The same for one word, by which Stockholm says what a line is.
void checkTag(const std::string &tag);
// The same for a line with a character for each column, which is one byte.
void checkColumnTexts(const std::string &tag, const std::string &text, std::size_t width);
// Of a dictionary of lines, in its order; a TypeError when it has anything else.
[[nodiscard]] std::vector<std::pair<std::string, std::string>>
textsByTag(const pybind11::dict &lines);
// From pairs of a tag and a text.
[[nodiscard]] std::vector<Annotation>
annotationsOf(const std::vector<std::pair<std::string, std::string>> &remarks);

} // namespace TAMBO::script
