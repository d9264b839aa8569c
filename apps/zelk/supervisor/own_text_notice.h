// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_OWN_TEXT_NOTICE_H
#define ZELK_APPS_SUPERVISOR_OWN_TEXT_NOTICE_H

#include <string>
#include <vector>

#include "supervisor/events.h"

namespace cli {

// What the user should know of pages that have text already; empty when there are none.
// `was_taken`: their text was kept.
std::string own_text_notice(const std::vector<PageOutcome>& pages, bool was_taken);

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_OWN_TEXT_NOTICE_H
