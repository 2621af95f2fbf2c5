// SPDX-License-Identifier: GPL-3.0-or-later
// Makes objects again of what an ObjectStore has written. The bytes may be anybody's: whatever they
// say, objects that are whole come of them, or a failure and nothing.
#pragma once

#include "NewObjects.h"
#include "Result.h"
#include "StoredHead.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace TAMBO {

class AlignmentParts;
class Compound;
class ObjectReader;
class ObjectSpace;
class StoredObject;
class Structure;

class ObjectLoader
{
public:
    // The objects may refer to those in the index, which leads to them as well in the end.
    explicit ObjectLoader(ObjectIndex &known);
    ~ObjectLoader();
    ObjectLoader(const ObjectLoader &) = delete;
    ObjectLoader &operator=(const ObjectLoader &) = delete;

    // The next piece. After a failure nothing comes of the others either.
    [[nodiscard]] Result<void> read(std::string_view bytes);
    using GoesOn = NewObjects::GoesOn;
    // All pieces are there: the objects get their numbers, and may be taken.
    [[nodiscard]] Result<void> complete(const GoesOn &goesOn = {});

    // What is said of Space, and the objects that stood there, in their order. Space is empty, and
    // stays that when it is given up.
    [[nodiscard]] Result<void> fill(ObjectSpace &space, const GoesOn &goesOn = {});
    // One that stands nowhere; null when there is none.
    [[nodiscard]] std::unique_ptr<Compound> take(std::uint32_t identity);
    // There are some that are not in Space and have not been taken.
    [[nodiscard]] bool hasMore() const noexcept;
    // Those that are not in Space and have not been taken, in the order of the bytes.
    [[nodiscard]] std::vector<std::unique_ptr<Compound>> takeAll();

private:
    struct PendingStructure
    {
        Structure *structure = nullptr;
        // Which are still to come.
        std::uint64_t chains = 0;
        std::uint64_t extras = 0;
    };
    using PendingStructures = std::unordered_map<std::uint32_t, PendingStructure>;
    struct StoredSpace
    {
        StoredHead head;
        std::string name;
        std::uint64_t objects = 0;
    };
    using Objects = std::vector<std::unique_ptr<StoredObject>>;

    void readPart(ObjectReader &in);
    void readStructure(ObjectReader &in);
    void readChain(ObjectReader &in);
    void readExtras(ObjectReader &in);
    void forgetComplete(PendingStructures::iterator pending);
    void readAlignment(ObjectReader &in);
    void readRows(ObjectReader &in);
    void readSpace(ObjectReader &in);
    void readOrder(ObjectReader &in);
    void makeAlignment(std::unique_ptr<AlignmentParts> parts, ObjectReader &in);
    // Empty when all that was begun is there.
    [[nodiscard]] std::string missing() const;
    [[nodiscard]] Result<void> checkOrder(const GoesOn &goesOn);
    void arrange();
    // Null for a number that no object has that owns itself.
    [[nodiscard]] std::unique_ptr<StoredObject> *place(std::uint32_t identity);
    void keep(std::uint32_t identity, std::unique_ptr<StoredObject> object);
    [[nodiscard]] Result<void> fail(std::string cause);

    std::optional<Failure> m_Failure;
    Objects m_Objects;
    // Which object has which number, by number in the end.
    std::vector<std::pair<std::uint32_t, std::size_t>> m_Places;
    // Mostly the one that is asked for next.
    std::size_t m_NextPlace = 0;
    // What they stand in is not there yet.
    PendingStructures m_Structures;
    std::unordered_map<std::uint32_t, std::unique_ptr<AlignmentParts>> m_Alignments;
    std::optional<StoredSpace> m_Space;
    std::vector<std::uint32_t> m_Order;
    NewObjects m_New;
};

} // namespace TAMBO
