// SPDX-License-Identifier: GPL-3.0-or-later
// Puts the services into the places where the model and the toolkit look for them.
#pragma once

namespace TAMBO::services {

// Messages of the model and the toolkit go to the log, and the colour of selected residues comes
// from the settings. To be called once, when the application object exists.
void installServices();

} // namespace TAMBO::services
