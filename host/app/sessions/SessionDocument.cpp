// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionDocument.h"

#include "FileStateBytes.h"
#include "History.h"
#include "ValueBytes.h"

#include <QFileInfo>

namespace TAMBO::app {

SessionDocument::~SessionDocument() = default;

bool SessionDocument::isModified() const noexcept
{
    return hasFile() && m_State != m_History.state();
}

std::vector<bool> SessionDocument::holds(const std::vector<const Compound *> &objects) const
{
    if (!hasFile() || !m_State)
        return std::vector<bool>(objects.size(), false);
    return m_History.areAsInState(objects, *m_State);
}

QString SessionDocument::title() const
{
    return hasFile() ? tr("%1[*] – Tambo").arg(QFileInfo(m_File).fileName()) : tr("Tambo");
}

void SessionDocument::noteFile(const QString &file, const std::optional<FileState> &fileState,
                               std::uint64_t state)
{
    m_File = QFileInfo(file).absoluteFilePath();
    m_FileState = fileState;
    m_State = state;
    m_WasModified = isModified();
    emit changed();
}

void SessionDocument::follow()
{
    if (isModified() == m_WasModified)
        return;
    m_WasModified = !m_WasModified;
    emit changed();
}

std::string SessionDocument::store() const
{
    if (!hasFile())
        return {};
    ValueWriter out;
    out.text(m_File.toStdString());
    out.flag(m_FileState.has_value());
    if (m_FileState) {
        out.flag(m_FileState->hash.has_value());
        writeFileState(*m_FileState, out);
    }
    const std::optional<std::size_t> steps =
        m_State ? m_History.stepsTo(*m_State) : std::optional<std::size_t>();
    out.flag(steps.has_value());
    out.number(steps.value_or(0));
    return out.take();
}

Result<void> SessionDocument::load(std::string_view content, const ObjectIndex &)
{
    ValueReader in(content);
    const std::string file(in.fileName());
    std::optional<FileState> fileState;
    if (in.flag()) {
        const bool hasHash = in.flag();
        fileState = readFileState(in, hasHash);
    }
    const bool isKnown = in.flag();
    const std::uint64_t steps = in.number();
    if (in.failed() || file.empty())
        return Failure(FailureKind::BadInput, "the name of the session's file is damaged");
    m_File = QString::fromStdString(file);
    m_FileState = fileState;
    m_State = isKnown ? m_History.stateAfter(steps) : std::nullopt;
    m_WasModified = isModified();
    emit changed();
    return {};
}

void SessionDocument::clear()
{
    m_File.clear();
    m_FileState.reset();
    m_State.reset();
    m_WasModified = false;
    emit changed();
}

} // namespace TAMBO::app

#include "moc_SessionDocument.cpp"
