// SPDX-License-Identifier: GPL-3.0-or-later
// The name of the alignment that a window shows, behind the window's own caption.
#pragma once

#include "AlignmentViewObserver.h"
#include "Subscriber.h"

#include <QString>

namespace companion {

class Caption : public TAMBO::AlignmentViewObserver, public Subscriber
{
public:
    explicit Caption(TAMBO::AlignmentWindow &window);
    // The caption is as it was before.
    ~Caption() override;

    void alignmentShown() override { show(); }

    void commUpdate() override { show(); }
    void commAdd() override { }
    void commDelete() override { }

private:
    void show();

    QString m_Own;
};

} // namespace companion
