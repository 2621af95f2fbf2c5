// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionDocument.h"

#include "History.h"
#include "ValueBytes.h"

#include <QFileInfo>

namespace TAMBO::app {

namespace {

void storeState(ValueWriter &out, const std::optional<FileState> &state)
{
    out.flag(state.has_value());
    if (!state)
        return;
    out.number(state->device);
    out.number(state->inode);
    out.number(state->size);
    out.signedNumber(state->changed);
    out.flag(state->hash.has_value());
    out.number(state->hash.value_or(0));
}

std::optional<FileState> loadState(ValueReader &in)
{
    if (!in.flag())
        return std::nullopt;
    FileState state;
    state.device = in.number();
    state.inode = in.number();
    state.size = in.number();
    state.changed = in.signedNumber();
    const bool hasHash = in.flag();
    const std::uint64_t hash = in.number();
    if (hasHash)
        state.hash = hash;
    return state;
}

} // namespace

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
    storeState(out, m_FileState);
    const std::optional<std::size_t> steps =
        m_State ? m_History.stepsTo(*m_State) : std::optional<std::size_t>();
    out.flag(steps.has_value());
    out.number(steps.value_or(0));
    return out.take();
}

Result<void> SessionDocument::load(std::string_view content, const ObjectIndex &)
{
    ValueReader in(content);
    const std::string file(in.text());
    const std::optional<FileState> fileState = loadState(in);
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
