// SPDX-License-Identifier: Apache-2.0
// qpdf's object handles.
#ifndef ZELK_PDFPRODUCER_QPDF_OBJECT_H
#define ZELK_PDFPRODUCER_QPDF_OBJECT_H

// clang 14 does not compile qpdf 11.3's JSON as C++20. Nothing here uses it, so its header counts
// as included, and handles, which only return it, are content with the declaration.
#define JSON_HH
class JSON;

// Standard smart pointers only; without a choice qpdf's headers warn.
#define POINTERHOLDER_TRANSITION 4

#include <qpdf/QPDFObjectHandle.hh>

#endif  // ZELK_PDFPRODUCER_QPDF_OBJECT_H
