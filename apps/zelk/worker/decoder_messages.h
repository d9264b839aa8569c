// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_DECODER_MESSAGES_H
#define ZELK_APPS_WORKER_DECODER_MESSAGES_H

#include <string>

namespace cli {

// From now on nothing that picture decoders have to say is printed. They tell of every private tag
// that they meet; what they tell of lost data reaches a DamageWatch.
void silence_decoders();

// Listens to picture decoders as long as it lives, one at a time. What counts are messages by which
// pixels are missing or wrong: decoders also tell of private tags, padding and odd metadata.
class DamageWatch {
 public:
  DamageWatch();
  ~DamageWatch();
  DamageWatch(const DamageWatch&) = delete;
  DamageWatch& operator=(const DamageWatch&) = delete;

  // The first message of damage, as the decoder puts it; empty when there is none.
  const std::string& damage() const { return _damage; }

  // Whether there was any message.
  bool heard_any() const { return _heard_any; }

  // For those who hear a decoder's messages.
  static void hear(const std::string& message);

 private:
  std::string _damage;
  bool _heard_any = false;
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_DECODER_MESSAGES_H
