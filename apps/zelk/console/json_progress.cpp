// SPDX-License-Identifier: Apache-2.0
#include "console/json_progress.h"

#include <utility>

#include "console/message_stream.h"
#include "console/outcome_json.h"

namespace cli {
namespace {

class JsonProgress : public RunListener {
 public:
  explicit JsonProgress(int descriptor) : _descriptor(descriptor) {}

  void run_started(int documents) override { tell("start", {{"documents", documents}}); }

  void document_opened(const std::string& name, int wanted) override {
    OrderedJson json;
    add_name(json, "name", name);
    json["pages"] = wanted;
    tell("document", json);
  }

  void page_finished(const std::string& name, const PageOutcome& page) override {
    OrderedJson json;
    add_name(json, "name", name);
    json.update(page_json(page));
    tell("page", json);
  }

  void document_finished(const DocumentOutcome& document) override {
    tell("finished", document_json(document));
  }

  void run_finished(const RunTotals& totals) override { tell("end", totals_json(totals)); }

 private:
  void tell(const char* event, const OrderedJson& fields) {
    OrderedJson json = {{"event", event}};
    json.update(fields);
    write_message(_descriptor, json_line(json) + "\n");
  }

  int _descriptor;
};

}  // namespace

std::unique_ptr<RunListener> make_json_progress(int descriptor) {
  return std::make_unique<JsonProgress>(descriptor);
}

}  // namespace cli
