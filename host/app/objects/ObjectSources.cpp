// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectSources.h"

#include "Compound.h"
#include "StoredObject.h"

#include <utility>

namespace TAMBO::app {

void ObjectSources::set(const Compound &object, const std::filesystem::path &file)
{
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(file, error);
    m_Files[identityOf(object)] = error ? file : absolute;
    ++m_Revision;
}

void ObjectSources::setFiles(Files files)
{
    m_Files = std::move(files);
    ++m_Revision;
}

std::filesystem::path ObjectSources::fileOf(const Compound &object) const
{
    for (const Compound *at = &object; at != nullptr; at = at->Parent()) {
        const auto found = m_Files.find(identityOf(*at));
        if (found != m_Files.end())
            return found->second;
    }
    return {};
}

} // namespace TAMBO::app
