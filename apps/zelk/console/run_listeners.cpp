#include "console/run_listeners.h"
#include <cstdio>
namespace cli {
  void RunListeners::page_finished(const std::string& name, const PageOutcome& page)  {
    if (!page.failure.empty()) std::fprintf(stderr, "zelk: %s: page %d: %s\n", name.c_str(), page.page, page.failure.c_str());
    if (!page.warning.empty()) std::fprintf(stderr, "zelk: %s: page %d: %s\n", name.c_str(), page.page, page.warning.c_str());
  }
  void RunListeners::document_finished(const DocumentOutcome& document)  {
    if (!document.cause.empty()) std::fprintf(stderr, "zelk: %s: %s\n", document.name.c_str(), document.cause.c_str());
  }
}
