// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueTypes.h"

#include "ResidueScales.h"

using namespace TAMBO::services;

void ResidueTypes::Properties(std::vector<std::string> &names)
{
    for (const ResidueScale &scale : ResidueScales::instance().scales())
        names.push_back(scale.name);
}

bool ResidueTypes::GetValue(const std::string &property, char residue, float &value)
{
    const ResidueScale *scale = ResidueScales::instance().find(property);
    if (scale == nullptr)
        return false;
    const auto found = scale->values.find(residue);
    if (found == scale->values.end())
        return false;
    value = found->second;
    return true;
}
