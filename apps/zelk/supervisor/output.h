// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_OUTPUT_H
#define ZELK_APPS_SUPERVISOR_OUTPUT_H

#include <optional>
#include <string>
#include <string_view>

#include "exchange/terminal_text.h"

namespace cli {

// Keeps standard output for results: what the library and the engine print on descriptor 1 goes to
// standard error from here on. Returns the descriptor for the results, -1 when standard output is
// closed.
int claim_standard_output();

// Where results go. What a terminal could take for commands does not reach it. Every operation
// throws Error when the results cannot be delivered, of the kind kReaderGone when the reader of a
// pipe has gone.
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

// Throws Error naming the file when it is already clear that an Output of this path
// cannot be finished.
void check_writable(const std::string& path);

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_OUTPUT_H
