// SPDX-License-Identifier: GPL-3.0-or-later
// The text of each alignment format. What is given fits the format.
#pragma once

#include "FittedAlignment.h"
#include "TextSink.h"

namespace TAMBO::formats {

void writePir(const FittedAlignment &alignment, TextSink &sink);
void writeFasta(const FittedAlignment &alignment, TextSink &sink);
// A2M and A3M.
void writeInsertions(const FittedAlignment &alignment, TextSink &sink);
void writeClustal(const FittedAlignment &alignment, TextSink &sink);
void writeStockholm(const FittedAlignment &alignment, TextSink &sink);
void writeMsf(const FittedAlignment &alignment, TextSink &sink);
void writePhylip(const FittedAlignment &alignment, TextSink &sink);
void writeNexus(const FittedAlignment &alignment, TextSink &sink);

} // namespace TAMBO::formats
