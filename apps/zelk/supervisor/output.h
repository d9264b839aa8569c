// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_OUTPUT_H
#define ZELK_APPS_SUPERVISOR_OUTPUT_H

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "exchange/terminal_text.h"

namespace cli {

// Keeps standard output for results: what the library and the engine print on descriptor 1 goes to
// standard error from here on. Returns the descriptor for the results, -1 when standard output is
// closed.
int claim_standard_output();

// Whoever reads results from a pipe has seen enough: no fault, but nothing more can be delivered.
class ReaderGone : public std::system_error {
 public:
  using std::system_error::system_error;
};

// "FILE: REASON", on one line.
std::string reason_of(const std::system_error& error);

// Where results go. What a terminal could take for commands does not reach it. Every operation
// throws std::system_error when the results cannot be delivered.
class Output {
 public:
  // Takes over an open descriptor.
  explicit Output(int descriptor);
  // Writes into `unfinished_folder`, or beside `path` where that lies on another file system, and
  // gives the file its name in finish(), so that `path` holds the old content or the complete new
  // one, also after an interruption. Pipes and devices are written to directly.
  Output(const std::string& path, const std::string& unfinished_folder);
  ~Output();
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  int descriptor() const { return _descriptor; }

  // Throws ReaderGone when it is a pipe that nobody reads any more.
  void write(std::string_view text);
  // Nothing may be written afterwards. Without it a file leaves no trace.
  void finish();

 private:
  void write_bytes(std::string_view bytes);
  void close_descriptor();

  std::optional<TerminalText> _terminal;  // when that is where the results go
  int _descriptor = -1;
  std::string _path;
  std::string _temporary_path;  // empty when written to directly
};

// Throws std::system_error naming the file when it is already clear that an Output of this path
// cannot be finished.
void check_writable(const std::string& path);

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_OUTPUT_H
