// SPDX-License-Identifier: Apache-2.0
#include "worker/decoder_noise.h"

#include <dlfcn.h>

#include <initializer_list>

namespace cli {

void silence_decoders() {
  using SetHandler = void* (*)(void*);
  for (const char* symbol : {"TIFFSetErrorHandler", "TIFFSetWarningHandler"}) {
    // Found only where the picture library has libtiff below it as a library of its own.
    const auto set_handler = reinterpret_cast<SetHandler>(dlsym(RTLD_DEFAULT, symbol));
    if (set_handler != nullptr) set_handler(nullptr);
  }
}

}  // namespace cli
