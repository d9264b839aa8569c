// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_DECODER_NOISE_H
#define ZELK_APPS_WORKER_DECODER_NOISE_H

namespace cli {

// Stops libtiff from printing a line for each private tag that it meets; what cannot be decoded is
// told per page.
void silence_decoders();

}  // namespace cli

#endif  // ZELK_APPS_WORKER_DECODER_NOISE_H
