// SPDX-License-Identifier: GPL-3.0-or-later
// What is unsaved, found in the simplest way: every step anew for every question.
#pragma once

#include "Alignment.h"
#include "AlignmentTable.h"
#include "FreedObjects.h"
#include "History.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "Structure.h"

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// Stands between the model of the objects and the history, and notes what each step changes.
class UnsavedModel final : public TAMBO::EditRecorder
{
public:
    using Unsaved = std::vector<std::pair<const TAMBO::Compound *, TAMBO::EditParts>>;

    explicit UnsavedModel(TAMBO::History &history) : m_History(history)
    {
        TAMBO::setEditRecorder(this);
        history.setFreeCallback([this](const TAMBO::FreedObjects &freed) { forget(freed); });
    }
    ~UnsavedModel() override
    {
        m_History.setFreeCallback({});
        TAMBO::setEditRecorder(&m_History);
    }

    void begin() override
    {
        m_Recorded.clear();
        m_History.begin();
    }
    void record(std::unique_ptr<TAMBO::Edit> inverse) override
    {
        std::vector<const TAMBO::Compound *> holders;
        if (!isTravelling() && TAMBO::isWork(inverse->part()))
            inverse->appendHolders(holders);
        for (const TAMBO::Compound *holder : holders)
            m_Recorded.emplace_back(holder, inverse->part());
        m_History.record(std::move(inverse));
    }
    void describe(const std::string &name, std::size_t own) override
    {
        m_History.describe(name, own);
    }
    void end() override
    {
        if (isTravelling()) {
            m_History.end();
            return;
        }
        dropBehind(m_History.position());
        m_Steps.push_back(m_Recorded);
        m_History.end();
        dropFront(m_Steps.size() - m_History.size());
    }
    [[nodiscard]] bool isTravelling() const noexcept override { return m_History.isTravelling(); }

    // ---- What is done with the history

    bool goTo(std::size_t position)
    {
        const bool isThere = m_History.goTo(position);
        dropFront(position - m_History.position());
        dropBehind(m_History.size());
        return isThere;
    }
    void markSaved(const TAMBO::Compound &object)
    {
        save(object, {m_Forgotten + m_History.position(), {}});
        m_History.markSaved(object);
    }
    void markWritten(const TAMBO::Compound &object)
    {
        m_Written[&object] = {m_Forgotten + m_History.position(), {}};
        m_History.markWritten(object);
    }
    void acceptWritten(const TAMBO::Compound &object)
    {
        if (const auto mark = m_Written.find(&object); mark != m_Written.end())
            save(object, mark->second);
        m_History.acceptWritten(object);
    }

    // ---- What is unsaved

    [[nodiscard]] TAMBO::EditParts partsOf(const TAMBO::Compound &object) const
    {
        const auto mark = m_Saved.find(&object);
        const bool isMarked = mark != m_Saved.end();
        TAMBO::EditParts parts = between(object, isMarked ? mark->second.steps : 0);
        if (isMarked) {
            parts.add(mark->second.lost);
            parts.add(ofRows(object, mark->second.steps));
        }
        return parts;
    }
    [[nodiscard]] Unsaved unsaved() const
    {
        Unsaved all;
        for (const TAMBO::Compound *object : *TAMBO::Space::instance()) {
            if (const TAMBO::EditParts parts = partsOf(*object); !parts.empty())
                all.emplace_back(object, parts);
        }
        Unsaved kept;
        for (const auto &[object, parts] : all) {
            const auto *const sequence = dynamic_cast<const TAMBO::Peptide *>(object);
            bool isShown = false;
            for (const TAMBO::Alignment *alignment :
                 TAMBO::ObjectSpace::get().referrers<TAMBO::Alignment>()) {
                const bool isFollowed = m_Saved.contains(alignment) || !partsOf(*alignment).empty();
                isShown = isShown || (sequence != nullptr && isFollowed &&
                                      alignment->table().holds(*sequence));
            }
            if (!isShown)
                kept.emplace_back(object, parts);
        }
        return kept;
    }

private:
    using Changes = std::vector<std::pair<const TAMBO::Compound *, TAMBO::EditPart>>;
    struct Mark
    {
        std::size_t steps = 0;
        TAMBO::EditParts lost;
    };
    using Marks = std::map<const TAMBO::Compound *, Mark>;

    static const TAMBO::Compound *topOf(const TAMBO::Compound *object)
    {
        while (object != nullptr && object->Parent() != TAMBO::Space::instance())
            object = object->Parent();
        return object;
    }
    // The changes of the steps [first, end), counted from the beginning.
    [[nodiscard]] Changes changes(std::size_t first, std::size_t end) const
    {
        Changes all;
        for (std::size_t i = first; i < end; ++i) {
            const Changes &step = i < m_Forgotten ? m_Dropped[i] : m_Steps[i - m_Forgotten];
            all.insert(all.end(), step.begin(), step.end());
        }
        return all;
    }
    [[nodiscard]] Changes changesSince(std::size_t saved) const
    {
        const std::size_t now = m_Forgotten + m_History.position();
        return changes(std::min(saved, now), std::max(saved, now));
    }
    static TAMBO::EditParts ofObject(const Changes &changes, const TAMBO::Compound &object)
    {
        TAMBO::EditParts parts;
        for (const auto &[holder, part] : changes) {
            if (topOf(holder) == &object)
                parts.add(part);
        }
        return parts;
    }
    [[nodiscard]] TAMBO::EditParts between(const TAMBO::Compound &object, std::size_t saved) const
    {
        return ofObject(changesSince(saved), object);
    }
    [[nodiscard]] TAMBO::EditParts ofRows(const TAMBO::Compound &object, std::size_t saved) const
    {
        return ofRows(changesSince(saved), object);
    }
    static TAMBO::EditParts ofRows(const Changes &changes, const TAMBO::Compound &object)
    {
        TAMBO::EditParts parts;
        const auto *const alignment = dynamic_cast<const TAMBO::Alignment *>(&object);
        for (std::size_t i = 0; alignment != nullptr && i < alignment->table().rowCount(); ++i) {
            const TAMBO::AlignmentRow &row = alignment->table().row(i);
            const TAMBO::Peptide &sequence = row.sequence();
            const auto *const structure = dynamic_cast<const TAMBO::Structure *>(sequence.Parent());
            const bool hasName = row.label() != nullptr && !row.label()->name.empty();
            for (const auto &[holder, part] : changes) {
                const bool isOwn = holder == &sequence;
                bool isChain = isOwn && structure != nullptr;
                if (sequence.hasTies())
                    sequence.forEachTiedChain([&](const TAMBO::Peptide &chain) {
                        isChain = isChain || holder == &chain;
                    });
                if (part == TAMBO::EditPart::Name && !hasName &&
                    (isOwn || (structure != nullptr && holder == structure)))
                    parts.add(TAMBO::EditPart::RowNames);
                if (part == TAMBO::EditPart::Numbers && isChain)
                    parts.add(TAMBO::EditPart::HeaderNumbers);
                if (structure == nullptr && isOwn &&
                    (part == TAMBO::EditPart::Numbers || part == TAMBO::EditPart::Elements))
                    parts.add(part);
            }
        }
        return parts;
    }

    // Sequences that it shows are in its file.
    void save(const TAMBO::Compound &object, const Mark &mark)
    {
        m_Saved[&object] = mark;
        const auto *const alignment = dynamic_cast<const TAMBO::Alignment *>(&object);
        for (const auto &[holder, part] : changes(0, m_Forgotten + m_Steps.size())) {
            const TAMBO::Compound *const top = topOf(holder);
            const auto *const sequence = dynamic_cast<const TAMBO::Peptide *>(top);
            if (alignment != nullptr && sequence != nullptr && alignment->table().holds(*sequence))
                m_Saved[top] = mark;
        }
    }
    void dropFront(std::size_t count)
    {
        for (; count > 0; --count) {
            m_Dropped.push_back(m_Steps.front());
            m_Steps.pop_front();
            ++m_Forgotten;
        }
    }
    void dropBehind(std::size_t first)
    {
        const std::size_t end = m_Forgotten + first;
        for (Marks *marks : {&m_Saved, &m_Written}) {
            for (auto &[object, mark] : *marks) {
                if (mark.steps <= end)
                    continue;
                const Changes dropped = changes(end, mark.steps);
                mark.lost.add(ofObject(dropped, *object));
                mark.lost.add(ofRows(dropped, *object));
                mark.steps = end;
            }
        }
        m_Steps.resize(std::min(m_Steps.size(), first));
    }
    void forget(const TAMBO::FreedObjects &freed)
    {
        const auto forgetIn = [&freed](Changes &changes) {
            std::erase_if(changes, [&freed](const auto &change) {
                const TAMBO::Compound *object = change.first;
                while (object != nullptr && !freed.contains(object))
                    object = object->Parent();
                return object != nullptr;
            });
        };
        for (Changes &step : m_Steps)
            forgetIn(step);
        for (Changes &step : m_Dropped)
            forgetIn(step);
        for (Marks *marks : {&m_Saved, &m_Written})
            std::erase_if(*marks, [&](const auto &entry) { return freed.contains(entry.first); });
    }

    TAMBO::History &m_History;
    Changes m_Recorded;
    std::deque<Changes> m_Steps;
    std::vector<Changes> m_Dropped;
    std::size_t m_Forgotten = 0;
    Marks m_Saved;
    Marks m_Written;
};
