// SPDX-License-Identifier: Apache-2.0
#include <nlohmann/json.hpp>

#include "cli/outputs/Records.h"
#include "pdfproducer/Tools.h"

namespace {

using Json = nlohmann::ordered_json;

// Runs the validator of python3-jsonschema; its complaint, empty when there is none.
std::string complaint(const std::string& file) {
  const Outcome outcome = run("/usr/bin/python3 -W ignore -m jsonschema -i '" + file +
                              "' " ZELK_DOCS "/output-json.schema.json");
  return outcome.status == 0 ? "" : "exit " + std::to_string(outcome.status) + outcome.output;
}

class JsonOutput : public Records {
 protected:
  // One line, as the schema wants it.
  std::string line() {
    const std::string text = written_by(cli::write_json);
    EXPECT_EQ(text.find('\n'), text.size() - 1) << "one line";
    EXPECT_EQ(complaint(path), "") << text;
    return text;
  }
};

TEST_F(JsonOutput, HoldsAnEntryForEachPage) {
  add(recognised("a", R"({"z": 1, "a": "中"})"));
  add(recognised("b", "[ 2.50 ]"));
  EXPECT_EQ(line(),
            "{\"file\":\"scan.pdf\",\"page_count\":2,\"pages\":[{\"z\":1,\"a\":\"中\"},[2.5]]}\n");
  EXPECT_EQ(progress, 2);
}

TEST_F(JsonOutput, FailedPagesAreNullWithTheirCauses) {
  cli::PageRecord partial = failed("killed by signal 11");
  partial.json = "{}";
  add(partial);
  add(recognised("b"));
  add(failed("no \"answer\" \xFF"));
  const Json json = Json::parse(line());
  EXPECT_EQ(json["pages"], (Json{nullptr, Json::object(), nullptr}));
  EXPECT_EQ(json["failed_pages"], Json::parse(R"([{"page": 1, "cause": "killed by signal 11"},
                                                  {"page": 3, "cause": "no \"answer\" \uFFFD"}])"));
}

TEST_F(JsonOutput, WhatIsNotJsonIsNullWithACause) {
  for (const char* text : {"", "{\"a\":", "{} {}", "\"\xFF\"", "1e999"}) add(recognised("x", text));
  add(recognised("x", std::string(1000000, '[')));
  add(recognised("x", std::string(1000, '[') + std::string(1000, ']')));
  const Json json = Json::parse(line());
  EXPECT_EQ(json["pages"], Json(std::vector<std::nullptr_t>(7)));
  ASSERT_EQ(json["failed_pages"].size(), 7U);
  EXPECT_EQ(json["failed_pages"][0]["cause"], "the engine gave no JSON");
  EXPECT_EQ(json["failed_pages"][6]["cause"], "what the engine gave is not JSON");
}

TEST_F(JsonOutput, WarningsAreToldWithTheirPages) {
  add(recognised("a"));
  cli::PageRecord lowered = recognised("b");
  lowered.warning = "a part is \xFF missing";
  add(lowered);
  const Json json = Json::parse(line());
  EXPECT_EQ(json["warnings"],
            Json::parse(R"([{"page": 2, "warning": "a part is \uFFFD missing"}])"));
  EXPECT_FALSE(json.contains("failed_pages"));
}

TEST_F(JsonOutput, ChosenPagesAreTold) {
  cli::PageRecord third = recognised("c", "3");
  third.page = 3;
  cli::PageRecord first = recognised("a", "1");
  first.page = 1;
  add(third);
  add(first);
  order.page_count = 12;
  EXPECT_EQ(line(),
            "{\"file\":\"scan.pdf\",\"page_count\":12,\"pages\":[3,1],\"page_numbers\":[3,1]}\n");
}

TEST_F(JsonOutput, NamesThatAreNotUtf8AreEscaped) {
  order.file = "caf\xE9 \\ \xE4\xB8\xAD.pdf";
  EXPECT_EQ(line(),
            "{\"file\":\"caf\\\\xE9 \\\\x5C 中.pdf\",\"file_is_escaped\":true,"
            "\"page_count\":0,\"pages\":[]}\n");
  order.file = "a\\b\"\n中.pdf";
  const Json json = Json::parse(line());
  EXPECT_EQ(json["file"], order.file) << "UTF-8 is left as it is";
  EXPECT_FALSE(json.contains("file_is_escaped"));
}

TEST_F(JsonOutput, TheDocumentedExampleConformsToTheSchema) {
  const std::string document = read_file(ZELK_DOCS "/outputs.md");
  const std::size_t begin = document.find("```json\n") + 8;
  write_file(path, document.substr(begin, document.find("```", begin) - begin));
  EXPECT_EQ(complaint(path), "");
  EXPECT_EQ(Json::parse(read_file(path))["failed_pages"][0]["page"], 7);
}

TEST_F(JsonOutput, TheSchemaRefusesWhatIsNotAsDescribed) {
  for (const char* text :
       {R"({"file": "a", "pages": []})", R"({"file": "a", "page_count": -1, "pages": []})",
        R"({"file": "a", "page_count": 1, "pages": [], "more": 1})",
        R"({"file": "a", "page_count": 1, "pages": [null], "failed_pages": []})",
        R"({"file": "a", "page_count": 1, "pages": [null], "failed_pages": [{"page": 1}]})",
        R"({"file": "a", "page_count": 1, "pages": [1], "page_numbers": [0]})"}) {
    write_file(path, text);
    EXPECT_NE(complaint(path), "") << text;
  }
}

}  // namespace
