// SPDX-License-Identifier: GPL-3.0-or-later
#include "OpenedSession.h"

#include "SessionReading.h"
#include "StoreReader.h"

#include <utility>

namespace TAMBO::app {

OpenedSession::OpenedSession() = default;

OpenedSession::~OpenedSession()
{
    // Steps refer to objects.
    m_History.clear();
    ObjectSpace::get().reset();
}

Result<std::unique_ptr<OpenedSession>> OpenedSession::open(const std::filesystem::path &file)
{
    std::unique_ptr<OpenedSession> session(new OpenedSession);
    auto reader = sessions::openSession(file);
    if (!reader)
        return reader.error();
    session->m_Reader = std::move(reader).value();
    Result<sessions::SessionOrigin> origin = sessions::originOf(*session->m_Reader);
    if (!origin)
        return origin.error();
    session->m_Origin = std::move(origin).value();
    if (const Result<void> read = sessions::readSession(*session->m_Reader, ObjectSpace::get(),
                                                        session->m_History, session->m_Index);
        !read)
        return read.error();
    return session;
}

Result<void> OpenedSession::loadObjects(const std::filesystem::path &file)
{
    auto reader = sessions::openSession(file);
    if (!reader)
        return reader.error();
    History history;
    ObjectIndex index;
    return sessions::readSession(*reader.value(), ObjectSpace::get(), history, index);
}

} // namespace TAMBO::app
