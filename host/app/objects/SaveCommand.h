// SPDX-License-Identifier: GPL-3.0-or-later
// Saves an object for the user.
#pragma once

class QWidget;

namespace TAMBO {
class Compound;
}

namespace TAMBO::app {

class SavedPlaces;

// Into the file that the object came from or was saved to, if that holds all of it; otherwise with
// a dialog over parent. True when it is saved; a failure has been told
// then, and what the user has called off need not be.
[[nodiscard]] bool saveObject(SavedPlaces &places, Compound &object, QWidget *parent);

} // namespace TAMBO::app
