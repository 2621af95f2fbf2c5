// SPDX-License-Identifier: GPL-3.0-or-later
// The guard around adding to an object.
#pragma once

#include "Check.h"
#include "DataPointBase.h"

template <typename T> class [[nodiscard]] DataAdder : public DataPointBase
{
public:
    DataAdder(Subscriber *originator, T *object)
        : DataPointBase(originator, Publisher::Add, object), m_Data(object)
    {
        TAMBO_CHECK_PTR(m_Data, "../../include/DataAdder.h", 71);
    }

    // The object; only to be used while m_good holds.
    T *operator->() const
    {
        TAMBO_ASSERT(m_good, "../../include/DataAdder.h", 101);
        return m_Data;
    }
    T &operator*() const
    {
        TAMBO_ASSERT(m_good, "../../include/DataAdder.h", 101);
        return *m_Data;
    }

protected:
    T *m_Data;
};
