// SPDX-License-Identifier: GPL-3.0-or-later
// The base of the guards through which every change of an object is made.
#pragma once

#include "Export.h"
#include "Publisher.h"

namespace TAMBO {
class Compound;
}

class Subscriber;

// Lives on the stack around one change. It is refused while changes are being published and while
// the object, or one above it, is locked by the user; a refused guard changes and publishes
// nothing. Guards nest: the outermost one is one step of undo, and publishes when it ends. The
// originator is not notified; with a null originator everybody is.
class TAMBO_API DataPointBase
{
public:
    DataPointBase(Subscriber *originator, Publisher::ActionType action);
    ~DataPointBase();

    DataPointBase(const DataPointBase &) = delete;
    DataPointBase &operator=(const DataPointBase &) = delete;
    static void *operator new(decltype(sizeof(0))) = delete;
    static void *operator new[](decltype(sizeof(0))) = delete;

    // Whether the change is granted.
    bool m_good;

protected:
    DataPointBase(Subscriber *originator, Publisher::ActionType action,
                  const TAMBO::Compound *object);

private:
    Subscriber *m_Originator;
    Publisher::ActionType m_Action;
};
