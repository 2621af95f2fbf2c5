// SPDX-License-Identifier: GPL-3.0-or-later
// The folder of a family as its run leaves it, made of targets that are letter by letter alike, and
// the alignment of it.
#pragma once

#include "AppFixture.h"

#include "FamilyFolder.h"
#include "FamilyResults.h"
#include "JobRecord.h"
#include "ModelsJob.h"

#include <QByteArray>

#include <string>
#include <vector>

class FamilyFiles : public RecordedFixture
{
protected:
    static constexpr const char *kLetters = "ACDEFGH";

    // CA atoms on a curve that fits itself only in one way.
    static TAMBO::Vertex place(int index);
    static TAMBO::Vertex shifted(const TAMBO::Vertex &point);
    // Whole backbones of kLetters.
    static QByteArray pdb();

    // The folder "models", in which all of them are to be built on "known".
    TAMBO::families::FamilyFolder makeFolder(const std::vector<std::string> &targets);
    // A model and the record of its job, as from the engine.
    void build(const TAMBO::families::FamilyFolder &folder, const std::string &target,
               double seconds = 9.5);
    void fail(const TAMBO::families::FamilyFolder &folder, const std::string &target,
              const std::string &message);
    void record(const TAMBO::families::FamilyFolder &folder, const std::string &target,
                const kestram::JobRecord &record);

    // Of "known", which has a structure, and the targets.
    TAMBO::Structure &known();
    static TAMBO::Alignment &family(const std::vector<std::string> &rows);
    static TAMBO::Vertex placeIn(const TAMBO::Alignment &shown, std::size_t row,
                                 std::size_t letter);
    static void expectNear(const TAMBO::Vertex &found, const TAMBO::Vertex &wanted);
};
