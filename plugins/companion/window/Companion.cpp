// SPDX-License-Identifier: GPL-3.0-or-later
#include "Companion.h"

namespace companion {

Companion::Companion(TAMBO::AlignmentWindow &window)
    : m_Names(window),
      m_Zoom(window),
      m_Place(window),
      m_GoTo(new GoToBar(window)),
      m_Find(new FindBar(window)),
      m_Overview(new Overview(window))
{ }

Companion::~Companion()
{
    delete m_Overview;
    delete m_Find;
    delete m_GoTo;
}

} // namespace companion
