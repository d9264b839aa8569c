// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_PDFPRODUCER_REFUSALS_H
#define ZELK_TESTS_PDFPRODUCER_REFUSALS_H

// Functions of the system that this test program stands in front of.
enum class SystemFunction { kAllocation, kIconvOpen, kFchmod, kFsync, kWrite };

// While one lives, a function of the system fails once with the given errno: after as many calls as
// are let through. An allocation, made with `new`, throws.
class Refusal {
 public:
  Refusal(SystemFunction function, int reason, int let_through = 0);
  ~Refusal();
  Refusal(const Refusal&) = delete;
  Refusal& operator=(const Refusal&) = delete;

  bool has_happened() const;

 private:
  SystemFunction _function;
};

#endif  // ZELK_TESTS_PDFPRODUCER_REFUSALS_H
