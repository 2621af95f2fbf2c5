// SPDX-License-Identifier: GPL-3.0-or-later
// Has the system's settings of fonts read while the toolkit connects to the screen, plug-ins are
// loaded and the first file begins to be read.
#pragma once

#include <thread>

namespace TAMBO::app {

// Lives from before the application is made until after. Nobody may ask for a font meanwhile, which
// would read them once more.
class FontSettings
{
public:
    FontSettings();
    // Waits until they are read.
    ~FontSettings();
    FontSettings(const FontSettings &) = delete;
    FontSettings &operator=(const FontSettings &) = delete;

private:
    std::thread m_Reading;
};

} // namespace TAMBO::app
