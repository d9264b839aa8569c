// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_CONSOLE_OUTCOME_JSON_H
#define ZELK_APPS_CONSOLE_OUTCOME_JSON_H

#include <nlohmann/json.hpp>
#include <string>

#include "supervisor/events.h"

namespace cli {

// Outcomes as the report and --progress json tell them. The schemas are docs/report.schema.json and
// docs/progress-json.schema.json.

using OrderedJson = nlohmann::ordered_json;

// "delivered", "delivered with failed pages", "unreadable" ...
const char* state_name(DocumentState state);

// Adds the name under `key`, and "name_escaped": true when it is not UTF-8.
void add_name(OrderedJson& object, const char* key, const std::string& name);

OrderedJson page_json(const PageOutcome& page);
OrderedJson totals_json(const RunTotals& totals);

// All of a document but its pages.
OrderedJson document_json(const DocumentOutcome& document);

// One line, without a line feed. Bytes that are not UTF-8, of a cause perhaps, become U+FFFD.
std::string json_line(const OrderedJson& json);

}  // namespace cli

#endif  // ZELK_APPS_CONSOLE_OUTCOME_JSON_H
