// SPDX-License-Identifier: GPL-3.0-or-later
// Objects that somebody holds on to while a menu or a dialog is open: those that leave the
// workbench meanwhile drop out.
#pragma once

#include "Subscriber.h"

#include <vector>

namespace TAMBO {
class Compound;
}

namespace TAMBO::app {

class ObjectReferences : private Subscriber
{
public:
    explicit ObjectReferences(std::vector<Compound *> objects);
    ~ObjectReferences() override;

    [[nodiscard]] const std::vector<Compound *> &objects() const noexcept { return m_Objects; }

private:
    void commUpdate() override;
    void commAdd() override;
    void commDelete() override;

    std::vector<Compound *> m_Objects;
};

// Whether the object hangs in the tree of loaded objects.
[[nodiscard]] bool isLoaded(const Compound &object);

} // namespace TAMBO::app
