// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PDFPRODUCER_ERROR_H
#define ZELK_PDFPRODUCER_ERROR_H

#include <exception>
#include <string>
#include <utility>

namespace zelk::pdf {

// The numbers that PDF_get_errnum answers.
enum class ErrorNumber : int {
  kNone = 0,
  kOutput = 1016,      // the output cannot be created or written
  kArgument = 1100,    // an argument outside its range, an unknown handle
  kNotOffered = 1200,  // a function, parameter, option, colour or font that this producer lacks
  kMemory = 1300,      // memory is out
  kInternal = 1400,    // anything else that fails inside
  kScope = 2100,       // a call outside its scope
  kImage = 2300        // image data that cannot be placed
};

// A failed call, on its way to the entry point that reports it.
class Error : public std::exception {
 public:
  Error(ErrorNumber number, std::string text) : _number(number), _text(std::move(text)) {}

  ErrorNumber number() const noexcept { return _number; }
  const char* what() const noexcept override { return _text.c_str(); }

 private:
  ErrorNumber _number;
  std::string _text;
};

}  // namespace zelk::pdf

#endif  // ZELK_PDFPRODUCER_ERROR_H
