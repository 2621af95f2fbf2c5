// SPDX-License-Identifier: GPL-3.0-or-later
// Objects from the values that a plug-in gives.
#include "ChangeScope.h"
#include "DataMaker.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "Structure.h"
#include "StructureCheck.h"

#include <utility>

namespace TAMBO {

namespace {

bool mayMake(const std::string &name)
{
    if (Publisher::isPublishing()) {
        refuse("\"" + name + "\" was not made: a change is being published.");
        return false;
    }
    return mayChange(ObjectSpace::get());
}

std::nullptr_t refuseToMake(const char *kind, const std::string &name, const Failure &failure)
{
    refuse(std::string("The ") + kind + " \"" + name + "\" was not made: " + failure.message() +
           '.');
    return nullptr;
}

} // namespace

Compound *DataMaker::makeSequence(const std::string &name, const std::string &letters,
                                  const std::vector<SequenceNumber> &numbers)
{
    if (Result<void> good = checkName(name); !good)
        return refuseToMake("sequence", name, good.error());
    Result<std::string> checked = checkedLetters(letters, numbers);
    if (!checked)
        return refuseToMake("sequence", name, checked.error());
    if (!mayMake(name))
        return nullptr;
    const ChangeScope scope;
    auto made = std::make_unique<Peptide>(name, std::move(checked).value());
    for (std::size_t i = 0; i < numbers.size(); ++i)
        made->presetNumber(i, numbers[i]);
    return &ObjectSpace::get().add(std::move(made));
}

Compound *DataMaker::makeStructure(const std::string &name, const StructureValues &values)
{
    Result<StructureRecord> record = recordOfValues(name, values);
    if (!record)
        return refuseToMake("structure", name, record.error());
    if (!mayMake(name))
        return nullptr;
    const ChangeScope scope;
    return ObjectFactory::adopt(std::move(record).value());
}

} // namespace TAMBO
