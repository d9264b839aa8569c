#pragma once
#include "options/options.h"
#include "supervisor/events.h"
namespace cli {
class RunListeners : public RunListener {
 public:
  explicit RunListeners(const Options&) {}
  void page_finished(const std::string& name, const PageOutcome& page) override;
  void document_finished(const DocumentOutcome& document) override;
};
}
