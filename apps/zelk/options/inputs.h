// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OPTIONS_INPUTS_H
#define ZELK_APPS_OPTIONS_INPUTS_H

#include <string>
#include <vector>

#include "options/options.h"

namespace cli {

// One document to recognise: what it is read from and where its results go.
struct InputDocument {
  std::string name;                // as people know it, any bytes; "-" for standard input
  std::vector<std::string> files;  // one, or the pictures of an image list
  // One path for each of the run's formats, in their order; "-" is standard output. A format that
  // --pdf adds comes last.
  struct Target {
    Format format = Format::kText;
    std::string path;
    bool is_shared = false;  // all documents of the run follow each other in this file
  };
  std::vector<Target> targets;
};

// A complaint about one input that leaves the others alone.
struct InputComplaint {
  std::string name;
  std::string reason;
};

struct Inputs {
  std::vector<InputDocument> documents;  // in the order given; folders sorted by name
  std::vector<InputComplaint>
      unreadable;                    // missing files, empty folders, lists that cannot be read
  std::vector<std::string> skipped;  // all outputs exist and --skip-existing was given
  std::string mistake;  // not empty: usage error, nothing may run (output equals an input,
                        // two inputs with one output, ...)
};

// Expands folders and lists and gives each document its outputs. Reads directories and lists only,
// never a document.
Inputs find_inputs(const Options& options);

}  // namespace cli

#endif  // ZELK_APPS_OPTIONS_INPUTS_H
