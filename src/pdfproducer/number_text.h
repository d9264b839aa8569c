// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PDFPRODUCER_NUMBER_TEXT_H
#define ZELK_PDFPRODUCER_NUMBER_TEXT_H

#include <string>

namespace zelk::pdf {

// A finite number as PDF writes it, with at most `decimals` (0 to 6) digits behind the point and
// nothing that can be left out: "12.5", ".25", "-3", "0". The process's locale plays no part.
std::string number_text(double value, int decimals);

}  // namespace zelk::pdf

#endif  // ZELK_PDFPRODUCER_NUMBER_TEXT_H
