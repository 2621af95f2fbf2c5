// SPDX-License-Identifier: GPL-3.0-or-later
// What a result says to people, for comparing: nothing when all went well.
#pragma once

#include "Result.h"

#include <string>

template <typename T> std::string complaintOf(const TAMBO::Result<T> &result)
{
    return result ? std::string() : result.error().message();
}
