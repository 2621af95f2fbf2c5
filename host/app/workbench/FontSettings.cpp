// SPDX-License-Identifier: GPL-3.0-or-later
#include "FontSettings.h"

#include <dlfcn.h>
#include <system_error>

namespace TAMBO::app {

// They are dozens of files, and the first text that is measured waits for them. The toolkit has the
// library that reads them, or has fonts from elsewhere.
FontSettings::FontSettings()
{
    using Read = int (*)();
    const auto read = reinterpret_cast<Read>(::dlsym(RTLD_DEFAULT, "FcInit"));
    if (read == nullptr)
        return;
    try {
        m_Reading = std::thread(read);
    } catch (const std::system_error &) {
        // Without a thread to be had, the first text reads them.
    }
}

FontSettings::~FontSettings()
{
    if (m_Reading.joinable())
        m_Reading.join();
}

} // namespace TAMBO::app
