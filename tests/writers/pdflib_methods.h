// SPDX-License-Identifier: Apache-2.0
// Every method of the binding with one call of it.
#ifndef ZELK_TESTS_WRITERS_PDFLIB_METHODS_H
#define ZELK_TESTS_WRITERS_PDFLIB_METHODS_H

#include <string>
#include <vector>

#include "writers/pdflib.h"

// What one call returned, and what it returns at other times, with the type of the result.
struct MethodResult {
  std::string got;
  std::string answered;  // what the stand-in library answers
  std::string neutral;   // what a call without context returns
};

struct Method {
  const char* recorded;               // the call as the stand-in library records it
  MethodResult (*call)(PDFlib& pdf);  // with arguments that differ from each other
  std::string function() const;       // the name that the record begins with
};

const std::vector<Method>& pdflib_methods();

// Names the pointers that the calls hand over.
void name_method_pointers();

#endif  // ZELK_TESTS_WRITERS_PDFLIB_METHODS_H
