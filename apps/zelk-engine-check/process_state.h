// SPDX-License-Identifier: Apache-2.0
//
// What can be seen of this process from outside of the engine.
#ifndef ZELK_ENGINE_CHECK_PROCESS_STATE_H
#define ZELK_ENGINE_CHECK_PROCESS_STATE_H

#include <string>

namespace engine_check {

long resident_kib();  // after unused heap has been handed back
int thread_count();
int descriptor_count();

// Is any part of this file mapped?
bool is_mapped(const std::string& path);

// Working directory, locale, file mode mask, signal handling and environment, in words: differs
// when one of them does.
std::string host_settings();

// Everything that was written to standard output so far. It is a file while a check runs.
std::string standard_output();

}  // namespace engine_check

#endif  // ZELK_ENGINE_CHECK_PROCESS_STATE_H
