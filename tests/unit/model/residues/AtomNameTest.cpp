// SPDX-License-Identifier: GPL-3.0-or-later
#include "AtomName.h"

#include "Atom.h"

#include <gtest/gtest.h>

#include <string>

using TAMBO::AtomName;

namespace AtomNameTest {

TEST(AtomName, OfAnyLengthIsKept)
{
    for (const std::size_t size : {0, 1, 4, 7, 8, 9, 31, 255, 256, 1000}) {
        const std::string text(size, 'C');
        AtomName name;
        name.set(text);
        EXPECT_EQ(name.view(), text);
    }
}

TEST(AtomName, GivesWayToAnother)
{
    AtomName name;
    const std::string longName(40, 'X');
    for (const std::string &text : {std::string("CA"), longName, std::string("\0B", 2), longName,
                                    std::string(longName + "Y"), std::string()}) {
        name.set(text);
        EXPECT_EQ(name.view(), text);
    }
}

TEST(AtomName, OfAFileTakesNoRoomBesideTheAtom)
{
    AtomName name;
    name.set("HO5'A");
    EXPECT_EQ(name.bytes(), 0U);
    name.set("H1234567890");
    EXPECT_GE(name.bytes(), sizeof(std::string));
}

// A hundred thousand of them are nothing special.
TEST(AtomName, MakesAtomsSmall)
{
    EXPECT_LE(sizeof(TAMBO::Atom), 72U);
}

} // namespace AtomNameTest
