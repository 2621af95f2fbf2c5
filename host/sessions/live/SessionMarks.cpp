// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionMarks.h"

#include "KeptValues.h"
#include "StoredObject.h"

namespace TAMBO::sessions {

SessionMarks::SessionMarks(ObjectSpace &space, KeptValues &values)
    : m_Values(values),
      m_Alignments("alignment-marks", true, space),
      m_Others("marks", false, space)
{
    m_Values.add(m_Alignments);
    m_Values.add(m_Others);
    setMarkFollower(this);
}

SessionMarks::~SessionMarks()
{
    if (markFollower() == this)
        setMarkFollower(nullptr);
    m_Values.remove(m_Others);
    m_Values.remove(m_Alignments);
}

void SessionMarks::marksChanged(StoredObject &object)
{
    (object.marksFollowSteps() ? m_Alignments : m_Others).note(object);
}

} // namespace TAMBO::sessions
