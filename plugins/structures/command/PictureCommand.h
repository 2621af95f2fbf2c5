// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

struct ProgramCommand;

namespace structures {

// `tambo picture FILE... --output X.png`: the structures of files as a picture, without a screen.
void makePicture(ProgramCommand &call);

} // namespace structures
