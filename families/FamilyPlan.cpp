// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyPlan.h"

#include "Bits.h"
#include "FormatText.h"
#include "Text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>

namespace TAMBO::families {

namespace {

constexpr std::size_t kWord = sizeof(std::uint64_t);
constexpr char kGap = '-';

std::uint64_t wordAt(const std::string &text, std::size_t place) noexcept
{
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + place, kWord);
    return word;
}

// The rows as capitals, filled up with gaps to whole words, eight columns of which are compared at
// a time.
class ComparedRows
{
public:
    explicit ComparedRows(const Family &family)
    {
        std::size_t width = 0;
        for (const FamilyRow &row : family.rows)
            width = std::max(width, row.text.size());
        m_Size = (width + kWord - 1) / kWord * kWord;
        m_Texts.reserve(family.rows.size());
        for (const FamilyRow &row : family.rows)
            m_Texts.push_back(upperCase(row.text) + std::string(m_Size - row.text.size(), kGap));
    }

    [[nodiscard]] std::size_t identical(std::size_t a, std::size_t b) const noexcept
    {
        std::size_t count = 0;
        for (std::size_t i = 0; i < m_Size; i += kWord) {
            const std::uint64_t here = wordAt(m_Texts[a], i);
            const std::uint64_t same = bits::sameBytes(here, wordAt(m_Texts[b], i));
            // Two unknown residues need not be the same one.
            count += bits::count(same & ~bits::sameBytes(here, kGaps) &
                                 ~bits::sameBytes(here, kUnknowns));
        }
        return count;
    }
    [[nodiscard]] std::size_t aligned(std::size_t a, std::size_t b) const noexcept
    {
        std::size_t count = 0;
        for (std::size_t i = 0; i < m_Size; ++i)
            count += m_Texts[a][i] != kGap && m_Texts[b][i] != kGap ? 1 : 0;
        return count;
    }
    [[nodiscard]] std::size_t residues(std::size_t row) const noexcept
    {
        return m_Size - std::size_t(std::ranges::count(m_Texts[row], kGap));
    }

private:
    static constexpr std::uint64_t kGaps = 0x2d2d2d2d2d2d2d2dU;
    static constexpr std::uint64_t kUnknowns = 0x5858585858585858U;

    std::size_t m_Size = 0;
    std::vector<std::string> m_Texts;
};

Failure refused(std::string sentence)
{
    return {FailureKind::Refused, std::move(sentence)};
}

std::string quoted(const std::string &name)
{
    return formats::shown(std::string_view(name));
}

class Planning
{
public:
    Planning(const Family &family, const ModelsOrder &order)
        : m_Family(family), m_Order(order), m_Rows(family)
    {
        for (std::size_t row = 0; row < family.rows.size(); ++row) {
            m_ByName[family.rows[row].name].push_back(row);
            if (family.rows[row].hasStructure)
                m_WithStructure.push_back(row);
        }
    }

    [[nodiscard]] Result<std::vector<PlannedModel>> run()
    {
        if (m_WithStructure.empty())
            return refused("no row of " + quoted(m_Family.name) +
                           " has a structure that could be a template");
        std::optional<std::size_t> given;
        if (!m_Order.templateName.empty()) {
            const Result<std::size_t> found = givenTemplate();
            if (!found)
                return found.error();
            given = found.value();
        }
        const Result<std::vector<std::size_t>> targets = targetRows(given);
        if (!targets)
            return targets.error();
        std::vector<PlannedModel> plan;
        plan.reserve(targets.value().size());
        for (const std::size_t target : targets.value()) {
            const Result<PlannedModel> model = planOne(target, given);
            if (!model)
                return model.error();
            plan.push_back(model.value());
        }
        return plan;
    }

private:
    [[nodiscard]] Result<std::size_t> onlyRow(const std::string &name) const
    {
        const auto found = m_ByName.find(name);
        if (found == m_ByName.end())
            return Failure{FailureKind::NotFound,
                           quoted(m_Family.name) + " has no row called " + quoted(name)};
        if (found->second.size() > 1)
            return refused(std::to_string(found->second.size()) + " rows are called " +
                           quoted(name) + "; which of them is meant cannot be told");
        return found->second.front();
    }
    [[nodiscard]] Result<std::size_t> givenTemplate() const
    {
        const Result<std::size_t> row = onlyRow(m_Order.templateName);
        if (row && !m_Family.rows[row.value()].hasStructure)
            return refused("the row " + quoted(m_Order.templateName) +
                           " has no structure and cannot be a template");
        return row;
    }
    [[nodiscard]] Result<std::vector<std::size_t>>
    targetRows(const std::optional<std::size_t> &given) const
    {
        std::vector<std::size_t> rows;
        if (m_Order.targets.empty()) {
            for (std::size_t row = 0; row < m_Family.rows.size(); ++row) {
                if (!m_Family.rows[row].hasStructure)
                    rows.push_back(row);
            }
            if (rows.empty())
                return refused("all rows of " + quoted(m_Family.name) +
                               " have a structure; say of which ones models are to be built");
            return rows;
        }
        std::set<std::size_t> asked;
        for (const std::string &name : m_Order.targets) {
            const Result<std::size_t> row = onlyRow(name);
            if (!row)
                return row.error();
            if (row.value() == given)
                return refused("the target " + quoted(name) + " is the template itself");
            asked.insert(row.value());
        }
        rows.assign(asked.begin(), asked.end());
        return rows;
    }

    [[nodiscard]] Result<PlannedModel> planOne(std::size_t target,
                                               const std::optional<std::size_t> &given) const
    {
        PlannedModel model;
        model.target = target;
        model.residues = m_Rows.residues(target);
        if (given) {
            model.templateRow = *given;
            model.identical = m_Rows.identical(target, *given);
        } else {
            bool isFound = false;
            for (const std::size_t row : m_WithStructure) {
                if (row == target)
                    continue;
                const std::size_t identical = m_Rows.identical(target, row);
                if (!isFound || identical > model.identical) {
                    model.templateRow = row;
                    model.identical = identical;
                }
                isFound = true;
            }
            if (!isFound)
                return refused("the target " + quoted(m_Family.rows[target].name) +
                               " is the only row with a structure, so it has no template");
            if (model.identical == 0)
                model.templateRow = firstThatShares(target, model.templateRow);
        }
        model.aligned = m_Rows.aligned(target, model.templateRow);
        return model;
    }
    // Without a column in common there is nothing to build on.
    [[nodiscard]] std::size_t firstThatShares(std::size_t target, std::size_t otherwise) const
    {
        const auto found = std::ranges::find_if(m_WithStructure, [&](std::size_t row) {
            return row != target && m_Rows.aligned(target, row) > 0;
        });
        return found == m_WithStructure.end() ? otherwise : *found;
    }

    const Family &m_Family;
    const ModelsOrder &m_Order;
    ComparedRows m_Rows;
    std::unordered_map<std::string, std::vector<std::size_t>> m_ByName;
    std::vector<std::size_t> m_WithStructure;
};

} // namespace

Result<std::vector<PlannedModel>> planModels(const Family &family, const ModelsOrder &order)
{
    return Planning(family, order).run();
}

} // namespace TAMBO::families
