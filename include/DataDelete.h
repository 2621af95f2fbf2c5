// SPDX-License-Identifier: GPL-3.0-or-later
// The guard around a deletion below an object.
#pragma once

#include "Check.h"
#include "DataPointBase.h"

template <typename T> class [[nodiscard]] DataDelete : public DataPointBase
{
public:
    DataDelete(Subscriber *originator, T *object)
        : DataPointBase(originator, Publisher::Delete, object), m_Data(object)
    {
        TAMBO_CHECK_PTR(m_Data, "../../include/DataDelete.h", 71);
    }

    // The object; only to be used while m_good holds.
    T *operator->() const
    {
        TAMBO_ASSERT(m_good, "../../include/DataDelete.h", 101);
        return m_Data;
    }
    T &operator*() const
    {
        TAMBO_ASSERT(m_good, "../../include/DataDelete.h", 101);
        return *m_Data;
    }

protected:
    T *m_Data;
};
