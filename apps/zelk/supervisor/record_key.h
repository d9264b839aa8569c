// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_RECORD_KEY_H
#define ZELK_APPS_SUPERVISOR_RECORD_KEY_H

#include <string>
#include <vector>

#include "exchange/fields.h"
#include "exchange/files.h"
#include "exchange/messages.h"
#include "options/inputs.h"

namespace cli {

// Under which key the journal keeps the pages of a document. Pages with the same key have the same
// result. `content` stands for the document's files, `engine` is engine_identity(), `place` tells
// copies of one document apart. All fields of `settings` are part of it.
template <typename Settings>
std::string record_key(const std::string& content, const std::string& engine,
                       const Settings& settings, const std::string& place) {
  const std::string facts = content + engine + "\n" + fields_text(settings) + "\n" + place;
  return digest_of_text(facts).substr(0, 32);
}

// Where a document's outputs go, seen from the folder of the journal and without extension: the
// same for another format, another spelling of the path and a folder that was moved.
std::string place_of(const InputDocument& document, const std::string& folder);

// What was asked for beside the pages' results: outputs, how texts are parted, choice of pages.
std::string order_text(const InputDocument& document, const std::vector<int>& pages,
                       bool page_break, const std::string& folder);

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_RECORD_KEY_H
