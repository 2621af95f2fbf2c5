// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptValues.h"

#include "StoreReader.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace TAMBO::sessions {

KeptValue::~KeptValue() = default;

void KeptValues::add(KeptValue &value)
{
    m_Unknown.erase(value.name());
    m_Known.push_back({&value, {}});
}

void KeptValues::remove(KeptValue &value)
{
    std::erase_if(m_Known, [&](const Known &known) { return known.value == &value; });
}

std::vector<NamedValue> KeptValues::store() const
{
    std::vector<NamedValue> all;
    for (std::size_t i = 0; i < m_Known.size(); ++i) {
        const KeptValue &value = *m_Known[i].value;
        if (!value.isForFiles())
            continue;
        std::string content = value.store();
        if (!content.empty())
            all.push_back({value.name(), std::move(content)});
    }
    for (const auto &[name, content] : m_Unknown)
        all.push_back({name, content});
    return all;
}

bool KeptValues::prepare()
{
    return std::ranges::any_of(m_Known, [](const Known &known) { return known.value->prepare(); });
}

std::vector<NamedValue> KeptValues::changed()
{
    std::vector<NamedValue> changes;
    for (std::size_t i = 0; i < m_Known.size(); ++i)
        giveIfChanged(i, changes);
    for (const auto &[name, content] : m_Unknown)
        giveIfChanged(name, content, changes);
    return changes;
}

std::vector<NamedValue> KeptValues::changedBySteps()
{
    std::vector<NamedValue> changes;
    for (std::size_t i = 0; i < m_Known.size(); ++i) {
        if (m_Known[i].value->followsSteps())
            giveIfChanged(i, changes);
    }
    return changes;
}

void KeptValues::giveIfChanged(std::size_t index, std::vector<NamedValue> &changes)
{
    const KeptValue &value = *m_Known[index].value;
    const std::optional<std::uint64_t> revision = value.revision();
    if (revision && m_Known[index].revision == revision)
        return;
    m_Known[index].revision = revision;
    giveIfChanged(value.name(), value.store(), changes);
}

void KeptValues::giveIfChanged(const std::string &name, std::string content,
                               std::vector<NamedValue> &changes)
{
    std::string &given = m_Given[name];
    if (given == content)
        return;
    given = content;
    changes.push_back({name, std::move(content)});
}

void KeptValues::forgetGiven()
{
    m_Given.clear();
    for (Known &known : m_Known)
        known.revision.reset();
}

std::vector<Failure> KeptValues::load(StoreReader &store, const ObjectIndex &objects)
{
    std::vector<Failure> failures;
    clear();
    const Result<void> read =
        store.forEachValue([&](std::string_view name, std::string_view content) -> Result<void> {
            if (!content.empty())
                m_Unknown.emplace(name, content);
            return {};
        });
    if (!read)
        failures.push_back(read.error());
    // A value that is loaded may be what brings another one.
    for (std::size_t i = 0; i < m_Known.size(); ++i) {
        KeptValue &value = *m_Known[i].value;
        const std::optional<std::string> content = takeUnknown(value.name());
        if (!content)
            continue;
        if (const Result<void> done = value.load(*content, objects); !done)
            failures.emplace_back(done.error().kind, "what the session keeps as \"" + value.name() +
                                                         "\" is lost: " + done.error().cause);
    }
    return failures;
}

std::optional<std::string> KeptValues::takeUnknown(const std::string &name)
{
    auto node = m_Unknown.extract(name);
    if (node.empty())
        return std::nullopt;
    return std::move(node.mapped());
}

void KeptValues::clear()
{
    m_Unknown.clear();
    for (std::size_t i = 0; i < m_Known.size(); ++i)
        m_Known[i].value->clear();
}

} // namespace TAMBO::sessions
