// SPDX-License-Identifier: GPL-3.0-or-later
#include "EditLoading.h"

#include "AlignmentEdits.h"
#include "Atom.h"
#include "CompoundState.h"
#include "GroupNumberEdit.h"
#include "MotionEdit.h"
#include "NumberEdit.h"
#include "ObjectColorEdit.h"
#include "ObjectsEdit.h"
#include "Peptide.h"
#include "PositionEdit.h"
#include "RenameEdit.h"
#include "ResidueGroup.h"
#include "TieEdit.h"
#include "ValueEdit.h"

#include <utility>

namespace TAMBO {

namespace {

// Where the object keeps a colour of its own; null for one that has none.
std::optional<Color> *colorSlotOf(Compound &object)
{
    if (CompoundState *const state = stateOf(object))
        return &state->color;
    if (auto *const group = dynamic_cast<ResidueGroup *>(&object))
        return &group->colorSlot();
    auto *const atom = dynamic_cast<Atom *>(&object);
    return atom == nullptr ? nullptr : &atom->colorSlot();
}

LoadedEdit loadObjectColor(EditReader &in)
{
    Compound *const object = in.reference();
    const std::optional<Color> color = loadColor(in);
    std::optional<Color> *const slot = in.failed() ? nullptr : colorSlotOf(*object);
    if (slot == nullptr)
        in.fail("an object has no color of its own");
    if (in.failed())
        return in.failure();
    return LoadedEdit(std::make_unique<ObjectColorEdit>(*object, *slot, color));
}

LoadedEdit loadGroupNumber(EditReader &in)
{
    auto *const group = in.reference<ResidueGroup>();
    SequenceNumber number = loadNumber(in);
    if (in.failed())
        return in.failure();
    return LoadedEdit(
        std::make_unique<GroupNumberEdit>(*group, group->numberSlot(), std::move(number)));
}

LoadedEdit loadOfSequence(EditTag tag, EditReader &in)
{
    auto *const sequence = in.reference<Peptide>();
    if (in.failed())
        return in.failure();
    if (tag == EditTag::ResidueColors)
        return ColorEdit::load(*sequence, sequence->colorSlot(), in);
    if (tag == EditTag::ResidueNumbers)
        return NumberEdit::load(*sequence, sequence->numberSlot(), in);
    return TieEdit::load(*sequence, sequence->tieSlot(), in);
}

} // namespace

LoadedEdit loadEdit(EditReader &in)
{
    const auto tag = static_cast<EditTag>(in.number(0xff));
    switch (tag) {
    case EditTag::Gap:
    case EditTag::RowMove:
    case EditTag::InsertRows:
    case EditTag::RemoveRows:
    case EditTag::OpenColumns:
    case EditTag::CloseColumns:
    case EditTag::RemoveColumns:
    case EditTag::RestoreColumns:
    case EditTag::ColumnText:
    case EditTag::ReplaceColumns:
    case EditTag::RowOrder:
    case EditTag::RemoveRuns:
    case EditTag::RestoreRuns:
    case EditTag::Annotation:
        return AlignmentEdit::load(tag, in);
    case EditTag::Objects:
        return ObjectsEdit::load(in);
    case EditTag::Name:
        return RenameEdit::load(in);
    case EditTag::ObjectColor:
        return loadObjectColor(in);
    case EditTag::Value:
        return ValueEdit::load(in);
    case EditTag::ResidueColors:
    case EditTag::ResidueNumbers:
    case EditTag::Ties:
        return loadOfSequence(tag, in);
    case EditTag::Places:
        return PositionEdit::load(in);
    case EditTag::Motion:
        return MotionEdit::load(in);
    case EditTag::GroupNumber:
        return loadGroupNumber(in);
    }
    in.fail("there is no such change");
    return in.failure();
}

} // namespace TAMBO
