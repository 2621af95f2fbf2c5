// SPDX-License-Identifier: GPL-3.0-or-later
#include "StepName.h"

#include "ChangeSession.h"
#include "Text.h"

#include <algorithm>

StepName::StepName(const std::string &name)
{
    constexpr std::size_t kLongest = 100;
    TAMBO::ChangeSession &session = TAMBO::ChangeSession::get();
    if (!session.isOpen())
        return;
    std::string shown(TAMBO::shortened(name, kLongest));
    if (!TAMBO::isUtf8(shown))
        return;
    std::ranges::replace_if(shown, TAMBO::isControl, ' ');
    session.nameStep(shown);
}
