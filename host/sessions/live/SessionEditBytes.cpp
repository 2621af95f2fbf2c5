// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionEditBytes.h"

#include "Compound.h"
#include "ObjectEditBytes.h"
#include "ObjectLoader.h"
#include "ObjectReference.h"
#include "StoredObject.h"

#include <limits>

namespace TAMBO::sessions {

SessionEditWriter::~SessionEditWriter() = default;

void SessionEditWriter::reference(const Compound &object)
{
    storeReference(object, *this);
}

void SessionEditWriter::content(const Compound &object)
{
    const StoredObject &stored = *StoredObject::from(&object);
    // Once one is elsewhere, all that come after it are: they may refer to it.
    if (m_Inside <= m_Most)
        m_Inside += stored.bytes();
    const bool isInside = m_Inside <= m_Most;
    flag(isInside);
    if (isInside) {
        ObjectEditWriter inside(ObjectContents::Inside);
        inside.content(object);
        text(inside.bytes());
    } else {
        number(stored.identity());
        m_Elsewhere.push_back(&stored);
    }
}

ObjectsElsewhere::ObjectsElsewhere(ObjectIndex &index) : m_Index(index) { }

ObjectsElsewhere::~ObjectsElsewhere() = default;

void ObjectsElsewhere::clear()
{
    m_Pieces.clear();
    m_Objects.reset();
}

Result<std::unique_ptr<Compound>> ObjectsElsewhere::take(std::uint32_t identity)
{
    if (m_Objects == nullptr) {
        m_Objects = std::make_unique<ObjectLoader>(m_Index);
        for (std::string &piece : m_Pieces) {
            if (const Result<void> done = m_Objects->read(piece); !done)
                return done.error();
            piece = {};
        }
        if (const Result<void> done = m_Objects->complete(); !done)
            return done.error();
    }
    return m_Objects->take(identity);
}

SessionEditReader::~SessionEditReader() = default;

Compound *SessionEditReader::reference()
{
    return failed() ? nullptr : loadReference(*this, m_Index);
}

std::unique_ptr<Compound> SessionEditReader::content()
{
    const bool isInside = flag();
    if (failed())
        return nullptr;
    if (isInside) {
        ObjectEditReader inside(text(), m_Index);
        std::unique_ptr<Compound> object = inside.content();
        if (inside.failed())
            fail(inside.cause());
        return object;
    }
    const auto identity =
        static_cast<std::uint32_t>(number(std::numeric_limits<std::uint32_t>::max()));
    Result<std::unique_ptr<Compound>> object = m_Elsewhere.take(identity);
    if (!object) {
        fail(object.error().cause);
        return nullptr;
    }
    if (object.value() == nullptr)
        fail("object " + std::to_string(identity) + " is missing");
    return std::move(object.value());
}

} // namespace TAMBO::sessions
