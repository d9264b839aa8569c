// SPDX-License-Identifier: Apache-2.0
// qpdf's objects without its JSON classes: those do not compile with clang 14 as C++20, and nothing
// of them is used here.
#ifndef ZELK_PDFPRODUCER_QPDF_OBJECTS_H
#define ZELK_PDFPRODUCER_QPDF_OBJECTS_H

#ifndef JSON_HH
#define JSON_HH
class JSON;
#endif

#include <qpdf/QPDFObjectHandle.hh>

#endif  // ZELK_PDFPRODUCER_QPDF_OBJECTS_H
