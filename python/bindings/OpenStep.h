// SPDX-License-Identifier: GPL-3.0-or-later
// A step of undo that is held open.
#pragma once

#include "ChangeScope.h"
#include "StepName.h"

#include <string>

namespace TAMBO::script {

class OpenStep
{
public:
    explicit OpenStep(const std::string &name) : m_Name(name) { }

private:
    ChangeScope m_Scope;
    StepName m_Name;
};

} // namespace TAMBO::script
