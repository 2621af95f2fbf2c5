// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectLoader.h"

#include "AlignmentParts.h"
#include "Element.h"
#include "ObjectReader.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "ResidueGroup.h"
#include "Revisions.h"
#include "Structure.h"

#include <algorithm>

namespace TAMBO {

namespace {

// Objects between two looks at whether the work is to go on.
constexpr std::size_t kLoadStride = 4096;

// Of a million objects each is a wait for memory, unless it has been asked for before its turn.
bool areAllIn(const Compound &space, const std::vector<const Compound *> &objects)
{
    constexpr std::size_t kAhead = 16;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        if (i + kAhead < objects.size())
            __builtin_prefetch(objects[i + kAhead]);
        const Compound *top = objects[i];
        while (top->Parent() != nullptr)
            top = top->Parent();
        if (top != &space)
            return false;
    }
    return true;
}

} // namespace

ObjectLoader::ObjectLoader(ObjectIndex &known) : m_New(known) { }

ObjectLoader::~ObjectLoader()
{
    // The newest first, as Space does it.
    while (!m_Objects.empty())
        m_Objects.pop_back();
}

Result<void> ObjectLoader::fail(std::string cause)
{
    m_Failure = Failure(FailureKind::BadInput, std::move(cause));
    return *m_Failure;
}

// ---- Reading

Result<void> ObjectLoader::read(std::string_view bytes)
{
    if (m_Failure)
        return *m_Failure;
    ObjectReader in(bytes, m_New);
    while (!in.atEnd())
        readPart(in);
    if (in.failed())
        return fail(in.cause() + " (byte " + std::to_string(in.place()) + ")");
    return {};
}

void ObjectLoader::readPart(ObjectReader &in)
{
    const std::optional<StoredKind> kind = in.begin();
    const auto take = [&](auto made) {
        const std::uint32_t identity = in.lastAdded();
        keep(identity, std::move(made));
    };
    if (!kind)
        return;
    switch (*kind) {
    case StoredKind::Space:
        return readSpace(in);
    case StoredKind::SpaceOrder:
        return readOrder(in);
    case StoredKind::Sequence:
        return take(Peptide::read(in));
    case StoredKind::Structure:
        return readStructure(in);
    case StoredKind::Chain:
        return readChain(in);
    case StoredKind::Group:
        return take(ResidueGroup::read(in));
    case StoredKind::Element:
        return take(Element::read(in));
    case StoredKind::Alignment:
        return readAlignment(in);
    case StoredKind::Rows:
        return readRows(in);
    case StoredKind::StructureExtras:
        return readExtras(in);
    }
}

void ObjectLoader::keep(std::uint32_t identity, std::unique_ptr<StoredObject> object)
{
    m_Places.emplace_back(identity, m_Objects.size());
    m_Objects.push_back(std::move(object));
}

void ObjectLoader::readStructure(ObjectReader &in)
{
    auto [made, rest] = Structure::read(in);
    const std::uint32_t identity = in.lastAdded();
    if ((rest.chains > 0 || rest.extras > 0) && !in.failed())
        m_Structures.emplace(identity, PendingStructure{made.get(), rest.chains, rest.extras});
    keep(identity, std::move(made));
}

void ObjectLoader::readChain(ObjectReader &in)
{
    const auto pending = m_Structures.find(in.index());
    if (pending == m_Structures.end() || pending->second.chains == 0)
        return in.fail("a chain has no structure");
    std::unique_ptr<Peptide> chain = Peptide::read(in);
    if (in.failed())
        return;
    if (chain->wasTied())
        m_New.linkLater([tied = chain.get()]() -> Result<void> {
            if (!tied->hasTies())
                return {};
            return Failure(FailureKind::BadInput, "the chain \"" + tied->Name() + "\" is tied");
        });
    Structure &structure = *pending->second.structure;
    structure.insertObject(structure.objectCount(), std::move(chain));
    --pending->second.chains;
    forgetComplete(pending);
}

void ObjectLoader::readExtras(ObjectReader &in)
{
    const auto pending = m_Structures.find(in.index());
    if (pending == m_Structures.end() || pending->second.extras == 0)
        return in.fail("a part has no structure");
    pending->second.structure->readExtras(in);
    --pending->second.extras;
    forgetComplete(pending);
}

void ObjectLoader::forgetComplete(PendingStructures::iterator pending)
{
    if (pending->second.chains == 0 && pending->second.extras == 0)
        m_Structures.erase(pending);
}

void ObjectLoader::readAlignment(ObjectReader &in)
{
    auto parts = std::make_unique<AlignmentParts>(in);
    if (parts->isComplete())
        makeAlignment(std::move(parts), in);
    else if (!m_Alignments.try_emplace(parts->identity(), std::move(parts)).second)
        in.fail("an alignment is there twice");
}

// Found at once, however many alignments wait for rows: the bytes may be anybody's.
void ObjectLoader::readRows(ObjectReader &in)
{
    const auto found = m_Alignments.find(in.index());
    if (found == m_Alignments.end()) {
        in.fail("rows have no alignment");
        return;
    }
    found->second->readRows(in);
    if (found->second->isComplete())
        makeAlignment(std::move(m_Alignments.extract(found).mapped()), in);
}

void ObjectLoader::makeAlignment(std::unique_ptr<AlignmentParts> parts, ObjectReader &in)
{
    if (in.failed())
        return;
    std::unique_ptr<Alignment> made = parts->make(in);
    keep(parts->identity(), std::unique_ptr<StoredObject>(StoredObject::from(made.release())));
}

void ObjectLoader::readSpace(ObjectReader &in)
{
    if (m_Space)
        in.fail("the space is there twice");
    StoredHead head = in.head();
    std::string name(in.text());
    m_Space = StoredSpace{std::move(head), std::move(name), in.number()};
}

void ObjectLoader::readOrder(ObjectReader &in)
{
    std::int64_t last = 0;
    for (std::size_t count = in.count(); count > 0 && !in.failed(); --count) {
        constexpr auto kMost = std::int64_t(ObjectReader::kMostIndex);
        last += in.signedNumber(-kMost, kMost);
        if (last < 0 || last > kMost)
            in.fail("no object can have the number " + std::to_string(last));
        m_Order.push_back(static_cast<std::uint32_t>(last));
    }
}

// ---- When all is there

std::string ObjectLoader::missing() const
{
    if (!m_Structures.empty())
        return m_Structures.begin()->second.chains > 0 ? "chains of a structure are missing"
                                                       : "parts of a structure are missing";
    if (!m_Alignments.empty())
        return "rows of an alignment are missing";
    if (m_Order.size() != (m_Space ? m_Space->objects : 0))
        return "objects of the space are missing";
    return {};
}

void ObjectLoader::arrange()
{
    if (!std::ranges::is_sorted(m_Places))
        std::ranges::sort(m_Places);
}

std::unique_ptr<StoredObject> *ObjectLoader::place(std::uint32_t identity)
{
    if (m_NextPlace >= m_Places.size() || m_Places[m_NextPlace].first != identity) {
        const auto found = std::ranges::lower_bound(m_Places, identity, {},
                                                    &decltype(m_Places)::value_type::first);
        if (found == m_Places.end() || found->first != identity)
            return nullptr;
        m_NextPlace = std::size_t(found - m_Places.begin());
    }
    return &m_Objects[m_Places[m_NextPlace++].second];
}

// Each stands there once, and is what can stand there.
Result<void> ObjectLoader::checkOrder(const GoesOn &goesOn)
{
    std::vector<bool> isSeen(m_Objects.size(), false);
    std::size_t looks = 0;
    for (const std::uint32_t identity : m_Order) {
        if (++looks % kLoadStride == 0 && goesOn && !goesOn())
            return Failure(FailureKind::Cancelled, "cancelled");
        const auto problem = [identity](const char *what) {
            return Failure(FailureKind::BadInput, "object " + std::to_string(identity) + what);
        };
        const std::unique_ptr<StoredObject> *const found = place(identity);
        if (found == nullptr)
            return problem(" is missing in the space");
        const auto index = std::size_t(found - m_Objects.data());
        if (isSeen[index])
            return problem(" is in the space twice");
        isSeen[index] = true;
        const CompoundKind kind = (*found)->asCompound().Kind();
        if (kind == CompoundKind::Group || kind == CompoundKind::Element)
            return problem(" cannot stand in the space");
    }
    return {};
}

Result<void> ObjectLoader::complete(const GoesOn &goesOn)
{
    if (m_Failure)
        return *m_Failure;
    arrange();
    if (std::string problem = missing(); !problem.empty())
        return fail(std::move(problem));
    Result<void> done = checkOrder(goesOn);
    if (done)
        done = m_New.complete(goesOn);
    if (!done) {
        m_Failure = done.error();
        return done;
    }
    growAllRevisions();
    return {};
}

Result<void> ObjectLoader::fill(ObjectSpace &space, const GoesOn &goesOn)
{
    if (m_Failure)
        return *m_Failure;
    if (!m_Space)
        return Failure(FailureKind::NotFound, "nothing is said of the space");
    if (space.objectCount() > 0)
        return Failure(FailureKind::Refused, "there are other objects already");
    std::vector<Compound *> objects;
    std::vector<StoredObject *> referrers;
    // With some for what comes next.
    objects.reserve(m_Order.size() + m_Order.size() / 16 + 1);
    const auto leave = [&objects] {
        for (Compound *const object : objects)
            StoredObject::from(object)->setParent(nullptr);
    };
    for (const std::uint32_t identity : m_Order) {
        if (objects.size() % kLoadStride == kLoadStride - 1 && goesOn && !goesOn()) {
            leave();
            return Failure(FailureKind::Cancelled, "cancelled");
        }
        StoredObject *const stored = place(identity)->get();
        objects.push_back(&stored->asCompound());
        stored->setParent(&space);
        if (stored->refersToOthers())
            referrers.push_back(stored);
    }
    // What the objects refer to stands there, too, or it might go without them.
    std::vector<const Compound *> others;
    // Mostly there is nothing elsewhere, and not every row has to be looked at.
    const bool isAllHere = m_Order.size() == m_Objects.size();
    for (const StoredObject *const referrer : referrers) {
        others.clear();
        if (!isAllHere)
            referrer->forEachOther([&others](const Compound &other) { others.push_back(&other); });
        if (!areAllIn(space, others)) {
            leave();
            return fail("object " + std::to_string(referrer->identity()) +
                        " refers to one that is not in the space");
        }
    }
    // Nothing is in the way any more.
    for (const std::uint32_t identity : m_Order)
        static_cast<void>(place(identity)->release());
    space.restore(m_Space->name, m_Space->head);
    space.adopt(std::move(objects), std::move(referrers));
    m_Space.reset();
    return {};
}

std::unique_ptr<Compound> ObjectLoader::take(std::uint32_t identity)
{
    std::unique_ptr<StoredObject> *const found = place(identity);
    if (found == nullptr || *found == nullptr)
        return nullptr;
    return std::unique_ptr<Compound>(&found->release()->asCompound());
}

bool ObjectLoader::hasMore() const noexcept
{
    return std::ranges::any_of(m_Objects, [](const auto &object) { return object != nullptr; });
}

std::vector<std::unique_ptr<Compound>> ObjectLoader::takeAll()
{
    std::vector<std::unique_ptr<Compound>> taken;
    for (std::unique_ptr<StoredObject> &object : m_Objects) {
        if (object != nullptr)
            taken.emplace_back(&object.release()->asCompound());
    }
    return taken;
}

} // namespace TAMBO
