// SPDX-License-Identifier: GPL-3.0-or-later
// What the parsers that go through a file line by line have in common: the alignment being read,
// what there is to say of it, and the first thing that is wrong.
#pragma once

#include "FormatText.h"
#include "Records.h"
#include "Result.h"
#include "TextReader.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>

namespace TAMBO::formats {

class AlignmentParser
{
protected:
    explicit AlignmentParser(TextReader &reader) : m_Reader(reader) { }
    ~AlignmentParser() = default;

    void remark(std::uint64_t line, const std::string &text)
    {
        m_Alignment.remarks.push_back(at(m_Reader.fileName(), line, text));
    }
    // Of the file as a whole.
    void remark(const std::string &text)
    {
        m_Alignment.remarks.push_back(m_Reader.fileName() + ": " + text);
    }
    // What comes after the first failure follows from it, and is not told.
    void fail(std::uint64_t line, const std::string &cause)
    {
        if (m_Outcome)
            m_Outcome = failureAt(m_Reader.fileName(), line, cause);
    }

    // What the parser of the text behind this one has found.
    void mergeRows(AlignmentParser &next)
    {
        m_Alignment.packed.append(std::move(next.m_Alignment.packed));
        std::ranges::move(next.m_Alignment.remarks, std::back_inserter(m_Alignment.remarks));
        m_Outcome = next.m_Outcome;
    }

    TextReader &m_Reader;
    AlignmentRecord m_Alignment;
    Result<void> m_Outcome;
};

} // namespace TAMBO::formats
