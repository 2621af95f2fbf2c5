// SPDX-License-Identifier: GPL-3.0-or-later
// Small alignments written as text, and a history to take their changes back.
#pragma once

#include "Alignment.h"
#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "Edit.h"
#include "Hooks.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "Revisions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// Keeps the inverses of each step, as the workbench's history does, without limits.
class StepStack : public TAMBO::EditRecorder
{
public:
    using Step = std::vector<std::unique_ptr<TAMBO::Edit>>;

    StepStack() { TAMBO::setEditRecorder(this); }
    ~StepStack() override { TAMBO::setEditRecorder(nullptr); }

    void begin() override { m_Open.emplace(); }
    void record(std::unique_ptr<TAMBO::Edit> inverse) override
    {
        m_Redo.clear();
        if (m_Open)
            m_Open->push_back(std::move(inverse));
        else
            m_Undo.emplace_back().push_back(std::move(inverse));
    }
    void end() override
    {
        if (!m_Open->empty())
            m_Undo.push_back(std::move(*m_Open));
        m_Open.reset();
    }

    [[nodiscard]] std::size_t undoCount() const { return m_Undo.size(); }
    [[nodiscard]] std::size_t redoCount() const { return m_Redo.size(); }
    [[nodiscard]] const Step &last() const { return m_Undo.back(); }
    [[nodiscard]] std::vector<std::string> lastKinds() const
    {
        std::vector<std::string> kinds;
        for (const auto &edit : m_Undo.back())
            kinds.emplace_back(edit->kind());
        return kinds;
    }
    void undo() { move(m_Undo, m_Redo); }
    void redo() { move(m_Redo, m_Undo); }
    void clear()
    {
        m_Redo.clear();
        m_Undo.clear();
    }

private:
    static void move(std::vector<Step> &from, std::vector<Step> &to)
    {
        const TAMBO::ChangeScope scope;
        Step step = std::move(from.back());
        from.pop_back();
        Step inverse;
        for (auto edit = step.rbegin(); edit != step.rend(); ++edit) {
            inverse.push_back((*edit)->apply());
            if (TAMBO::isOfStructures(inverse.back()->part()))
                TAMBO::growStructureRevision();
        }
        to.push_back(std::move(inverse));
    }

    std::vector<Step> m_Undo;
    std::vector<Step> m_Redo;
    std::optional<Step> m_Open;
};

inline std::vector<std::string> rowsOf(const TAMBO::Alignment &alignment)
{
    std::vector<std::string> rows;
    for (unsigned long row = 0; row < alignment.height(); ++row)
        rows.push_back(alignment.GetSequence(row, false));
    return rows;
}

inline std::vector<std::string> namesOf(const TAMBO::Alignment &alignment)
{
    std::vector<std::string> names;
    for (unsigned long row = 0; row < alignment.height(); ++row)
        names.push_back(alignment.GetSeqName(row));
    return names;
}

class AlignmentFixture : public ::testing::Test
{
protected:
    using Range = TAMBO::Alignment::Range;
    using Texts = std::vector<std::string>;

    AlignmentFixture()
    {
        TAMBO::modelHooks().log = [this](const std::string &message, TAMBO::LogSeverity) {
            log.push_back(message);
        };
    }
    ~AlignmentFixture() override
    {
        history.clear();
        TAMBO::ObjectSpace::get().reset();
        TAMBO::modelHooks() = {};
    }

    // A sequence of its own at the top level.
    TAMBO::Peptide &peptide(const std::string &name, const std::string &letters)
    {
        auto made = std::make_unique<TAMBO::Peptide>(name, letters);
        TAMBO::Peptide &result = *made;
        TAMBO::ObjectSpace::get().add(std::move(made));
        history.clear();
        return result;
    }

    // Rows of sequences "s0", "s1", ... that are made for it.
    TAMBO::Alignment &alignment(const Texts &rows, const std::string &name = "test")
    {
        std::vector<std::pair<TAMBO::Peptide *, std::string>> sequences;
        for (const std::string &row : rows) {
            std::string letters = row;
            std::erase(letters, '-');
            sequences.emplace_back(&peptide("s" + std::to_string(m_Sequences++), letters), row);
        }
        return alignmentOf(sequences, name);
    }

    TAMBO::Alignment &alignmentOf(const std::vector<std::pair<TAMBO::Peptide *, std::string>> &rows,
                                  const std::string &name = "test")
    {
        TAMBO::AlignmentTable::Rows made;
        unsigned long width = 0;
        for (const auto &[sequence, text] : rows) {
            TAMBO::GappedSequence cells;
            cells.append(text);
            made.push_back(std::make_unique<TAMBO::AlignmentRow>(
                *sequence, TAMBO::OccupancyRow(std::move(cells.occupancy))));
            width = std::max<unsigned long>(width, text.size());
        }
        auto owned = TAMBO::AlignmentTable::make(name, std::move(made), width);
        TAMBO::Alignment &result = *owned;
        TAMBO::ObjectSpace::get().add(std::move(owned));
        history.clear();
        return result;
    }

    static TAMBO::Peptide &sequence(const TAMBO::Alignment &alignment, unsigned long row)
    {
        return *TAMBO::Peptide::from(alignment.GetSeq(row));
    }

    StepStack history;
    std::vector<std::string> log;

private:
    int m_Sequences = 0;
};
