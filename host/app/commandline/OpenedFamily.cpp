// SPDX-License-Identifier: GPL-3.0-or-later
#include "OpenedFamily.h"

#include "Alignment.h"
#include "FormatText.h"
#include "SessionFile.h"

#include <algorithm>
#include <utility>

namespace TAMBO::app {

namespace {

namespace fs = std::filesystem;

std::string shownFile(const fs::path &file)
{
    return formats::cleanText(file.string());
}

std::vector<Alignment *> alignmentsIn(const ObjectSpace &space)
{
    std::vector<Alignment *> alignments;
    for (std::size_t i = 0; i < space.objectCount(); ++i) {
        if (auto *const alignment = dynamic_cast<Alignment *>(space.object(i)))
            alignments.push_back(alignment);
    }
    return alignments;
}

} // namespace

Result<std::unique_ptr<OpenedFamily>> OpenedFamily::open(const FamilyOrder &order)
{
    std::unique_ptr<OpenedFamily> opened(new OpenedFamily);
    opened->m_File = order.files.front();
    const Result<std::vector<Alignment *>> alignments = opened->read(order);
    if (!alignments)
        return alignments.error();
    if (const Result<void> chosen = opened->choose(alignments.value(), order); !chosen)
        return chosen.error();
    return opened;
}

Result<std::vector<Alignment *>> OpenedFamily::read(const FamilyOrder &order)
{
    if (sessions::isSessionFile(m_File)) {
        if (order.files.size() > 1)
            return Failure{FailureKind::Refused,
                           "is a session, which has its structures itself; name no further files",
                           {shownFile(m_File)}};
        auto session = OpenedSession::open(m_File);
        if (!session)
            return session.error();
        m_Session = std::move(session).value();
        return alignmentsIn(OpenedSession::space());
    }
    // The family last.
    for (std::size_t i = 1; i <= order.files.size(); ++i) {
        LoadReport report = m_Loader.openNow(order.files[i % order.files.size()]);
        if (!report.failures.empty())
            return report.failures.front().failure;
        if (i == order.files.size())
            return std::move(report.alignments);
    }
    return std::vector<Alignment *>();
}

Result<void> OpenedFamily::choose(const std::vector<Alignment *> &alignments,
                                  const FamilyOrder &order)
{
    std::vector<Alignment *> found = alignments;
    if (order.object)
        std::erase_if(
            found, [&](const Alignment *alignment) { return alignment->Name() != *order.object; });
    const std::string called = order.object ? " called " + formats::cleanText(*order.object) : "";
    if (found.empty())
        return Failure{FailureKind::BadInput, "holds no alignment" + called, {shownFile(m_File)}};
    if (found.size() > 1)
        return Failure{FailureKind::Refused,
                       "holds " + std::to_string(found.size()) + " alignments" + called +
                           (order.object ? "" : "; say which one with --object NAME"),
                       {shownFile(m_File)}};
    m_Alignment = found.front();
    return {};
}

} // namespace TAMBO::app
