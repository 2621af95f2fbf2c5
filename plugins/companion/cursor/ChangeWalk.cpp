// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChangeWalk.h"

#include "Alignment.h"

namespace companion {

namespace {

constexpr int kCellsBetweenLooksAtTheClock = 256;

bool isAlongRow(Toward toward)
{
    return toward == Toward::Left || toward == Toward::Right;
}

} // namespace

ChangeWalk::ChangeWalk(const TAMBO::Alignment &alignment, const TAMBO::CellIndex &from,
                       Toward toward)
    : m_Alignment(alignment),
      m_From(from),
      m_Toward(toward),
      m_At(isAlongRow(toward) ? from.col : from.row),
      m_Count(isAlongRow(toward) ? alignment.width() : alignment.height())
{ }

bool ChangeWalk::isGap(unsigned long at) const
{
    const char letter = isAlongRow(m_Toward) ? m_Alignment.letterAt(m_From.row, at)
                                             : m_Alignment.letterAt(at, m_From.col);
    return letter == '\0';
}

TAMBO::CellIndex ChangeWalk::place() const noexcept
{
    return isAlongRow(m_Toward) ? TAMBO::CellIndex{m_From.row, m_At}
                                : TAMBO::CellIndex{m_At, m_From.col};
}

bool ChangeWalk::step()
{
    if (m_Toward == Toward::Right || m_Toward == Toward::Down) {
        if (m_At + 1 >= m_Count)
            return false;
        ++m_At;
    } else {
        if (m_At == 0)
            return false;
        if (--m_At == 0)
            return false;
    }
    return isGap(m_At) == isGap(m_At - 1);
}

bool ChangeWalk::goOn(std::chrono::microseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    do {
        for (int cell = 0; cell < kCellsBetweenLooksAtTheClock; ++cell)
            if (!step())
                return false;
    } while (std::chrono::steady_clock::now() < end);
    return true;
}

} // namespace companion
