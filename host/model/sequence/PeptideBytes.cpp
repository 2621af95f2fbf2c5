// SPDX-License-Identifier: GPL-3.0-or-later
// A peptide as bytes, and back.
#include "Element.h"
#include "NumberEdit.h"
#include "ObjectReader.h"
#include "Peptide.h"
#include "ResidueGroup.h"
#include "ResidueSelection.h"
#include "StructureContents.h"

#include <string>
#include <utility>

namespace TAMBO {

namespace {

// What a peptide has besides its letters.
constexpr unsigned kHasColors = 1;
constexpr unsigned kHasNumbers = 2;
constexpr unsigned kHasSelection = 4;
constexpr unsigned kHasTies = 8;
constexpr unsigned kHasContents = 16;
constexpr unsigned kHasModels = 32;
constexpr unsigned kPeptideHasAll = 63;

// As they were written, the chains by their numbers.
struct StoredRun
{
    ResidueTies::Run run;
    std::uint32_t chain;
};

std::vector<StoredRun> readTies(ObjectReader &in, std::size_t residues)
{
    constexpr std::size_t kLeastBytes = 4;
    std::vector<StoredRun> runs;
    const std::size_t count = in.count(kLeastBytes);
    runs.reserve(count);
    std::uint64_t end = 0;
    for (std::size_t i = 0; i < count && !in.failed(); ++i) {
        const std::uint64_t first = end + in.index();
        const std::uint32_t length = in.index();
        end = first + length;
        if (end > residues || length == 0)
            in.fail("residues are tied that are not there");
        const std::uint32_t chainFirst = in.index();
        runs.push_back(
            {{static_cast<std::uint32_t>(first), length, chainFirst, nullptr}, in.index()});
    }
    return runs;
}

} // namespace

void Peptide::writePart(std::size_t, ObjectWriter &out) const
{
    out.begin(StoredKind::Sequence);
    writeContent(out);
}

void Peptide::writeContent(ObjectWriter &out) const
{
    out.head(*this);
    out.text(m_Text.name());
    out.text(letters());
    const PeptideExtras *const kept = m_Extras.get();
    if (kept == nullptr) {
        out.number(0);
        return;
    }
    const bool hasNumbers = hasOwnNumbers();
    out.number((kept->colors.kept() != nullptr ? kHasColors : 0U) |
               (hasNumbers ? kHasNumbers : 0U) | (selection() != nullptr ? kHasSelection : 0U) |
               (ties() != nullptr ? kHasTies : 0U) | (contents() != nullptr ? kHasContents : 0U) |
               (models().empty() ? 0U : kHasModels));
    if (kept->colors.kept() != nullptr)
        kept->colors.kept()->write(out);
    if (hasNumbers)
        kept->numbers->numbers.write(out);
    if (selection() != nullptr)
        selection()->write(out);
    if (ties() != nullptr)
        writeTies(out);
    if (contents() != nullptr)
        writeStructure(out);
    if (!models().empty())
        models().write(out, ownAtoms().size());
}

void Peptide::writeTies(ObjectWriter &out) const
{
    out.number(ties()->runs().size());
    std::uint32_t end = 0;
    for (const ResidueTies::Run &run : ties()->runs()) {
        out.number(run.first - end);
        out.number(run.count);
        out.number(run.chainFirst);
        out.number(run.chain->identity());
        end = run.first + run.count;
    }
}

void Peptide::writeStructure(ObjectWriter &out) const
{
    const StructureContents &inside = *contents();
    out.flag(!inside.atomStarts.empty());
    if (!inside.atomStarts.empty()) {
        for (std::size_t i = 0; i < residueCount(); ++i)
            out.number(inside.atomStarts[i + 1] - inside.atomStarts[i]);
        for (std::uint32_t i = 0; i < inside.atomStarts.back(); ++i)
            inside.atoms[i].write(out);
    }
    out.number(inside.typeNames.size());
    std::uint32_t last = 0;
    for (const auto &[index, name] : inside.typeNames) {
        out.number(index - last);
        out.text(name);
        last = index;
    }
    out.number(inside.objects.size());
    for (const std::unique_ptr<Compound> &object : inside.objects)
        StoredObject::from(object.get())->writePart(0, out);
}

std::unique_ptr<Peptide> Peptide::read(ObjectReader &in)
{
    StoredHead head = in.head();
    const std::string_view name = in.text();
    const std::string_view letters = in.text();
    if (name.size() > ObjectReader::kMostIndex || letters.size() > ObjectReader::kMostIndex)
        in.fail("a sequence is too long");
    const std::uint64_t has = in.number(kPeptideHasAll);
    auto made =
        in.failed() ? std::make_unique<Peptide>("", "") : std::make_unique<Peptide>(name, letters);
    if ((has & kHasColors) != 0)
        made->extras().colors.preset(ResidueColors::read(in, letters.size()));
    if ((has & kHasNumbers) != 0)
        made->extras().numbers =
            std::make_unique<NumberSlot>(NumberSlot{ResidueNumbers::read(in, letters.size())});
    if ((has & kHasSelection) != 0)
        made->extras().selection =
            std::make_unique<ResidueSelection>(ResidueSelection::read(in, letters.size()));
    if ((has & kHasTies) != 0)
        made->readTiesFrom(in);
    if ((has & kHasContents) != 0)
        made->readStructure(in);
    if ((has & kHasModels) != 0)
        made->presetModels(ModelPlaces::read(in, made->ownAtoms().size()));
    in.add(*made, std::move(head));
    return made;
}

// The chains may come later.
void Peptide::readTiesFrom(ObjectReader &in)
{
    std::unique_ptr<ResidueTies> &slot = extras().ties;
    slot = std::make_unique<ResidueTies>();
    std::vector<StoredRun> runs = readTies(in, residueCount());
    const NewObjects &objects = in.objects();
    const auto link = [this, &slot, &objects, runs = std::move(runs)]() -> Result<void> {
        for (const StoredRun &stored : runs) {
            ResidueTies::Run run = stored.run;
            run.chain = from(objects.find(stored.chain));
            // What a chain knows is its own, so that no way from tie to tie leads back.
            if (run.chain == nullptr || run.chain == this || run.chain->hasTies() ||
                std::size_t(run.chainFirst) + run.count > run.chain->residueCount())
                return Failure(FailureKind::BadInput,
                               "the sequence \"" + Name() + "\" is tied to residues of object " +
                                   std::to_string(stored.chain) + " that are not there");
            slot->append(run);
        }
        return {};
    };
    if (!in.failed())
        in.objects().linkLater(link);
}

void Peptide::readStructure(ObjectReader &in)
{
    StructureContents &inside = ownContents();
    if (in.flag()) {
        const std::size_t most = in.left() / Atom::kLeastBytes;
        std::size_t atoms = 0;
        std::vector<std::uint32_t> starts{0};
        starts.reserve(residueCount() + 1);
        for (std::size_t i = 0; i < residueCount(); ++i) {
            atoms += in.number(most);
            if (atoms > most)
                in.fail("atoms are missing");
            starts.push_back(static_cast<std::uint32_t>(atoms));
        }
        if (in.failed())
            return;
        inside.atomStarts = std::move(starts);
        inside.atoms = std::make_unique<Atom[]>(atoms);
        for (std::size_t i = 0; i < residueCount(); ++i) {
            for (std::uint32_t k = inside.atomStarts[i]; k < inside.atomStarts[i + 1]; ++k)
                inside.atoms[k].fill(in, *this, i);
        }
        updatePositions();
    }
    std::size_t index = 0;
    const std::size_t names = in.count(2);
    inside.typeNames.reserve(names);
    for (std::size_t i = 0; i < names && !in.failed(); ++i) {
        const std::size_t step = in.index();
        index += step;
        if ((step == 0 && i > 0) || index >= residueCount())
            in.fail("a residue has a name that is not there");
        inside.typeNames.emplace_back(static_cast<std::uint32_t>(index), in.text());
    }
    for (std::size_t count = in.count(); count > 0 && !in.failed(); --count)
        readObject(in);
    listElements();
}

void Peptide::readObject(ObjectReader &in)
{
    const std::optional<StoredKind> kind = in.begin();
    std::unique_ptr<Compound> made;
    if (kind == StoredKind::Group) {
        made = ResidueGroup::read(in);
    } else if (kind == StoredKind::Element) {
        auto element = Element::read(in);
        if (element->residueEnd() > residueCount())
            in.fail("an element has residues that are not there");
        made = std::move(element);
    } else {
        in.fail("a sequence owns what is neither a group nor an element");
        return;
    }
    StoredObject::from(made.get())->setParent(this);
    ownContents().objects.push_back(std::move(made));
}

} // namespace TAMBO
