// SPDX-License-Identifier: Apache-2.0
// The entry of a delivered document in the journal, as an earlier run may have left it.
#include "supervisor/journal.h"

#include <filesystem>

#include "exchange/files.h"
#include "fuzz_input.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string folder = scratch_path("journal");
  std::filesystem::create_directories(folder + "/.zelk-journal/key");
  cli::write_file(folder + "/.zelk-journal/key/delivered", FuzzInput(data, size).rest());
  {
    cli::Journal journal(folder, true);
    const auto outcome = journal.delivered("key", "");
    const auto records = journal.open_document("key");
    require(records.has_value(), "nobody else works on the document");
    if (outcome) {
      journal.mark_delivered("key", "", *outcome);
      const auto again = journal.delivered("key", "");
      require(again && again->pages.size() == outcome->pages.size(), "an outcome comes back");
      require(again->outputs == outcome->outputs, "with the same outputs");
    }
  }
  std::filesystem::remove_all(folder);
  return 0;
}
