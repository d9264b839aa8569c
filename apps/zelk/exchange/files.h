// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_EXCHANGE_FILES_H
#define ZELK_APPS_EXCHANGE_FILES_H

#include <optional>
#include <string>
#include <string_view>

namespace cli {

// Files as the parts of a run hand them to each other. Names may hold any bytes. What fails throws
// Error that names the file, unless something else is said. What is no regular file, a pipe for
// instance, is not read.

// Creates or replaces a file.
void write_file(const std::string& path, std::string_view bytes);

// The whole content; nothing when it cannot be read.
std::optional<std::string> read_file(const std::string& path);

// Gives a file another name, which it replaces; copies where the names lie on different file
// systems.
void move_file(const std::string& from, const std::string& to);

// Makes the file `from` appear as `to` as well: a hard link where possible, else a copy. Links in
// `from` are followed.
void link_or_copy_file(const std::string& from, const std::string& to);

// A descriptor's content until its end, as a new file. `source` names it in errors.
void spool_to_file(int descriptor, const std::string& source, const std::string& path);

// SHA-256 of a file's content in lower-case hexadecimal.
std::string digest_of_file(const std::string& path);
// The same of an open file; `name` is for errors.
std::string digest_of_descriptor(int descriptor, const std::string& name);

// SHA-256 of a text in lower-case hexadecimal.
std::string digest_of_text(std::string_view text);

}  // namespace cli

#endif  // ZELK_APPS_EXCHANGE_FILES_H
