// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_EXCHANGE_ERROR_H
#define ZELK_APPS_EXCHANGE_ERROR_H

#include <stdexcept>
#include <string>

namespace cli {

enum class ErrorKind {
  kInput,       // something cannot be read
  kOutput,      // something cannot be written: an output, the journal, the scratch folder
  kSystem,      // the system refuses a process, a pipe
  kReaderGone,  // whoever read the results from a pipe has seen enough: no fault, but the end
};

// A failure of the system as it is thrown where it happens. The kind decides what it means to the
// run; nobody has to know the text.
class Error : public std::runtime_error {
 public:
  // `number` is an errno; the text becomes "ABOUT: REASON".
  Error(ErrorKind kind, int number, const std::string& about);
  // A text that holds the reason already, from a library that tells no number.
  Error(ErrorKind kind, const std::string& text) : std::runtime_error(text), _kind(kind) {}

  ErrorKind kind() const { return _kind; }
  int number() const { return _number; }  // 0 when nobody told it

 private:
  ErrorKind _kind;
  int _number = 0;
};

// The sentence for people, "cannot write the output: ABOUT: REASON"; empty for kReaderGone.
std::string sentence_of(const Error& error);

// Makes a folder with all above it; one that is there serves. Throws Error.
void make_folders(const std::string& path);

}  // namespace cli

#endif  // ZELK_APPS_EXCHANGE_ERROR_H
