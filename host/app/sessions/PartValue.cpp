// SPDX-License-Identifier: GPL-3.0-or-later
#include "PartValue.h"

#include "Logger.h"
#include "ObjectIndex.h"
#include "ObjectSpace.h"
#include "SessionPart.h"

#include <QString>

#include <exception>
#include <memory>
#include <utility>

namespace TAMBO::app {

namespace {

using services::SessionParts;

// Parts are given their state one inside the other when one of them makes another.
class FinderScope
{
public:
    explicit FinderScope(SessionParts::Finder finder) : m_Before(SessionParts::instance().finder())
    {
        SessionParts::instance().setFinder(std::move(finder));
    }
    ~FinderScope() { SessionParts::instance().setFinder(std::move(m_Before)); }
    FinderScope(const FinderScope &) = delete;
    FinderScope &operator=(const FinderScope &) = delete;

private:
    SessionParts::Finder m_Before;
};

} // namespace

PartValue::~PartValue() = default;

bool PartValue::isPartAsked() const noexcept
{
    return m_There != nullptr && !m_IsWaiting && !m_HasFailed;
}

template <typename Task> void PartValue::call(const char *what, Task task) const
{
    QString reason;
    try {
        return task();
    } catch (const std::exception &error) {
        reason = QString::fromLocal8Bit(error.what());
    } catch (...) {
        reason = QStringLiteral("no reason is given");
    }
    m_HasFailed = true;
    Logger::Write(QStringLiteral("The part \"%1\" of a plug-in failed %2 and is left out: %3")
                      .arg(QString::fromStdString(m_Part), QLatin1String(what), reason),
                  Logger::Severity::Error);
}

std::string PartValue::store() const
{
    if (!isPartAsked())
        return m_State;
    call("to store its state", [this] {
        std::string state = m_There->store();
        const bool isTooLong = state.size() > SessionPart::kLongestState;
        if (!isTooLong)
            m_State = std::move(state);
        else if (!m_IsTooLong)
            Logger::Write(QStringLiteral("The state of the part \"%1\" of a plug-in is not kept: "
                                         "it is longer than 16 MB.")
                              .arg(QString::fromStdString(m_Part)),
                          Logger::Severity::Warning);
        m_IsTooLong = isTooLong;
    });
    return m_State;
}

Result<void> PartValue::load(std::string_view content, const ObjectIndex &objects)
{
    keep(std::string(content));
    if (m_There != nullptr)
        restore([&objects](std::uint32_t number) { return objects.find(number); });
    return {};
}

void PartValue::keep(std::string state)
{
    m_State = std::move(state);
    m_IsWaiting = true;
    changed();
}

void PartValue::restoreLate()
{
    if (m_There == nullptr || !m_IsWaiting)
        return;
    // Most states name no object.
    restore([index = std::shared_ptr<ObjectIndex>()](std::uint32_t number) mutable {
        if (index == nullptr) {
            index = std::make_shared<ObjectIndex>();
            index->addTree(ObjectSpace::get());
        }
        return index->find(number);
    });
}

void PartValue::restore(const SessionParts::Finder &finder)
{
    m_IsWaiting = false;
    const FinderScope scope(finder);
    // What is kept may change while the part reads it.
    call("to take its state", [this, state = m_State] { m_There->restore(state); });
}

void PartValue::clear()
{
    m_State.clear();
    m_IsWaiting = false;
    m_HasFailed = false;
    m_IsTooLong = false;
    changed();
    if (m_There != nullptr)
        call("to give up its state", [this] { m_There->clear(); });
}

void PartValue::setPart(SessionPart *part)
{
    m_There = part;
    m_HasFailed = false;
    m_IsTooLong = false;
    m_IsWaiting = !m_State.empty();
    changed();
}

} // namespace TAMBO::app
