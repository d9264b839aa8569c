// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_FAKES_FAULTS_H
#define ZELK_TESTS_FAKES_FAULTS_H

// What an engine may do to the process that it runs in. FAKE_FAULTS in the environment lists faults
// and the width of the pages that they befall, for example "crash@72,hang@36":
//   crash      reads a null pointer
//   hang       never returns
//   allocate   takes memory without end
//   reserve    takes memory without end through new, and ends the process when there is no more
//   print      fills standard output and standard error
//   paint      prints what clears a terminal
//   scribble   writes garbage to every descriptor that it can guess
//   close      closes every descriptor that it can guess
//   exit       ends the process with exit code 0
//   refuse     returns a code
//   once       crashes the first time, tells by a file in the folder FAKE_FOLDER
//   absurd     claims 2,000,000,000 lines of 2,000,000,000 characters
//   descriptors, folder, umask, locale, environment, limits
//              uses up or changes what belongs to the process
//   child, daemon
//              leaves a child, or a process that left everything, behind
//   replace    renames the file other.pdf in the folder FAKE_FOLDER to document.pdf
//   shrink     truncates document.pdf there
//   endless    fills the JSON buffer without a zero byte
bool has_fault(const char* name, int page_width);

// Commits the faults of recognition. Returns what qv_recognize returns.
int commit_faults(int page_width);

#endif  // ZELK_TESTS_FAKES_FAULTS_H
