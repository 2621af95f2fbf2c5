// SPDX-License-Identifier: GPL-3.0-or-later
#include "MissingSymbol.h"

#include "PluginDescriptor.h"

#include <gtest/gtest.h>

using namespace TAMBO::services;

namespace MissingSymbolTest {

struct Row
{
    const char *name;
    const char *symbol;
    const char *sentence;
};

class MissingSymbol : public ::testing::TestWithParam<Row>
{
};

TEST_P(MissingSymbol, IsNamedWithWhatProbablyCausesIt)
{
    const QString kit = KitNumber().text();
    EXPECT_EQ(missingSymbol("x.so", QStringLiteral("/a/x.so: undefined symbol: %1, version V1")
                                        .arg(QLatin1String(GetParam().symbol))),
              QString::fromUtf8(GetParam().sentence).replace("KIT", kit));
}

INSTANTIATE_TEST_SUITE_P(
    All, MissingSymbol,
    ::testing::Values(
        Row{"AFunctionOfC", "newFunction",
            "x.so needs newFunction, which is nowhere defined; it was probably built against a "
            "newer kit than KIT, which this workbench has; if it is the plug-in's own, a source "
            "file is missing in its build"},
        Row{"AFunctionOfTheKit", "_ZN5TAMBO5Space5countEv",
            "x.so needs TAMBO::Space::count(), which is nowhere defined; it was probably built "
            "against a newer kit than KIT, which this workbench has"},
        Row{"AMemberFunction", "_ZN7Counter7changedEi",
            "x.so needs Counter::changed(int), which is nowhere defined; it was probably built "
            "against a newer kit than KIT, which this workbench has; if it is a signal of the "
            "plug-in's own, moc did not run on its class: set AUTOMOC"},
        Row{"AClassTable", "_ZTV7Counter",
            "x.so needs vtable for Counter, which is nowhere defined; if Counter has Q_OBJECT, moc "
            "did not run on it: build it with tambo_plugin(), or set AUTOMOC; otherwise a virtual "
            "function of it has no definition"},
        Row{"AMetaObject", "_ZN2my7Counter16staticMetaObjectE",
            "x.so needs my::Counter::staticMetaObject, which is nowhere defined; if my::Counter "
            "has "
            "Q_OBJECT, moc did not run on it: build it with tambo_plugin(), or set AUTOMOC; "
            "otherwise a virtual function of it has no definition"},
        Row{"AClassTableOfTheKit", "_ZTVN5TAMBO5SpaceE",
            "x.so needs vtable for TAMBO::Space, which is nowhere defined; it was probably built "
            "against a newer kit than KIT, which this workbench has"}),
    [](const auto &row) { return row.param.name; });

TEST(MissingSymbolText, AnotherSentenceOfTheSystemStaysAsItIs)
{
    EXPECT_EQ(missingSymbol("x.so", "libz.so.9: cannot open"), "libz.so.9: cannot open");
}

} // namespace MissingSymbolTest
