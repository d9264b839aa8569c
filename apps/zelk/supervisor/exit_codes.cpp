// SPDX-License-Identifier: Apache-2.0
#include "supervisor/exit_codes.h"

namespace cli {

ExitCode exit_code_of(const Error& error) {
  switch (error.kind()) {
    case ErrorKind::kInput:
      return kSomeInputsUnreadable;
    case ErrorKind::kOutput:
      return kOutputFailed;
    case ErrorKind::kReaderGone:
      return kReaderGone;
    case ErrorKind::kSystem:
      break;
  }
  return kNoEngine;  // no worker, so no engine either
}

ExitCode exit_code_of(DocumentState state) {
  switch (state) {
    case DocumentState::kDelivered:
    case DocumentState::kSkipped:
    case DocumentState::kInterrupted:
      break;
    case DocumentState::kDeliveredWithFailedPages:
      return kDeliveredWithFailedPages;
    case DocumentState::kUnreadable:
      return kSomeInputsUnreadable;
    case DocumentState::kPasswordNeeded:
      return kPasswordNeeded;
    case DocumentState::kFailed:
      return kFailedDocuments;
    case DocumentState::kOutputFailed:
      return kOutputFailed;
  }
  return kAllDone;
}

ExitCode first_of(const std::set<ExitCode>& codes) {
  for (const ExitCode code : {kInterrupted, kReaderGone, kOutputFailed, kNoEngine, kFailedDocuments,
                              kPasswordNeeded, kSomeInputsUnreadable, kDeliveredWithFailedPages}) {
    if (codes.contains(code)) return code;
  }
  return kAllDone;
}

}  // namespace cli
