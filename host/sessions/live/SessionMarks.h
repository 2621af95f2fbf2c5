// SPDX-License-Identifier: GPL-3.0-or-later
// What is selected and locked, and the ranges of alignments, as values of a session: they change
// without a step of undo, so no record of the steps has them.
#pragma once

#include "MarkFollower.h"
#include "MarkedObjects.h"

namespace TAMBO::sessions {

class KeptValues;

class SessionMarks final : public MarkFollower
{
public:
    // Follows, and is among the values, as long as it lives.
    SessionMarks(ObjectSpace &space, KeptValues &values);
    ~SessionMarks() override;

    void marksChanged(StoredObject &object) override;

private:
    KeptValues &m_Values;
    MarkedObjects m_Alignments;
    MarkedObjects m_Others;
};

} // namespace TAMBO::sessions
