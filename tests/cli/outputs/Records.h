// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_CLI_OUTPUTS_RECORDS_H
#define ZELK_TESTS_CLI_OUTPUTS_RECORDS_H

#include <gtest/gtest.h>

#include <string>

#include "outputs/outputs.h"
#include "support/Documents.h"

// Finished pages of one document, in a folder that is gone at the end of the test.
class Records : public testing::Test {
 protected:
  // Adds a record to the order; a page without a number follows the one before.
  void add(cli::PageRecord record);

  // What one of the writers makes of the order.
  using Writer = void (*)(const cli::OutputOrder&, const std::string&, const cli::Progress&);
  std::string written_by(Writer write);

  ScratchFolder folder;
  const std::string path = folder.path("out");
  cli::OutputOrder order = {"scan.pdf", 0, {}};
  int progress = 0;  // calls of the last writer
};

cli::PageRecord recognised(const std::string& text, const std::string& json = "{}");
cli::PageRecord failed(const std::string& cause);

// Gives a record the picture that make_bitmap makes.
cli::PageRecord with_picture(cli::PageRecord record, unsigned width, unsigned height,
                             int dots_per_inch = 200);

// A page of the engine's JSON with one word on one line, in the form of docs/engine-json.md.
std::string one_word_json(const std::string& word, int confidence = 97);

#endif  // ZELK_TESTS_CLI_OUTPUTS_RECORDS_H
