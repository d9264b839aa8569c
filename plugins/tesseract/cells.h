// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESSERACT_CELLS_H
#define ZELK_TESSERACT_CELLS_H

#include <vector>

#include "engine/qv_engine.h"
#include "page.h"

namespace tesseract_engine {

// The advance cells of a line: the boxes at which text in a font whose Han glyphs are one em wide
// and whose Latin glyphs half an em covers the line without gaps or overlaps.
//
// Horizontal lines: all cells stand on the bottom of the line. The letters of a Latin word share
// its width equally. A run of Han characters gets cells of the line's pitch, centred over the run.
// Where two runs meet without a blank, the Latin one is stretched to the edge of the other. A blank
// is one cell (code 0x20) that spans the gap. A cell is as high as a glyph that fills it: as wide
// for wide characters, twice as high for all others. Vertical lines: square cells from top to
// bottom, centred in the line; blanks are left out.
//
// Ligatures come as their letters; a character beyond the Basic Multilingual Plane is one cell with
// the code 0xFFFD. The text of the cells of a horizontal line is the line's text.
std::vector<OCR_CHAR> advance_cells(const Line& line);

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_CELLS_H
