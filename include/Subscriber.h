// SPDX-License-Identifier: GPL-3.0-or-later
// Base of everything that follows the changes of the workbench's objects.
#pragma once

#include "Export.h"

// Registered while it exists. A notification says only that some object was updated, added or
// deleted. Subscribers may come and go during a notification.
class TAMBO_API Subscriber
{
public:
    virtual ~Subscriber();
    virtual void commUpdate() = 0;
    virtual void commAdd() = 0;
    virtual void commDelete() = 0;

    Subscriber(const Subscriber &) = delete;
    Subscriber &operator=(const Subscriber &) = delete;

protected:
    Subscriber();
};
