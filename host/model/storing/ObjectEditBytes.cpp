// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectEditBytes.h"

#include "Compound.h"
#include "ObjectIndex.h"
#include "ObjectLoader.h"
#include "ObjectReference.h"
#include "ObjectStore.h"
#include "ObjectWriter.h"
#include "StoredObject.h"

#include <limits>

namespace TAMBO {

ObjectEditWriter::~ObjectEditWriter() = default;

void ObjectEditWriter::reference(const Compound &object)
{
    storeReference(object, *this);
}

void ObjectEditWriter::content(const Compound &object)
{
    const StoredObject &stored = *StoredObject::from(&object);
    number(stored.identity());
    if (m_Contents == ObjectContents::Elsewhere)
        return;
    ObjectStore store(std::vector<const StoredObject *>{&stored});
    ObjectWriter parts;
    while (store.writeNext(parts, std::numeric_limits<std::size_t>::max()))
        ;
    text(parts.bytes());
}

ObjectEditReader::~ObjectEditReader() = default;

Compound *ObjectEditReader::reference()
{
    return failed() ? nullptr : loadReference(*this, m_Index);
}

std::unique_ptr<Compound> ObjectEditReader::content()
{
    const auto identity =
        static_cast<std::uint32_t>(number(std::numeric_limits<std::uint32_t>::max()));
    std::unique_ptr<Compound> object;
    if (m_Elsewhere != nullptr) {
        object = m_Elsewhere->take(identity);
    } else {
        ObjectLoader loader(m_Index);
        const std::string_view parts = text();
        Result<void> done = failed() ? Result<void>(failure()) : loader.read(parts);
        if (done)
            done = loader.complete();
        if (!done)
            fail(done.error().cause);
        else
            object = loader.take(identity);
        // It may refer to them, and they go with the loader.
        if (object != nullptr && loader.hasMore()) {
            object.reset();
            fail("object " + std::to_string(identity) + " brings others along");
        }
    }
    if (object == nullptr)
        fail("object " + std::to_string(identity) + " is missing");
    return object;
}

} // namespace TAMBO
