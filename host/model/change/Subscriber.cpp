// SPDX-License-Identifier: GPL-3.0-or-later
// Plug-ins' subscribers and publisher: the door to the list and to the step under way.
#include "Subscriber.h"

#include "ChangeSession.h"
#include "Publisher.h"
#include "SubscriberList.h"

bool Publisher::isPublishing() noexcept
{
    return TAMBO::SubscriberList::get().isPublishing();
}

Subscriber::Subscriber()
{
    TAMBO::SubscriberList::get().add(this);
}

Subscriber::~Subscriber()
{
    TAMBO::SubscriberList::get().remove(this);
    TAMBO::ChangeSession::get().forget(this);
}
