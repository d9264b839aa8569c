// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PDF_DECRYPTION_H
#define ZELK_APPS_WORKER_PDF_DECRYPTION_H

#include <string>

namespace cli {

// Writes an encrypted PDF without its encryption into `decrypted_path`. `password` is the user's or
// the owner's. False, and nothing written, when the file is not an encrypted PDF that can be read.
// Throws UnreadableDocument when the password is missing or wrong, std::runtime_error when the file
// cannot be written.
bool decrypt_pdf(const std::string& path, const std::string& password,
                 const std::string& decrypted_path);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PDF_DECRYPTION_H
