// SPDX-License-Identifier: GPL-3.0-or-later
#include "HostSpy.h"

#include "Alignment.h"

#include <gtest/gtest.h>

#define EMPTY_VARIABLE "_Z27qEnvironmentVariableIsEmptyPKc"
#define SYNC "_ZN15QGuiApplication4syncEv"
#define MAKE_ALIGNMENT                                                                             \
    "_ZN5TAMBO9DataMaker13makeAlignmentERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"    \
    "RKSt6vectorIPNS_8CompoundESaISB_EE"
#define DUPLICATE "_ZNK5TAMBO9Alignment9duplicateEm"

namespace HostSpyCalls {

using Compounds = std::vector<TAMBO::Compound *>;
using TAMBO::Alignment;

bool isEmpty(const char *variable) noexcept asm("__wrap_" EMPTY_VARIABLE);
bool realIsEmpty(const char *variable) noexcept asm("__real_" EMPTY_VARIABLE);
void sync() asm("__wrap_" SYNC);
void realSync() asm("__real_" SYNC);
Alignment *make(const std::string &name, const Compounds &rows) asm("__wrap_" MAKE_ALIGNMENT);
Alignment *realMake(const std::string &name, const Compounds &rows) asm("__real_" MAKE_ALIGNMENT);
Alignment *duplicate(const Alignment *copied, unsigned long rows) asm("__wrap_" DUPLICATE);
Alignment *realDuplicate(const Alignment *copied, unsigned long rows) asm("__real_" DUPLICATE);

bool isEmpty(const char *variable) noexcept
{
    HostSpy::variables.emplace_back(variable);
    return realIsEmpty(variable);
}

void sync()
{
    if (HostSpy::onSync)
        HostSpy::onSync();
    realSync();
}

Alignment *make(const std::string &name, const Compounds &rows)
{
    return HostSpy::makesNoAlignment ? nullptr : realMake(name, rows);
}

Alignment *duplicate(const Alignment *copied, unsigned long rows)
{
    return HostSpy::makesNoAlignment ? nullptr : realDuplicate(copied, rows);
}

// That the editor reads the environment in no other way is seen at its library's symbols.
class OneVariableAlone : public testing::Environment
{
public:
    void TearDown() override
    {
        for (const std::string &variable : HostSpy::variables)
            EXPECT_EQ(variable, "KESTRAM");
    }
};

[[maybe_unused]] const testing::Environment *const kEnvironment =
    testing::AddGlobalTestEnvironment(new OneVariableAlone);

} // namespace HostSpyCalls
