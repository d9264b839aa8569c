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
// Horizontal lines: all cells stand on the bottom of the line, not counting drawings beside it that
// were read as characters. The letters of a Latin word share its width equally, but for characters
// such as curly quotes that the font draws an em wide: they take two shares. A run of Han
// characters gets square cells of the line's pitch (`page_pitch` where the line has too few to
// tell), laid over its characters. Where two runs meet without a blank, the Latin one is stretched
// to the edge of the other; where boxes contradict the order of runs, the order counts. A blank is
// one cell (code 0x20) that spans the gap. All cells of a run are as high as its em is wide, within
// 0.8 to 1.25 times the em of the line. Vertical lines: square cells from top to bottom, centred in
// the line; blanks are left out.
//
// Ligatures come as their letters; a character beyond the Basic Multilingual Plane is one cell with
// the code 0xFFFD. The text of the cells of a horizontal line is the line's text.
std::vector<OCR_CHAR> advance_cells(const Line& line, double page_pitch = 0);

// The distance from one Han character to the next that is usual on a page, in pixels; 0 without
// any.
double han_pitch(const std::vector<Block>& blocks);

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_CELLS_H
