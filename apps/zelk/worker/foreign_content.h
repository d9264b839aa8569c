// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_FOREIGN_CONTENT_H
#define ZELK_APPS_WORKER_FOREIGN_CONTENT_H

#include <string>

namespace cli {

// What a file is that is no document, for people: "a ZIP archive", "a text". Empty when nobody can
// say. Only looks at signatures; nothing is decoded.
std::string foreign_content(const std::string& path);

// True when a file holds nothing but zero bytes, as copies do that were broken off.
bool holds_only_zeros(const std::string& path);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_FOREIGN_CONTENT_H
