// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelFigures.h"

#include "FileReader.h"

#include <utility>
#include <vector>

namespace kestram {

using TAMBO::Failure;
using TAMBO::FailureKind;
using TAMBO::Result;

std::size_t rebuiltGaps(const std::string &templateRow, const std::string &targetRow)
{
    std::size_t gaps = 0;
    bool hasBegun = false;
    bool isGap = false;
    for (std::size_t col = 0; col < templateRow.size(); ++col) {
        if (templateRow[col] == '-' || targetRow[col] == '-') {
            isGap = hasBegun;
            continue;
        }
        // Known to be a gap between two that both fill only now.
        gaps += isGap ? 1 : 0;
        isGap = false;
        hasBegun = true;
    }
    return gaps;
}

Result<ModelFigures> figuresOf(const ModellingInput &input, const std::filesystem::path &model)
{
    Result<TAMBO::FileContents> read = TAMBO::readFile(model);
    if (!read)
        return read.error();
    const std::string file = model.filename().string();
    if (read->structures.empty())
        return Failure{FailureKind::BadInput, "holds no structure", {file}};
    const TAMBO::StructureRecord &built = read->structures.front();
    std::string target = input.targetRow;
    std::erase(target, '-');
    const std::vector<TAMBO::ModelRun> runs = TAMBO::modelRuns(target, TAMBO::modelLetters(built));
    TAMBO::ModelRows rows{input.templateRow, input.targetRow, {}};
    for (const TAMBO::ResidueRecord &residue : input.residues)
        rows.templatePlaces.push_back(TAMBO::alphaPlace(residue));
    ModelFigures figures;
    for (const TAMBO::ModelRun &run : runs)
        figures.modelled += run.count;
    figures.fit = TAMBO::fitModel(rows, built, runs);
    return figures;
}

} // namespace kestram
