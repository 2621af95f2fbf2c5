// SPDX-License-Identifier: GPL-3.0-or-later
#include "LongWork.h"

#include "ChangeSession.h"
#include "Hooks.h"
#include "LongStages.h"

#include <algorithm>

namespace TAMBO {

namespace {

int s_LongWorks = 0;

} // namespace

LongWork::LongWork(const char *what, std::size_t pieces, Kind kind)
    : m_What(what),
      m_Pieces(pieces),
      m_Kind(kind),
      m_IsOutermost(++s_LongWorks == 1),
      m_Stages(m_IsOutermost ? LongStages::entered() : nullptr)
{ }

LongWork::~LongWork()
{
    --s_LongWorks;
    if (m_IsOutermost && m_Stages == nullptr && modelHooks().worked)
        modelHooks().worked();
}

bool LongWork::goesOnAt(std::size_t done)
{
    const bool isFirst = m_Done == 0;
    m_Done = isFirst ? 1 : done + 1;
    return !m_IsGivenUp && look();
}

bool LongWork::look()
{
    if (!m_IsOutermost || !modelHooks().working)
        return true;
    if (m_Done == 1)
        m_CanBeGivenUp = m_Kind == Kind::Reading ||
                         (m_Kind == Kind::Changing && ChangeSession::get().canTakeBack());
    const double share = m_Pieces == 0 ? 0 : std::min(1.0, double(m_Done - 1) / double(m_Pieces));
    m_IsGivenUp = !modelHooks().working(m_Stages != nullptr ? m_Stages->what() : m_What,
                                        m_Stages != nullptr ? m_Stages->shareOf(share) : share,
                                        m_CanBeGivenUp) &&
                  m_CanBeGivenUp;
    if (m_IsGivenUp && m_Kind == Kind::Changing)
        ChangeSession::get().takeBackChanges();
    return !m_IsGivenUp;
}

} // namespace TAMBO
