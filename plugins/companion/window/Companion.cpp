// SPDX-License-Identifier: GPL-3.0-or-later
#include "Companion.h"

namespace companion {

Companion::Companion(TAMBO::AlignmentWindow &window)
    : m_Names(window), m_Zoom(window), m_Place(window), m_GoTo(new GoToBar(window))
{ }

Companion::~Companion()
{
    delete m_GoTo;
}

} // namespace companion
