// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_DELIVERY_H
#define ZELK_APPS_SUPERVISOR_DELIVERY_H

#include "supervisor/document_run.h"
#include "supervisor/output.h"

namespace cli {

// True when a document writes to standard output, so that its turn matters.
bool writes_to_standard_output(const InputDocument& input);

// Puts a document's finished outputs in their places and notes them in its outcome. An output that
// cannot be written leaves the others alone: returns why, empty when all are in place. Throws
// std::system_error when standard output fails.
std::string deliver(DocumentRun& document, Output& results, const std::string& run_folder);

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_DELIVERY_H
